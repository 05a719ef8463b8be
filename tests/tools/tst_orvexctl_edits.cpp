// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl update --dry-run and set --from-file on the shipped example: a dry
// run leaves everything as it was, a value from a file or from standard input
// is taken as given on the command line.
#include "ctlprocess.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

using namespace CtlProcess;

namespace {

QString const _tleFile = QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/catalog-a.tle");

// Every file below `dir` with its bytes, to see that nothing was added,
// removed or changed.
QMap<QString, QByteArray> _snapshot(QString const &dir)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(dir, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QString const path = it.next();
        files.insert(QDir(dir).relativeFilePath(path), readFile(path));
    }
    return files;
}

} // namespace

class TestOrvexctlEdits : public QObject
{
    Q_OBJECT

private:
    QString _path(QString const &name) const { return _dir->filePath(name); }
    Run _run(QStringList const &args, QByteArray const &input = {}) const
    {
        return run(_dir->path(), args, input);
    }

    QScopedPointer<QTemporaryDir> _dir;

private slots:
    void init();

    void dryRunLeavesFileAndFolderUnchanged_data();
    void dryRunLeavesFileAndFolderUnchanged();
    void dryRunReportIsTheUpdatesReport();

    void setTakesValueFromFile_data();
    void setTakesValueFromFile();
    void setTakesTLEListFromFile();
    void setFromFileRefusesValueAndLeavesFile_data();
    void setFromFileRefusesValueAndLeavesFile();
};

void TestOrvexctlEdits::init()
{
    _dir.reset(new QTemporaryDir);
    QVERIFY(_dir->isValid());
    QVERIFY(QFile::copy(shippedExample(), _path(QStringLiteral("example.conf"))));
}

void TestOrvexctlEdits::dryRunLeavesFileAndFolderUnchanged_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::newRow("in place") << QStringList { "update", "example.conf", "--dry-run" };
    QTest::newRow("to another file")
        << QStringList { "update", "example.conf", "-o", "new.conf", "--dry-run" };
    QTest::newRow("json") << QStringList { "update", "example.conf", "--dry-run", "--json" };
}

void TestOrvexctlEdits::dryRunLeavesFileAndFolderUnchanged()
{
    QFETCH(QStringList, args);
    QMap<QString, QByteArray> const before = _snapshot(_dir->path());
    QFileInfo const info(_path(QStringLiteral("example.conf")));
    QDateTime const modified = info.lastModified();
    Run const result = _run(args);
    QCOMPARE(result.status, 0);
    QCOMPARE(_snapshot(_dir->path()), before);
    QCOMPARE(QFileInfo(_path(QStringLiteral("example.conf"))).lastModified(), modified);
    QVERIFY(!QFile::exists(_path(QStringLiteral("example.conf.bak"))));
}

void TestOrvexctlEdits::dryRunReportIsTheUpdatesReport()
{
    Run const dry = _run(
        { QStringLiteral("update"), QStringLiteral("example.conf"), QStringLiteral("--dry-run") });
    Run const done = _run({ QStringLiteral("update"), QStringLiteral("example.conf") });
    QCOMPARE(dry.status, done.status);
    QCOMPARE(dry.err, done.err);
    QStringList const dryLines = lines(dry.out);
    QStringList const doneLines = lines(done.out);
    QVERIFY(dryLines.first().startsWith(
        QLatin1String("Would update example.conf from version 1.1 to 2.0")));
    QVERIFY(dryLines.first().endsWith(QLatin1String("; nothing is written (dry run)")));
    QVERIFY(doneLines.first().startsWith(
        QLatin1String("Updated example.conf from version 1.1 to 2.0")));
    QVERIFY(dryLines.size() > 10);
    QCOMPARE(dryLines.mid(1), doneLines.mid(1));
    QVERIFY(QFile::exists(_path(QStringLiteral("example.conf.bak"))));
}

