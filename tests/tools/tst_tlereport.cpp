// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The table of element sets that tle-check prints with --report.
#include "ctl/tlereport.h"

#include <QtTest>

namespace {

CheckerTLE::TLE const _flock = { "FLOCK 2P-1              \r",
    "1 41617U 16040U   18020.92263222  .00002489  00000-0  10617-3 0  9990",
    "2 41617  97.4368  87.1954 0011425  46.9108 313.3084 15.23813118 87812" };

} // namespace

class TestTleReport : public QObject
{
    Q_OBJECT

private slots:
    void julianDatesBecomeUnixTime_data();
    void julianDatesBecomeUnixTime();
    void rowGivesEpochAgeInclinationAndMeanMotion();
    void unreadableSetIsMarked();
};

void TestTleReport::julianDatesBecomeUnixTime_data()
{
    QTest::addColumn<double>("julian");
    QTest::addColumn<qint64>("ms");
    QTest::newRow("unix epoch") << 2440587.5 << qint64(0);
    QTest::newRow("year 2000") << 2451544.5 << qint64(946684800000);
    QTest::newRow("noon") << 2451545.0 << qint64(946728000000);
}

void TestTleReport::julianDatesBecomeUnixTime()
{
    QFETCH(double, julian);
    QFETCH(qint64, ms);
    QCOMPARE(qint64(julianToUnixMs(julian)), ms);
}

void TestTleReport::rowGivesEpochAgeInclinationAndMeanMotion()
{
    // 2018-01-21 00:00 UTC.
    std::vector<std::string> const rows = tleReport({ _flock }, 1516492800000);
    QCOMPARE(rows.size(), std::size_t(2));
    QCOMPARE(QString::fromStdString(rows[0]),
        QStringLiteral("Catalog  Epoch (UTC)             Age (d)  Incl (deg)       "
                       "Rev/day  Name"));
    // Epoch day 20.92263222 of 2018 is 22:08:35.4 on 20 January; the name loses its padding.
    QCOMPARE(QString::fromStdString(rows[1]),
        QStringLiteral("  41617  2018-01-20 22:08:35        0.08     97.4368   15.23813118  "
                       "FLOCK 2P-1"));
}

void TestTleReport::unreadableSetIsMarked()
{
    // Swapped lines pass the checker, which reads only form and check digits.
    CheckerTLE::TLE const swapped = { "", _flock.line2, _flock.line1 };
    std::vector<std::string> const rows = tleReport({ swapped }, 0);
    QCOMPARE(QString::fromStdString(rows[1]),
        QStringLiteral("      -  -                    not readable (-104)"));
}

QTEST_APPLESS_MAIN(TestTleReport)
#include "tst_tlereport.moc"
