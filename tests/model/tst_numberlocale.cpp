// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "model/parameter.h"
#include "parambuilders.h"

#include <QApplication>
#include <QtTest>

#include <clocale>
#include <cstdlib>
#include <string>

// Runs under a German desktop locale, whose decimal separator is the comma.
// Configuration and schema text always write the decimal point.
class TestNumberLocale : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void value2doubleReadsDecimalPoint_data();
    void value2doubleReadsDecimalPoint();
    void decimalRangeHoldsUnderCommaLocale_data();
    void decimalRangeHoldsUnderCommaLocale();
    void decimalListItemsHoldUnderCommaLocale();
};

void TestNumberLocale::initTestCase()
{
    // Without this the tests below would prove nothing.
    QVERIFY(qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr);
    QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(","));
    QCOMPARE(std::strtod("0,5", nullptr), 0.5);
    QCOMPARE(std::strtod("1.5", nullptr), 1.0);
}

void TestNumberLocale::value2doubleReadsDecimalPoint_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");

    QTest::newRow("point") << "0.5" << 0.5;
    QTest::newRow("negative point") << "-60.25" << -60.25;
    QTest::newRow("exponent") << "1.5e2" << 150.0;
    QTest::newRow("comma ends the number") << "0,5" << 0.0;
    QTest::newRow("comma after digits") << "1,6" << 1.0;
}

void TestNumberLocale::value2doubleReadsDecimalPoint()
{
    QFETCH(QString, text);
    QFETCH(double, number);
    QCOMPARE(ParameterSimple::value2double(text.toStdString()), number);
}

void TestNumberLocale::decimalRangeHoldsUnderCommaLocale_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("allowed");

    QTest::newRow("lower bound") << "0.5" << true;
    QTest::newRow("upper bound") << "1.5" << true;
    QTest::newRow("inside") << "1.25" << true;
    QTest::newRow("above") << "1.6" << false;
    QTest::newRow("below") << "0.4" << false;
    // Read as 1, inside the range; read with the comma it would be 1.6, outside.
    QTest::newRow("comma text reads up to the comma") << "1,6" << true;
}

void TestNumberLocale::decimalRangeHoldsUnderCommaLocale()
{
    QFETCH(QString, value);
    QFETCH(bool, allowed);

    ParameterSimple::Fasets const fasets = builders::range(0.5, 1.5);
    QCOMPARE(ParameterSimple::checkValue(value.toStdString(), fasets, ParameterSimple::Decimal),
             allowed);

    ParameterSimple leaf(nullptr, "ratio", Parameter::VisualParams(), ParameterSimple::Decimal,
                         fasets);
    QCOMPARE(leaf.setValue(value.toStdString()), allowed);
}

void TestNumberLocale::decimalListItemsHoldUnderCommaLocale()
{
    // minOccurs 1 also bounds each item; two items at most, and no item above 2.5.
    ParameterSimple::Fasets const fasets = builders::range(1, 2.5);
    ParameterList list(nullptr, "widths", "Width", Parameter::VisualParams(),
                       ParameterSimple::Decimal, fasets);

    QVERIFY(!list.setValues({"1.5", "2.6"}));
    QVERIFY(list.setValues({"1.5", "2.25"}));
    QVERIFY(!list.addValue("2.75"));
    QVERIFY(list.addValue("1.01"));
    QCOMPARE(list.getValues().size(), std::size_t(3));
}

QTEST_MAIN(TestNumberLocale)

#include "tst_numberlocale.moc"
