// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The table of element sets that tle-check prints with --report.
#include "ctl/tlereport.h"

#include <QtTest>

namespace {

CheckerTLE::TLE const _flock = { "FLOCK 2P-1              \r",
    "1 41617U 16040U   18020.92263222  .00002489  00000-0  10617-3 0  9990",
    "2 41617  97.4368  87.1954 0011425  46.9108 313.3084 15.23813118 87812" };

std::string const _jpss2 = "2 43013  98.7126 321.4710 0000893  65.9680 294.1589 14.19549727  9015";

// 2018-01-21 00:00 UTC, a day after the epochs of the sets above.
TleReportLimits _limits(double maxAgeDays = 14.0)
{
    TleReportLimits limits;
    limits.nowMs = 1516492800000;
    limits.maxAgeDays = maxAgeDays;
    return limits;
}

std::string _text(std::string const &name, std::string const &line1, std::string const &line2)
{
    return name + "\n" + line1 + "\n" + line2;
}

// The line with `text` written over it from `index`.
std::string _with(std::string line, std::size_t index, std::string const &text)
{
    return line.replace(index, text.size(), text);
}

QStringList _flags(TleReportEntry const &entry)
{
    QStringList flags;
    for (std::string const &flag : entry.flags)
        flags << QString::fromStdString(flag);
    return flags;
}

} // namespace

class TestTleReport : public QObject
{
    Q_OBJECT

private slots:
    void julianDatesBecomeUnixTime_data();
    void julianDatesBecomeUnixTime();
    void rowGivesEpochAgeInclinationAndMeanMotion();
    void unreadableSetIsMarked();
    void refusedSetTellsTheLikelyCause_data();
    void refusedSetTellsTheLikelyCause();
    void acceptedSetIsFlaggedWhereTheCheckerIsLenient_data();
    void acceptedSetIsFlaggedWhereTheCheckerIsLenient();
    void alpha5NumberIsShownDecoded();
    void repeatedCatalogNumberIsFlagged();
    void epochsOutsideTheAgeLimitAreFlagged_data();
    void epochsOutsideTheAgeLimitAreFlagged();
    void entriesFollowTheCheckersGrouping();
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

void TestTleReport::refusedSetTellsTheLikelyCause_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("flags");
    std::string const &l1 = _flock.line1;
    std::string const &l2 = _flock.line2;
    QTest::newRow("non-breaking space")
        << QByteArray::fromStdString(_text("N", l1.substr(0, 17) + "\xC2\xA0" + l1.substr(18), l2))
        << QStringList { "line 1 has a non-breaking space at column 18",
               "line 1 has 70 bytes, a data line 69" };
    QTest::newRow("non-breaking space for two blanks")
        << QByteArray::fromStdString(_text("N", l1, l2.substr(0, 7) + "\xC2\xA0" + l2.substr(9)))
        << QStringList { "line 2 has a non-breaking space at column 8" };
    QTest::newRow("tab") << QByteArray::fromStdString(_text("N", _with(l1, 17, "\t"), l2))
                         << QStringList { "line 1 has a tab at column 18" };
    QTest::newRow("other non-ASCII byte")
        << QByteArray::fromStdString(_text("N", l1, _with(l2, 16, "\xB0")))
        << QStringList { "line 2 has the non-ASCII byte 0xB0 at column 17" };
    QTest::newRow("carriage return") << QByteArray::fromStdString(_text("N", l1 + "\r", l2))
                                     << QStringList { "line 1 ends in a carriage return",
                                            "line 1 has 70 bytes, a data line 69" };
    QTest::newRow("trailing blank")
        << QByteArray::fromStdString(_text("N", l1, l2 + " "))
        << QStringList { "line 2 has 70 bytes, a data line 69; it ends in a blank" };
    QTest::newRow("short line") << QByteArray::fromStdString(_text("N", l1.substr(0, 60), l2))
                                << QStringList { "line 1 has 60 bytes, a data line 69" };
    QTest::newRow("check digit") << QByteArray::fromStdString(_text("N", _with(l1, 68, "3"),
        l2)) << QStringList { "line 1 has the check digit 3, its digits give 0" };
    QTest::newRow("check digit of line 2")
        << QByteArray::fromStdString(_text("N", l1, _with(l2, 68, "9")))
        << QStringList { "line 2 has the check digit 9, its digits give 2" };
    QTest::newRow("no line number")
        << QByteArray::fromStdString(_text("N", _with(l1, 0, "3"), l2))
        << QStringList { "line 1 does not begin with \"1 \" or \"2 \"" };
    QTest::newRow("swapped, one check digit wrong")
        << QByteArray::fromStdString(_text("N", l2, _with(l1, 68, "3")))
        << QStringList { "line 2 has the check digit 3, its digits give 0",
               "lines 1 and 2 are swapped" };
    QTest::newRow("different satellites, one check digit wrong")
        << QByteArray::fromStdString(_text("N", _with(l1, 68, "3"), _jpss2))
        << QStringList { "line 1 has the check digit 3, its digits give 0",
               "lines 1 and 2 are of different satellites (41617 and 43013)" };
    QTest::newRow("0 NAME line of 69 bytes")
        << QByteArray::fromStdString(_text("0 " + std::string(67, 'N'), l1, l2))
        << QStringList { "line 1 is the \"0 NAME\" line of a three-line catalog, taken for a "
                         "data line as it has 69 bytes" };
}

void TestTleReport::refusedSetTellsTheLikelyCause()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, flags);
    std::vector<TleReportEntry> const entries = tleReportEntries(text.toStdString(), _limits());
    QVERIFY(!entries.empty());
    QVERIFY(!entries[0].accepted);
    QCOMPARE(_flags(entries[0]), flags);
}

