// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Hostile text through the TLE checker and the element-set parser: every
// byte value, NUL bytes, lines cut short, huge texts and records, and files
// that aren't files. Each gives the checker's own messages and nothing else:
// no read beyond a line, no crash, no hang.

#include "tle/checkertle.h"
#include "tle/get_el.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;
using Records = std::vector<CheckerTLE::TLE>;
Q_DECLARE_METATYPE(Lines)

namespace {

constexpr qint64 kFewSeconds = 20000;

// The ISS set of xplanet's sample file; both check digits right.
const std::string kName = "ISS (ZARYA)";
const std::string kLine1 = "1 25544U 98067A   04005.51955591  .00019728  00000-0  19085-3 0  9701";
const std::string kLine2 = "2 25544  51.6297  78.4979 0006431 344.6528 119.5204 15.66405366292649";

std::string _set()
{
    return kName + "\n" + kLine1 + "\n" + kLine2;
}

QByteArray _readFile(QString const &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

std::string _garbage()
{
    return _readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/hostile/garbage.bin")).toStdString();
}

// A copy of `line` in a heap block of exactly its size and a terminating
// zero, so that the address sanitizer sees any read past its end.
std::unique_ptr<char[]> _exact(std::string const &line)
{
    std::unique_ptr<char[]> copy(new char[line.size() + 1]);
    std::memcpy(copy.get(), line.c_str(), line.size() + 1);
    return copy;
}

bool _sameRecords(Records const &a, Records const &b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].line0 != b[i].line0 || a[i].line1 != b[i].line1 || a[i].line2 != b[i].line2)
            return false;
    }
    return true;
}

} // namespace

class TestHostileTle : public QObject
{
    Q_OBJECT

private slots:
    void parseTLEsGivesOnlyItsOwnMessages_data();
    void parseTLEsGivesOnlyItsOwnMessages();
    void parseTLEsOfBinaryGarbageFindsNothing();
    void parseTLEsOfEveryByteValueFindsNothing();
    void parseTLEsOfFiftyMegabytesKeepsEverySet();
    void parseTLEsFindsTheSetsWrittenByTLEs2text();
    void TLEs2textRefusesHugeAndBrokenRecordsWhenChecking();
    void TLEs2textWritesAnyRecordAsItStandsWithoutChecking();

    void checksumReadsNoFurtherThanTheLine_data();
    void checksumReadsNoFurtherThanTheLine();
    void parseElementsOnMalformedLinesLeavesRecordUntouched_data();
    void parseElementsOnMalformedLinesLeavesRecordUntouched();
    void parseElementsOfGarbageAfterAValidStart();

    void loadFromFileRefusesWhatIsNoFile_data();
    void loadFromFileRefusesWhatIsNoFile();
    void loadFromFileTakesBinaryBytesAsTheyAre();
};

// --------------------------------------------------------------- parseTLEs

void TestHostileTle::parseTLEsGivesOnlyItsOwnMessages_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("result");
    QTest::addColumn<Lines>("messages");
    QTest::addColumn<int>("records");

    std::string withNul = kLine1;
    withNul[30] = '\0';
    std::string withHighByte = kLine2;
    withHighByte.replace(60, 2, "\xc3\xa9"); // two bytes of UTF-8: still 69 bytes
    std::string const cr = kName + "\r\n" + kLine1 + "\r\n" + kLine2 + "\r\n";

    QTest::newRow("NUL inside the first data line")
        << QByteArray::fromStdString(kName + "\n" + withNul + "\n" + kLine2) << 1
        << Lines { "Line #2. TLE is not valid. Line #1 is not TLE line.",
               "0 problem-free TLEs were parsed." }
        << 0;
    QTest::newRow("UTF-8 inside the second data line")
        << QByteArray::fromStdString(kName + "\n" + kLine1 + "\n" + withHighByte) << 1
        << Lines { "Line #2. TLE is not valid. Line #2 is not TLE line.",
               "0 problem-free TLEs were parsed." }
        << 0;
    QTest::newRow("carriage returns")
        << QByteArray::fromStdString(cr) << 1
        << Lines { "TextLine #1 is not TLE line.", "TextLine #2 is not TLE line.",
               "0 problem-free TLEs were parsed." }
        << 0;
    QTest::newRow("a data line cut at the end")
        << QByteArray::fromStdString(_set().substr(0, _set().size() - 10)) << 1
        << Lines { "TextLine #2 is not TLE line.", "0 problem-free TLEs were parsed." } << 0;
    QTest::newRow("one line of 100,000 bytes")
        << QByteArray(100000, '1') << 1
        << Lines { "TextLine #0 is not TLE line.", "0 problem-free TLEs were parsed." } << 0;
    QTest::newRow("a NUL byte alone")
        << QByteArray(1, '\0') << 0 << Lines { "0 problem-free TLEs were parsed." } << 0;
    QTest::newRow("a set behind garbage")
        << QByteArray::fromStdString(_garbage() + "\n\n" + _set()) << 1 << Lines {} << 1;
}

