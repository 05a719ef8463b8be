// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "app/version.h"

#include <QtTest>

#include <cstdint>
#include <string>
#include <vector>

using Ranks = std::vector<std::uint32_t>;

Q_DECLARE_METATYPE(Ranks)

namespace QTest {
template <>
inline char *toString(std::string const &text)
{
    return toString(QString::fromStdString(text));
}
} // namespace QTest

class TestVersion : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsZero();
    void textIsNormalised_data();
    void textIsNormalised();
    void emptyTextEqualsDefaultAndZeroZero();
    void defaultEqualsZeroZeroZero();
    void rankBeyond32BitsIsCutToLowBits();
    void initFromRanksBuildsText_data();
    void initFromRanksBuildsText();
    void initWithNoRanksGivesDefault();
    void comparisonPadsMissingRanksWithZero_data();
    void comparisonPadsMissingRanksWithZero();
    void copyKeepsTextAndRanks();
};

void TestVersion::defaultIsZero()
{
    Version const version;
    QCOMPARE(version.getString(), std::string("0"));
    QVERIFY(version.ranks() == Ranks{0});
}

void TestVersion::textIsNormalised_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("normal");
    QTest::addColumn<Ranks>("ranks");

    QTest::newRow("own version") << "0.9.240601" << "0.9.240601" << Ranks{0, 9, 240601};
    QTest::newRow("leading zero") << "1.02" << "1.2" << Ranks{1, 2};
    QTest::newRow("trailing dot") << "1." << "1.0" << Ranks{1, 0};
    QTest::newRow("leading dot") << ".5" << "0.5" << Ranks{0, 5};
    QTest::newRow("double dot") << "1..2" << "1.0.2" << Ranks{1, 0, 2};
    QTest::newRow("letter rank") << "1.x" << "1.0" << Ranks{1, 0};
    QTest::newRow("word") << "abc" << "0" << Ranks{0};
    QTest::newRow("empty") << "" << "0" << Ranks{0};
    QTest::newRow("number then letters") << "12abc" << "12" << Ranks{12};
    QTest::newRow("leading blank") << " 3.4" << "3.4" << Ranks{3, 4};
    QTest::newRow("negative rank") << "-1" << "4294967295" << Ranks{4294967295u};
    QTest::newRow("largest rank") << "4294967295.1" << "4294967295.1" << Ranks{4294967295u, 1};
}

void TestVersion::textIsNormalised()
{
    QFETCH(QString, text);
    QFETCH(QString, normal);
    QFETCH(Ranks, ranks);

    Version const version(text.toStdString());
    QCOMPARE(version.getString(), normal.toStdString());
    QVERIFY(version.ranks() == ranks);

    Version reused(std::string("7.7.7"));
    reused.init(text.toStdString());
    QCOMPARE(reused.getString(), normal.toStdString());
}

void TestVersion::emptyTextEqualsDefaultAndZeroZero()
{
    Version const empty(std::string(""));
    QCOMPARE(empty.getString(), std::string("0"));
    QVERIFY(empty == Version());
    QVERIFY(empty == Version(std::string("0.0")));
    QVERIFY(!(empty != Version(std::string("0.0"))));
}

void TestVersion::defaultEqualsZeroZeroZero()
{
    Version const zero(std::string("0.0.0"));
    QVERIFY(Version() == zero);
    QVERIFY(!(Version() != zero));
    QVERIFY(!(zero != Version()));
}

void TestVersion::rankBeyond32BitsIsCutToLowBits()
{
    Version const version(std::string("4294967296"));
    QVERIFY(version.ranks() == Ranks{0});
    QCOMPARE(version.getString(), std::string("0"));
    QVERIFY(version == Version());
    QVERIFY(Version(std::string("1.4294967297")) == Version(std::string("1.1")));
}

void TestVersion::initFromRanksBuildsText_data()
{
    QTest::addColumn<Ranks>("ranks");
    QTest::addColumn<QString>("text");

    QTest::newRow("one rank") << Ranks{5} << "5";
    QTest::newRow("three ranks") << Ranks{0, 9, 240601} << "0.9.240601";
    QTest::newRow("zeros kept") << Ranks{1, 0, 0} << "1.0.0";
    QTest::newRow("largest rank") << Ranks{4294967295u} << "4294967295";
}

void TestVersion::initFromRanksBuildsText()
{
    QFETCH(Ranks, ranks);
    QFETCH(QString, text);

    Version const version(ranks);
    QCOMPARE(version.getString(), text.toStdString());
    QVERIFY(version.ranks() == ranks);
}

void TestVersion::initWithNoRanksGivesDefault()
{
    Version version(std::string("3.4"));
    version.init(Ranks{});
    QCOMPARE(version.getString(), std::string("0"));
    QVERIFY(version.ranks() == Ranks{0});
    QVERIFY(version == Version());

    Version const fromNothing{Ranks{}};
    QCOMPARE(fromNothing.getString(), std::string("0"));
    QVERIFY(fromNothing.ranks() == Ranks{0});
}

void TestVersion::comparisonPadsMissingRanksWithZero_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    // -1 less, 0 equal, 1 greater
    QTest::addColumn<int>("order");

    QTest::newRow("same") << "1.2" << "1.2" << 0;
    QTest::newRow("shorter equals padded") << "1.2" << "1.2.0" << 0;
    QTest::newRow("longer equals padded") << "1.2.0" << "1.2" << 0;
    QTest::newRow("1 and 1.0") << "1" << "1.0" << 0;
    QTest::newRow("2.10 after 2.9: numbers, not text") << "2.10" << "2.9" << 1;
    QTest::newRow("2.9 before 2.10") << "2.9" << "2.10" << -1;
    QTest::newRow("1.2 before 1.2.1") << "1.2" << "1.2.1" << -1;
    QTest::newRow("1.2.0.1 after 1.2") << "1.2.0.1" << "1.2" << 1;
    QTest::newRow("1.3 after 1.2.9") << "1.3" << "1.2.9" << 1;
    QTest::newRow("first differing rank decides") << "2.0.0" << "1.9.9" << 1;
    QTest::newRow("text plays no part") << "1.02" << "1.2" << 0;
    QTest::newRow("ranks are unsigned") << "-1" << "4294967294" << 1;
    QTest::newRow("newest of the schema") << "2.0" << "1.5" << 1;
    QTest::newRow("empty and 0.0") << "" << "0.0" << 0;
    QTest::newRow("zero and one") << "0" << "0.0.1" << -1;
}

void TestVersion::comparisonPadsMissingRanksWithZero()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QFETCH(int, order);

    Version const l(left.toStdString());
    Version const r(right.toStdString());
    QCOMPARE(l == r, order == 0);
    QCOMPARE(l != r, order != 0);
    QCOMPARE(l < r, order < 0);
    QCOMPARE(l > r, order > 0);
    QCOMPARE(l <= r, order <= 0);
    QCOMPARE(l >= r, order >= 0);
}

void TestVersion::copyKeepsTextAndRanks()
{
    Version const original(std::string("1.02.3"));
    Version copy = original;
    QCOMPARE(copy.getString(), std::string("1.2.3"));
    QVERIFY(copy.ranks() == original.ranks());
    copy.init(std::string("4"));
    QCOMPARE(original.getString(), std::string("1.2.3"));
}

QTEST_APPLESS_MAIN(TestVersion)

#include "tst_version.moc"
