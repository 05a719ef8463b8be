// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Replays inputs through a libFuzzer harness without libFuzzer, so that every
// input that once broke a harness, and its seed corpus, run with the ordinary
// test suite (and with the sanitizers in their build). Without arguments it
// feeds every file of fuzz/regressions/<harness>/ and fuzz/corpus/<harness>/;
// with arguments, the files and directories named. A harness that finds its
// contract broken aborts, which fails the test.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);
// Only the harnesses that set something up define it.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) __attribute__((weak));

namespace {

// The files of a directory in name order, or the file itself. A harness
// that has never failed has no directory of regressions: nothing to replay.
QStringList _inputs(QString const &path)
{
    if (!QFileInfo(path).isDir())
        return QFileInfo(path).isFile() ? QStringList(path) : QStringList();
    QStringList files;
    for (QFileInfo const &entry : QDir(path).entryInfoList(QDir::Files, QDir::Name))
        files << entry.filePath();
    return files;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList paths;
    for (int i = 1; i < argc; ++i)
        paths << QFile::decodeName(argv[i]);
    if (paths.isEmpty()) {
        paths << QStringLiteral(ORVEX_FUZZ_DIR "/regressions/" ORVEX_FUZZ_HARNESS)
              << QStringLiteral(ORVEX_FUZZ_DIR "/corpus/" ORVEX_FUZZ_HARNESS);
    }
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (QString const &path : paths) {
        for (QString const &input : _inputs(path)) {
            QFile file(input);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "replay: cannot read %s\n", qPrintable(input));
                return 1;
            }
            QByteArray const bytes = file.readAll();
            std::printf("replay: %s\n", qPrintable(input));
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(bytes.constData()),
                std::size_t(bytes.size()));
            ++count;
        }
    }
    std::printf("replay: %d inputs through %s\n", count, ORVEX_FUZZ_HARNESS);
    return count > 0 ? 0 : 1;
}