void TestHostileTle::parseTLEsGivesOnlyItsOwnMessages()
{
    QFETCH(QByteArray, text);
    QFETCH(int, result);
    QFETCH(Lines, messages);
    QFETCH(int, records);

    Lines got { "earlier message" };
    Records tles;
    QCOMPARE(CheckerTLE::parseTLEs(got, tles, text.toStdString()), result);
    QCOMPARE(int(tles.size()), records);
    QCOMPARE(got.front(), std::string("earlier message"));
    QCOMPARE(got.back(), std::to_string(records) + " problem-free TLEs were parsed.");
    if (!messages.empty())
        QCOMPARE(Lines(got.begin() + 1, got.end()), messages);
    for (CheckerTLE::TLE const &tle : tles) {
        QCOMPARE(tle.line1, kLine1);
        QCOMPARE(tle.line2, kLine2);
    }
}

// Every message is one of the checker's own; no set is made up from noise.
void TestHostileTle::parseTLEsOfBinaryGarbageFindsNothing()
{
    std::string const garbage = _garbage();
    QCOMPARE(garbage.size(), std::size_t(4096));
    Lines messages;
    Records tles;
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, garbage), 1);
    QVERIFY(tles.empty());
    QCOMPARE(messages.back(), std::string("0 problem-free TLEs were parsed."));
    for (std::size_t i = 0; i + 1 < messages.size(); ++i) {
        QVERIFY2(messages[i].rfind("TextLine #", 0) == 0 || messages[i].rfind("Line #", 0) == 0,
            messages[i].c_str());
    }
}

// Lines of 69 bytes made of every byte value, zero included, in every
// position of a set: all refused, none read past its end.
void TestHostileTle::parseTLEsOfEveryByteValueFindsNothing()
{
    std::string text;
    for (int value = 0; value < 256; ++value) {
        if (value == '\n')
            continue;
        std::string line1 = kLine1;
        std::string line2 = kLine2;
        line1[value % 69] = char(value);
        line2[(value * 7) % 69] = char(value);
        text += std::string(1, char(value)) + "\n" + line1 + "\n" + line2 + "\n\n";
    }
    Lines messages;
    Records tles;
    CheckerTLE::parseTLEs(messages, tles, text);
    QCOMPARE(messages.back(), std::to_string(tles.size()) + " problem-free TLEs were parsed.");
    // Only a byte that leaves the check sum as it was keeps a set valid.
    for (CheckerTLE::TLE const &tle : tles) {
        std::string message;
        QVERIFY(_checkTLE(message, tle));
        QCOMPARE(tle.line1.size(), std::size_t(69));
        QCOMPARE(tle.line2.size(), std::size_t(69));
    }
    QVERIFY(tles.size() < 40);
}

void TestHostileTle::parseTLEsOfFiftyMegabytesKeepsEverySet()
{
    std::string const set = _set() + "\n\n";
    std::string text;
    text.reserve(51 * 1024 * 1024);
    std::size_t sets = 0;
    while (text.size() < 50u * 1024 * 1024) {
        text += set;
        ++sets;
    }
    Lines messages;
    Records tles;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, text), 0);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(tles.size(), sets);
    QCOMPARE(messages, (Lines { std::to_string(sets) + " problem-free TLEs were parsed." }));
}