void TestTleReport::acceptedSetIsFlaggedWhereTheCheckerIsLenient_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("flag");
    QTest::newRow("swapped") << QByteArray::fromStdString(_text("N", _flock.line2, _flock.line1))
                             << "lines 1 and 2 are swapped";
    QTest::newRow("different satellites")
        << QByteArray::fromStdString(_text("N", _flock.line1, _jpss2))
        << "lines 1 and 2 are of different satellites (41617 and 43013)";
    QTest::newRow("0 NAME") << QByteArray::fromStdString(
        _text("0 FLOCK 2P-1", _flock.line1, _flock.line2))
                            << "the name line begins with \"0 \" as in a three-line catalog; "
                               "the \"0 \" stays in the name";
}

void TestTleReport::acceptedSetIsFlaggedWhereTheCheckerIsLenient()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, flag);
    std::vector<TleReportEntry> const entries = tleReportEntries(text.toStdString(), _limits());
    QCOMPARE(entries.size(), std::size_t(1));
    QVERIFY(entries[0].accepted);
    QCOMPARE(_flags(entries[0]), QStringList { flag });
}

void TestTleReport::alpha5NumberIsShownDecoded()
{
    std::string const line1 = _with(_flock.line1, 2, "A0000");
    std::string const line2 = _with(_flock.line2, 2, "A0000");
    // The letter counts 0 in the check digit: the digits of 41617 are taken away.
    std::string const text = _text("NEW", _with(line1, 68, "1"), _with(line2, 68, "3"));
    std::vector<TleReportEntry> const entries = tleReportEntries(text, _limits());
    QCOMPARE(entries.size(), std::size_t(1));
    QVERIFY(entries[0].accepted);
    QCOMPARE(entries[0].catalogNumber, 100000L);
    std::vector<std::string> const rows = tleReportRows(entries);
    QCOMPARE(QString::fromStdString(rows[1]),
        QStringLiteral("A0000 (100000)  2018-01-20 22:08:35        0.08     97.4368   15.23813118  "
                       "NEW"));
}

void TestTleReport::repeatedCatalogNumberIsFlagged()
{
    std::string const set = _text("A", _flock.line1, _flock.line2);
    std::vector<TleReportEntry> const entries
        = tleReportEntries(set + "\n\n" + set + "\n" + set, _limits());
    QCOMPARE(entries.size(), std::size_t(3));
    QVERIFY(entries[0].flags.empty());
    QString const again
        = QStringLiteral("catalog number 41617 again; the first set with it is at text line #0");
    QCOMPARE(_flags(entries[1]), QStringList { again });
    QCOMPARE(_flags(entries[2]), QStringList { again });
    QCOMPARE(entries[2].textLine, std::size_t(7));
}

void TestTleReport::epochsOutsideTheAgeLimitAreFlagged_data()
{
    QTest::addColumn<qint64>("nowMs");
    QTest::addColumn<double>("maxAge");
    QTest::addColumn<QStringList>("flags");
    // The epoch is 2018-01-20 22:08:35.4 UTC.
    QTest::newRow("within the default") << qint64(1516492800000) << 14.0 << QStringList();
    QTest::newRow("older than the default")
        << qint64(1516492800000 + 20 * 86400000LL) << 14.0
        << QStringList { "the epoch is 20.08 days old, more than 14.00" };
    QTest::newRow("older than a given limit") << qint64(
        1516492800000) << 0.05 << QStringList { "the epoch is 0.08 days old, more than 0.05" };
    QTest::newRow("in the future")
        << qint64(1516406400000) << 14.0 << QStringList { "the epoch is 0.92 days in the future" };
}

void TestTleReport::epochsOutsideTheAgeLimitAreFlagged()
{
    QFETCH(qint64, nowMs);
    QFETCH(double, maxAge);
    QFETCH(QStringList, flags);
    TleReportLimits limits = _limits(maxAge);
    limits.nowMs = nowMs;
    std::vector<TleReportEntry> const entries
        = tleReportEntries(_text("A", _flock.line1, _flock.line2), limits);
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(_flags(entries[0]), flags);
}

void TestTleReport::entriesFollowTheCheckersGrouping()
{
    // A name alone, a set whose line 1 was broken off by an empty line, and a
    // good set: the broken set's line 2 then stands where line 1 belongs.
    std::string const text = "LONELY\n\n" + _flock.line1 + "\n\n" + _flock.line2 + "\n\n"
        + _text("GOOD", _flock.line1, _flock.line2) + "\n";
    std::vector<TleReportEntry> const entries = tleReportEntries(text, _limits());
    QCOMPARE(entries.size(), std::size_t(4));
    QCOMPARE(entries[0].textLine, std::size_t(0));
    QCOMPARE(_flags(entries[0]), QStringList { "line 1 is an empty line" });
    QCOMPARE(entries[1].textLine, std::size_t(2));
    QCOMPARE(_flags(entries[1]), QStringList { "line 2 is an empty line" });
    QCOMPARE(_flags(entries[2]),
        QStringList({ "line 2 is an empty line",
            "a line 2 stands in the place of line 1: the line before it was refused, or the "
            "set's line 1 is missing" }));
    QVERIFY(entries[3].accepted);
    QCOMPARE(entries[3].textLine, std::size_t(6));
    // The line feed at the end gives the checker one more, empty line, which
    // ends no set.
    std::vector<std::string> const rows = tleReportRows(entries);
    QCOMPARE(QString::fromStdString(rows[1]),
        QStringLiteral("      -  refused at text line #0  LONELY"));
}

QTEST_APPLESS_MAIN(TestTleReport)
#include "tst_tlereport.moc"