void TestOrvexctlEdits::setTakesValueFromFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("fromStdin");
    QTest::addColumn<QByteArray>("got"); // what get prints afterwards
    QTest::newRow("value") << "Observatory/SiteName" << QByteArray("Orvex North\n") << false
                           << QByteArray("Orvex North\n");
    QTest::newRow("value, stdin") << "Camera/Gain" << QByteArray("250") << true
                                  << QByteArray("250\n");
    QTest::newRow("value with CRLF")
        << "Camera/Gain" << QByteArray("300\r\n") << false << QByteArray("300\n");
    QTest::newRow("list") << "Paths/CatalogFiles" << QByteArray("/a.cat\n/b b.cat\n/c.cat\n")
                          << false << QByteArray("/a.cat\n/b b.cat\n/c.cat\n");
    QTest::newRow("list, stdin") << "Tracking/PriorityNoradIds" << QByteArray("25544\r\n43013")
                                 << true << QByteArray("25544\n43013\n");
    QTest::newRow("empty list") << "Paths/CatalogFiles" << QByteArray() << false << QByteArray();
    QTest::newRow("list item") << "Paths/CatalogFiles[1]" << QByteArray("/new.cat\n") << true
                               << QByteArray("/new.cat\n");
}

void TestOrvexctlEdits::setTakesValueFromFile()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, text);
    QFETCH(bool, fromStdin);
    QFETCH(QByteArray, got);
    QVERIFY(writeFile(_path(QStringLiteral("value.txt")), text));
    QString const source = fromStdin ? QStringLiteral("-") : QStringLiteral("value.txt");
    Run const set = _run({ QStringLiteral("set"), QStringLiteral("example.conf"), path,
                             QStringLiteral("--from-file"), source },
        fromStdin ? text : QByteArray());
    QVERIFY2(set.status != 2, set.err.constData());
    Run const get = _run({ QStringLiteral("get"), QStringLiteral("example.conf"), path });
    QCOMPARE(get.out, got);
}

void TestOrvexctlEdits::setTakesTLEListFromFile()
{
    // The first three sets of a catalogue, as a file holds them.
    QStringList const catalogue = lines(readFile(_tleFile)).mid(0, 11);
    QByteArray const text = catalogue.join(QLatin1Char('\n')).toUtf8() + '\n';
    QVERIFY(writeFile(_path(QStringLiteral("sets.tle")), text));
    Run const set = _run({ QStringLiteral("set"), QStringLiteral("example.conf"),
        QStringLiteral("Tracking/Satellites"), QStringLiteral("--from-file"),
        QStringLiteral("sets.tle") });
    QVERIFY2(set.status != 2, set.err.constData());
    Run const get = _run({ QStringLiteral("get"), QStringLiteral("example.conf"),
        QStringLiteral("Tracking/Satellites") });
    QStringList expected;
    for (QString const &line : catalogue)
        if (!line.trimmed().isEmpty())
            expected << line.trimmed();
    QStringList given;
    for (QString const &line : lines(get.out))
        if (!line.isEmpty())
            given << line.trimmed();
    QCOMPARE(given.size(), 9);
    QCOMPARE(given, expected);
}

void TestOrvexctlEdits::setFromFileRefusesValueAndLeavesFile_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("missing file") << QStringList { "Camera/Gain", "--from-file", "nothing.txt" }
                                  << QByteArray() << QByteArray("nothing.txt cannot be read");
    QTest::newRow("value and file") << QStringList { "Camera/Gain", "7", "--from-file",
        "-" } << QByteArray("8") << QByteArray("either as arguments or with --from-file");
    QTest::newRow("refused value") << QStringList { "Camera/Binning", "--from-file", "-" }
                                   << QByteArray("7\n") << QByteArray("\"7\" is refused");
    QTest::newRow("broken TLE text")
        << QStringList { "Tracking/Satellites", "--from-file", "-" }
        << QByteArray("ISS\n1 25544U 98067A\n") << QByteArray("the TLE text is refused");
    QTest::newRow("list below its minimum") << QStringList { "Tracking/PriorityNoradIds",
        "--from-file", "-" } << QByteArray() << QByteArray("needs at least 1 item");
}

void TestOrvexctlEdits::setFromFileRefusesValueAndLeavesFile()
{
    QFETCH(QStringList, args);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, message);
    QByteArray const before = readFile(_path(QStringLiteral("example.conf")));
    Run const result
        = _run(QStringList { QStringLiteral("set"), QStringLiteral("example.conf") } + args, input);
    QCOMPARE(result.status, 2);
    QVERIFY2(result.err.contains(message), result.err.constData());
    QCOMPARE(readFile(_path(QStringLiteral("example.conf"))), before);
}

QTEST_GUILESS_MAIN(TestOrvexctlEdits)
#include "tst_orvexctl_edits.moc"