// What the checker writes, it reads back the same, whatever the name holds.
void TestHostileTle::parseTLEsFindsTheSetsWrittenByTLEs2text()
{
    Records records;
    std::string const garbage = _garbage();
    for (std::size_t at = 0; at + 68 <= garbage.size(); at += 68) {
        std::string name = garbage.substr(at, 68);
        for (char &c : name) {
            if (c == '\n')
                c = ' ';
        }
        records.push_back(CheckerTLE::TLE { name, kLine1, kLine2 });
        records.push_back(CheckerTLE::TLE { std::string(), kLine1, kLine2 });
    }
    Lines messages;
    std::string text;
    QCOMPARE(CheckerTLE::TLEs2text(messages, text, records, true), 0);
    Records back;
    QCOMPARE(CheckerTLE::parseTLEs(messages, back, text), 0);
    QVERIFY(_sameRecords(back, records));
}

void TestHostileTle::TLEs2textRefusesHugeAndBrokenRecordsWhenChecking()
{
    Records const records { CheckerTLE::TLE { std::string(10 * 1024 * 1024, 'N'), kLine1, kLine2 },
        CheckerTLE::TLE { kName, std::string("1 \0", 3), kLine2 },
        CheckerTLE::TLE { kName, kLine1, std::string() },
        CheckerTLE::TLE { _garbage(), _garbage(), _garbage() },
        CheckerTLE::TLE { kName, kLine1, kLine2 } };
    Lines messages;
    std::string text = "earlier text";
    QCOMPARE(CheckerTLE::TLEs2text(messages, text, records, true), 0);
    QCOMPARE(messages,
        (Lines { "TLE #0 is not valid. Line #0 has size > 69.",
            "TLE #1 is not valid. Line #1 is not TLE line.",
            "TLE #2 is not valid. Line #2 is not TLE line.",
            "TLE #3 is not valid. Line #0 has size > 69.", "Successfully written 5 TLEs." }));
    QCOMPARE(text, "\n\n" + _set());
}

void TestHostileTle::TLEs2textWritesAnyRecordAsItStandsWithoutChecking()
{
    std::string const garbage = _garbage();
    Records const records { CheckerTLE::TLE { garbage, garbage, garbage }, CheckerTLE::TLE {} };
    Lines messages;
    std::string text;
    QCOMPARE(CheckerTLE::TLEs2text(messages, text, records, false), 0);
    QCOMPARE(messages, Lines { "Successfully written 2 TLEs." });
    QCOMPARE(text, garbage + "\n" + garbage + "\n" + garbage + "\n\n" + "\n");
}

// ----------------------------------------------------------- tle_checksum

void TestHostileTle::checksumReadsNoFurtherThanTheLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("result");
    QTest::newRow("empty") << QByteArray() << -1;
    QTest::newRow("line number only") << QByteArray("1") << -1;
    QTest::newRow("number and blank") << QByteArray("1 ") << -2;
    QTest::newRow("68 bytes") << QByteArray::fromStdString(kLine1.substr(0, 68)) << 9;
    QTest::newRow("69 bytes") << QByteArray::fromStdString(kLine1) << 0;
    QTest::newRow("70 bytes, visible last") << QByteArray::fromStdString(kLine1 + "x") << -3;
    QTest::newRow("high bytes") << QByteArray("1 \xff\xfe\xfd") << -2;
    QTest::newRow("garbage") << QByteArray::fromStdString(_garbage()).left(2000).replace('\0', 'x')
                             << -1;
}

// The ISS line 1 has the check digit 1, so its sum is 1 modulo 10; cut to
// 68 bytes it takes its terminating zero (-48) for the check digit, which
// gives (1 + 48) modulo 10.
void TestHostileTle::checksumReadsNoFurtherThanTheLine()
{
    QFETCH(QByteArray, line);
    QFETCH(int, result);
    std::unique_ptr<char[]> const exact = _exact(line.toStdString());
    QCOMPARE(tle_checksum(exact.get()), result);
}

// --------------------------------------------------------- parse_elements

