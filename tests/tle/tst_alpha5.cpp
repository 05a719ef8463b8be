// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The five columns of a catalog number, in digits or in the Alpha-5 form.
#include "tle/alpha5.h"

#include <QtTest>

class TestAlpha5 : public QObject
{
    Q_OBJECT

private slots:
    void numbersTakeTheirColumns_data();
    void numbersTakeTheirColumns();
    void numbersOutsideTheFormAreRefused_data();
    void numbersOutsideTheFormAreRefused();
    void fieldsThatAreNoNumberDecodeToMinusOne_data();
    void fieldsThatAreNoNumberDecodeToMinusOne();
};

void TestAlpha5::numbersTakeTheirColumns_data()
{
    QTest::addColumn<long>("number");
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("letterForm");
    QTest::newRow("zero") << 0L << "00000" << false;
    QTest::newRow("vanguard") << 5L << "00005" << false;
    QTest::newRow("iss") << 25544L << "25544" << false;
    QTest::newRow("last of five digits") << 99999L << "99999" << false;
    QTest::newRow("first of Alpha-5") << 100000L << "A0000" << true;
    QTest::newRow("H is 17") << 179999L << "H9999" << true;
    QTest::newRow("I is skipped, J is 18") << 180000L << "J0000" << true;
    QTest::newRow("N is 22") << 229999L << "N9999" << true;
    QTest::newRow("O is skipped, P is 23") << 230000L << "P0000" << true;
    QTest::newRow("last of Alpha-5") << 339999L << "Z9999" << true;
}

void TestAlpha5::numbersTakeTheirColumns()
{
    QFETCH(long, number);
    QFETCH(QString, field);
    QFETCH(bool, letterForm);
    std::string written;
    QVERIFY(Alpha5::encode(number, written));
    QCOMPARE(QString::fromStdString(written), field);
    QCOMPARE(Alpha5::decode(written), number);
    QCOMPARE(Alpha5::isLetterForm(written), letterForm);
}

void TestAlpha5::numbersOutsideTheFormAreRefused_data()
{
    QTest::addColumn<long>("number");
    QTest::newRow("negative") << -1L;
    QTest::newRow("one past Z9999") << 340000L;
    QTest::newRow("a million") << 1000000L;
}

void TestAlpha5::numbersOutsideTheFormAreRefused()
{
    QFETCH(long, number);
    std::string field = "kept";
    QVERIFY(!Alpha5::encode(number, field));
    QCOMPARE(field, std::string("kept"));
}

void TestAlpha5::fieldsThatAreNoNumberDecodeToMinusOne_data()
{
    QTest::addColumn<QString>("field");
    QTest::newRow("letter I") << "I0000";
    QTest::newRow("letter O") << "O0000";
    QTest::newRow("lower case") << "a0000";
    QTest::newRow("four columns") << "A000";
    QTest::newRow("six columns") << "100000";
    QTest::newRow("blank in front") << " 5544";
    QTest::newRow("letter behind") << "0000A";
}

void TestAlpha5::fieldsThatAreNoNumberDecodeToMinusOne()
{
    QFETCH(QString, field);
    QCOMPARE(Alpha5::decode(field.toStdString()), -1L);
    QVERIFY(!Alpha5::isLetterForm(field.toStdString()));
}

QTEST_APPLESS_MAIN(TestAlpha5)
#include "tst_alpha5.moc"
