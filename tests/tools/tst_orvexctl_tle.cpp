// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// tle-check: element sets in their normal form, with their problems and report.

#include "ctlfixture.h"

#include <QtTest>

using namespace ctlfixture;

class TestOrvexctlTle : public QObject, private OrvexctlHarness
{
    Q_OBJECT

private slots:
    void init() { _setUpDir(); }
    void cleanup() { _dir.reset(); }

    void tleCheckPrintsNormalForm();
    void tleCheckTellsProblems();
    void tleCheckRefusesEmptyOrMissingFile_data();
    void tleCheckRefusesEmptyOrMissingFile();
    void tleCheckReportsTable();
    void tleCheckRefusesBadDate();
};

void TestOrvexctlTle::tleCheckPrintsNormalForm()
{
    // Sets with several empty lines between them and one without a name.
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle") });
    QCOMPARE(run.err, QByteArray("3 problem-free TLEs were parsed.\n"));
    QCOMPARE(run.status, 0);
    QCOMPARE(
        run.out, CtlProcess::readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/expected/sets-normal.tle")));
}

void TestOrvexctlTle::tleCheckTellsProblems()
{
    QByteArray text = CtlProcess::readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"));
    text.replace("0  9990\n2 41617", "0  9993\n2 41617");
    _writeFile(_path(QStringLiteral("bad.tle")), text);
    Run const run = _run({ "tle-check", "bad.tle" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("Line #2. TLE is not valid. Line #1 is not TLE line.\n"
                   "2 problem-free TLEs were parsed.\n"));
    // The good sets still come out.
    QCOMPARE(CtlProcess::lines(run.out).size(), 3 + 1 + 2);
}

void TestOrvexctlTle::tleCheckRefusesEmptyOrMissingFile_data()
{
    QTest::addColumn<bool>("create");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("empty") << true << QByteArray("TLEs text is empty.\n");
    QTest::newRow("missing") << false << QByteArray("The file sats.tle cannot be read.\n");
}

void TestOrvexctlTle::tleCheckRefusesEmptyOrMissingFile()
{
    QFETCH(bool, create);
    QFETCH(QByteArray, message);
    if (create)
        _writeFile(_path(QStringLiteral("sats.tle")), QByteArray());
    for (QStringList const &extra : { QStringList(), QStringList { "--report" } }) {
        Run const run = _run(QStringList { "tle-check", "sats.tle" } + extra);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err, message);
        QVERIFY(run.out.isEmpty());
    }
}

void TestOrvexctlTle::tleCheckReportsTable()
{
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"),
        "--report", "--at", "2018-01-21" });
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("sets-report.txt"));
}

void TestOrvexctlTle::tleCheckRefusesBadDate()
{
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"),
        "--report", "--at", "yesterday" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: --at takes a date such as 2024-06-01 or "
                   "2024-06-01T12:00:00, not yesterday\n"));
}

QTEST_GUILESS_MAIN(TestOrvexctlTle)
#include "tst_orvexctl_tle.moc"