void TestHostileTle::parseElementsOnMalformedLinesLeavesRecordUntouched_data()
{
    QTest::addColumn<QByteArray>("line1");
    QTest::addColumn<QByteArray>("line2");
    QTest::addColumn<int>("result");
    QByteArray const one = QByteArray::fromStdString(kLine1);
    QByteArray const two = QByteArray::fromStdString(kLine2);
    QTest::newRow("both empty") << QByteArray() << QByteArray() << -104;
    QTest::newRow("line 1 cut short") << one.left(40) << two << -102;
    QTest::newRow("line 2 cut short") << one << two.left(40) << -2;
    QTest::newRow("line 1 of a single digit") << QByteArray("1") << two << -101;
    QTest::newRow("line 2 of a single digit") << one << QByteArray("2") << -1;
    QTest::newRow("line 2 with a visible byte 69") << one << two + "x" << -3;
    QTest::newRow("garbage behind the numbers")
        << "1 " + QByteArray::fromStdString(_garbage()).mid(0, 300)
        << "2 " + QByteArray::fromStdString(_garbage()) << -102;
}

void TestHostileTle::parseElementsOnMalformedLinesLeavesRecordUntouched()
{
    QFETCH(QByteArray, line1);
    QFETCH(QByteArray, line2);
    QFETCH(int, result);
    std::unique_ptr<char[]> const first = _exact(line1.toStdString());
    std::unique_ptr<char[]> const second = _exact(line2.toStdString());
    element_set record;
    std::memset(&record, 0x5a, sizeof record);
    element_set const before = record;
    QCOMPARE(parse_elements(first.get(), second.get(), &record), result);
    QCOMPARE(std::memcmp(&record, &before, sizeof record), 0);
}

// Lines that pass the check sum with any bytes from 0x20 to 0x7A in their
// fields, the blank behind each angle field in place and the exponent digits
// as digits: the parser reads them without a fault.
void TestHostileTle::parseElementsOfGarbageAfterAValidStart()
{
    std::string const garbage = _garbage();
    std::size_t at = 0;
    for (int round = 0; round < 200; ++round) {
        std::string line1 = kLine1;
        std::string line2 = kLine2;
        for (std::size_t i = 2; i < 68; ++i) {
            char const c
                = char(0x20 + (unsigned char)garbage[at++ % garbage.size()] % (0x7B - 0x20));
            if (i != 51 && i != 60)
                line1[i] = c;
            if (i != 16 && i != 25 && i != 42 && i != 51)
                line2[i] = c;
        }
        line1[62] = round % 2 ? 'H' : '0';
        for (std::string *line : { &line1, &line2 }) {
            int sum = 0;
            for (std::size_t i = 0; i < 68; ++i) {
                char const c = (*line)[i];
                sum += (c >= '1' && c <= '9') ? c - '0' : c == '-' ? 1 : 0;
            }
            (*line)[68] = char('0' + sum % 10);
        }
        std::unique_ptr<char[]> const first = _exact(line1);
        std::unique_ptr<char[]> const second = _exact(line2);
        element_set record;
        QCOMPARE(parse_elements(first.get(), second.get(), &record), 0);
    }
}

// ------------------------------------------------------------ LoadFromFile

void TestHostileTle::loadFromFileRefusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("a directory") << QStringLiteral(ORVEX_TEST_DATA_DIR);
    QTest::newRow("a missing file") << QStringLiteral(ORVEX_TEST_DATA_DIR "/hostile/missing.tle");
    QTest::newRow("below a regular file")
        << QStringLiteral(ORVEX_TEST_DATA_DIR "/hostile/garbage.bin/x.tle");
    QTest::newRow("empty name") << QString();
}

void TestHostileTle::loadFromFileRefusesWhatIsNoFile()
{
    QFETCH(QString, fileName);
    Lines messages;
    std::string text = "earlier text";
    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, fileName.toStdString()), 2);
    QCOMPARE(messages, Lines { "The file " + fileName.toStdString() + " cannot be read." });
    QCOMPARE(text, std::string("earlier text"));
}

void TestHostileTle::loadFromFileTakesBinaryBytesAsTheyAre()
{
    Lines messages;
    std::string text = "earlier text";
    QCOMPARE(
        CheckerTLE::LoadFromFile(messages, text, ORVEX_TEST_DATA_DIR "/hostile/garbage.bin"), 0);
    QCOMPARE(messages, Lines {});
    QCOMPARE(text, _garbage());

    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, "/dev/null"), 0);
    QCOMPARE(messages, Lines {});
    QCOMPARE(text, std::string());
}

QTEST_APPLESS_MAIN(TestHostileTle)

#include "tst_hostile_tle.moc"
