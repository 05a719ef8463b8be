// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl tle-check --report as a user runs it: the checker's messages first
// and unchanged on standard error, the table with its remarks on standard output.
#include "ctlprocess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray const _flock1 = "1 41617U 16040U   18020.92263222  .00002489  00000-0  10617-3 0  9990";
QByteArray const _flock2 = "2 41617  97.4368  87.1954 0011425  46.9108 313.3084 15.23813118 87812";

} // namespace

class TestTleCheckReport : public QObject
{
    Q_OBJECT

private:
    CtlProcess::Run _check(QByteArray const &text, QStringList const &extra);

    QTemporaryDir _dir;

private slots:
    void checkerMessagesComeFirstAndRefusedSetsAreExplained();
    void alpha5AndRepeatedNumbersAreShown();
    void maxAgeFlagsOldEpochs_data();
    void maxAgeFlagsOldEpochs();
    void maxAgeMustBeANumberOfDays_data();
    void maxAgeMustBeANumberOfDays();
};

CtlProcess::Run TestTleCheckReport::_check(QByteArray const &text, QStringList const &extra)
{
    QFile file(_dir.filePath(QStringLiteral("sets.tle")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return CtlProcess::Run();
    file.close();
    return CtlProcess::run(_dir.path(), QStringList { "tle-check", "sets.tle", "--report" } + extra);
}

void TestTleCheckReport::checkerMessagesComeFirstAndRefusedSetsAreExplained()
{
    QByteArray bad2 = _flock2;
    bad2[68] = '9';
    CtlProcess::Run const run = _check("A\n" + _flock1 + "\n" + bad2 + "\n\nB\n" + _flock1 + "\n" + _flock2,
        { "--at", "2018-01-21" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("Line #2. TLE is not valid. Line #2 is not TLE line.\n"
                   "1 problem-free TLEs were parsed.\n"));
    QCOMPARE(run.out,
        QByteArray("Catalog  Epoch (UTC)             Age (d)  Incl (deg)       Rev/day  Name\n"
                   "  41617  refused at text line #0  A\n"
                   "         ! line 2 has the check digit 9, its digits give 2\n"
                   "  41617  2018-01-20 22:08:35        0.08     97.4368   15.23813118  B\n"));
}

void TestTleCheckReport::alpha5AndRepeatedNumbersAreShown()
{
    // "A0000" in place of "41617": the check digits lose the 19 of its digits.
    QByteArray const a1 = QByteArray(_flock1).replace(2, 5, "A0000").replace(68, 1, "1");
    QByteArray const a2 = QByteArray(_flock2).replace(2, 5, "A0000").replace(68, 1, "3");
    CtlProcess::Run const run = _check(
        "NEW\n" + a1 + "\n" + a2 + "\nAGAIN\n" + a1 + "\n" + a2 + "\n", { "--at", "2018-01-21" });
    QCOMPARE(run.status, 0);
    QCOMPARE(run.err, QByteArray("2 problem-free TLEs were parsed.\n"));
    QCOMPARE(run.out,
        QByteArray(
            "Catalog  Epoch (UTC)             Age (d)  Incl (deg)       Rev/day  Name\n"
            "A0000 (100000)  2018-01-20 22:08:35        0.08     97.4368   15.23813118  NEW\n"
            "A0000 (100000)  2018-01-20 22:08:35        0.08     97.4368   15.23813118  AGAIN\n"
            "         ! catalog number A0000 (100000) again; the first set with it is at text "
            "line #0\n"));
}

void TestTleCheckReport::maxAgeFlagsOldEpochs_data()
{
    QTest::addColumn<QStringList>("extra");
    QTest::addColumn<QByteArray>("flag");
    QTest::newRow("default 14 days") << QStringList { "--at", "2018-02-21" }
                                     << QByteArray("the epoch is 31.08 days old, more than 14.00");
    QTest::newRow("given limit") << QStringList { "--at", "2018-01-23", "--max-age", "2" }
                                 << QByteArray("the epoch is 2.08 days old, more than 2.00");
    QTest::newRow("within the given limit")
        << QStringList { "--at", "2018-02-21", "--max-age", "40" } << QByteArray();
    QTest::newRow("future") << QStringList { "--at", "2018-01-20" }
                            << QByteArray("the epoch is 0.92 days in the future");
}

void TestTleCheckReport::maxAgeFlagsOldEpochs()
{
    QFETCH(QStringList, extra);
    QFETCH(QByteArray, flag);
    CtlProcess::Run const run = _check("A\n" + _flock1 + "\n" + _flock2 + "\n", extra);
    QCOMPARE(run.status, 0);
    QList<QByteArray> const rows = run.out.split('\n');
    QCOMPARE(rows.size(), flag.isEmpty() ? 3 : 4);
    if (!flag.isEmpty())
        QCOMPARE(rows[2], "         ! " + flag);
}

void TestTleCheckReport::maxAgeMustBeANumberOfDays_data()
{
    QTest::addColumn<QString>("days");
    QTest::newRow("word") << "two";
    QTest::newRow("negative") << "-1";
    QTest::newRow("decimal comma") << "1,5";
}

void TestTleCheckReport::maxAgeMustBeANumberOfDays()
{
    QFETCH(QString, days);
    CtlProcess::Run const run = _check("A\n" + _flock1 + "\n" + _flock2 + "\n", { "--max-age", days });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err, "orvexctl: --max-age takes a number of days, not " + days.toUtf8() + "\n");
    QVERIFY(run.out.isEmpty());
}

QTEST_GUILESS_MAIN(TestTleCheckReport)
#include "tst_tlecheckreport.moc"
