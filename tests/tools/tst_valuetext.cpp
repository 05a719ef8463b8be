// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The texts of values, paths and limits that orvexctl prints and reads.
#include "ctl/configtree.h"
#include "ctl/valuetext.h"
#include "model/parameter.h"

#include <QtTest>

class TestValueText : public QObject
{
    Q_OBJECT

private slots:
    void parseValuePathSplitsIndexAndLine_data();
    void parseValuePathSplitsIndexAndLine();
    void parseValuePathRefusesMalformedPaths_data();
    void parseValuePathRefusesMalformedPaths();
    void allowedTextTellsWhatCheckValueLetsThrough_data();
    void allowedTextTellsWhatCheckValueLetsThrough();
    void numberTextWritesBoundsAsSchemaWould_data();
    void numberTextWritesBoundsAsSchemaWould();
    void valueLinesGiveOneLinePerItemAndSetLine();
    void emptyListGivesBareKeyOnlyWhenAsked();
};

void TestValueText::parseValuePathSplitsIndexAndLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("line");
    QTest::newRow("leaf") << "Camera/Gain"
                          << "Camera/Gain" << -1 << -1;
    QTest::newRow("item") << "Paths/CatalogFiles[12]"
                          << "Paths/CatalogFiles" << 12 << -1;
    QTest::newRow("set line") << "Tracking/Satellites[0]/Line2"
                              << "Tracking/Satellites" << 0 << 2;
    QTest::newRow("root") << ""
                          << "" << -1 << -1;
    // Without a bracket "Line1" is an ordinary key.
    QTest::newRow("key named Line1") << "Box/Line1"
                                     << "Box/Line1" << -1 << -1;
}

void TestValueText::parseValuePathSplitsIndexAndLine()
{
    QFETCH(QString, text);
    QFETCH(QString, parameter);
    QFETCH(int, index);
    QFETCH(int, line);
    ValuePath path;
    QVERIFY(parseValuePath(text.toStdString(), path));
    QCOMPARE(QString::fromStdString(path.parameter), parameter);
    QCOMPARE(path.index, index);
    QCOMPARE(path.line, line);
}

void TestValueText::parseValuePathRefusesMalformedPaths_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters as index") << "a[x]";
    QTest::newRow("empty index") << "a[]";
    QTest::newRow("negative index") << "a[-1]";
    QTest::newRow("unclosed") << "a[1";
    QTest::newRow("bracket inside") << "a[1]/b";
    QTest::newRow("line 3") << "a[0]/Line3";
    QTest::newRow("huge index") << "a[99999999999]";
}

void TestValueText::parseValuePathRefusesMalformedPaths()
{
    QFETCH(QString, text);
    ValuePath path;
    QVERIFY(!parseValuePath(text.toStdString(), path));
}

void TestValueText::allowedTextTellsWhatCheckValueLetsThrough_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("minValue");
    QTest::addColumn<double>("maxValue");
    QTest::addColumn<QStringList>("enumeration");
    QTest::addColumn<QString>("expected");
    double const low = ParameterSimple::Fasets().minValue;
    double const high = ParameterSimple::Fasets().maxValue;
    QTest::newRow("integer without facets")
        << int(ParameterSimple::Integer) << low << high << QStringList()
        << "from -9999999 to 9999999, or empty";
    QTest::newRow("integer bounds truncated")
        << int(ParameterSimple::Integer) << 0.9 << 5.9 << QStringList() << "from 0 to 5, or empty";
    QTest::newRow("decimal") << int(ParameterSimple::Decimal) << 0.001 << 3600.0 << QStringList()
                             << "from 0.001 to 3600, or empty";
    QTest::newRow("enumeration decides alone")
        << int(ParameterSimple::Integer) << 5.0 << 6.0 << QStringList { "1", "", "4" }
        << "one of 1 | \"\" | 4";
    QTest::newRow("bounds on text")
        << int(ParameterSimple::String) << 1.0 << 5.0 << QStringList() << "any text";
    QTest::newRow("boolean") << int(ParameterSimple::Boolean) << low << high << QStringList()
                             << "any text";
}

void TestValueText::allowedTextTellsWhatCheckValueLetsThrough()
{
    QFETCH(int, type);
    QFETCH(double, minValue);
    QFETCH(double, maxValue);
    QFETCH(QStringList, enumeration);
    QFETCH(QString, expected);
    ParameterSimple::Fasets fasets;
    fasets.minValue = minValue;
    fasets.maxValue = maxValue;
    for (QString const &entry : enumeration)
        fasets.enumeration.push_back(entry.toStdString());
    auto const simpleType = static_cast<ParameterSimple::SimpleType>(type);
    QCOMPARE(QString::fromStdString(allowedText(fasets, simpleType)), expected);
}

void TestValueText::numberTextWritesBoundsAsSchemaWould_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("expected");
    QTest::newRow("default maximum") << 9999999.9 << "9999999.9";
    QTest::newRow("whole") << -90.0 << "-90";
    QTest::newRow("small") << 0.001 << "0.001";
}

void TestValueText::numberTextWritesBoundsAsSchemaWould()
{
    QFETCH(double, number);
    QFETCH(QString, expected);
    QCOMPARE(QString::fromStdString(numberText(number)), expected);
}

void TestValueText::valueLinesGiveOneLinePerItemAndSetLine()
{
    Parameter::VisualParams const visual;
    ParameterComplex root(nullptr, "root", visual);
    auto *section = new ParameterComplex(&root, "S", visual);
    auto *leaf = new ParameterSimple(
        section, "a", visual, ParameterSimple::String, ParameterSimple::Fasets());
    auto *list = new ParameterList(
        &root, "L", "i", visual, ParameterSimple::String, ParameterSimple::Fasets());
    auto *tles = new ParameterListTLEs(&root, "T", "TLE", visual);
    leaf->setValue("x = y");
    list->setValues({ "1", "2" });
    tles->setTLEs({ { "", "l1", "l2" } });
    std::vector<ValueLine> const lines = valueLines(&root, true);
    QStringList texts;
    for (ValueLine const &line : lines)
        texts << QString::fromStdString(toText(line));
    QCOMPARE(texts,
        (QStringList { "S/a = x = y", "L[0] = 1", "L[1] = 2", "T[0]/Line0 = ", "T[0]/Line1 = l1",
            "T[0]/Line2 = l2" }));
    QCOMPARE(QString::fromStdString(pathOf(tles)), QStringLiteral("T"));
}

void TestValueText::emptyListGivesBareKeyOnlyWhenAsked()
{
    Parameter::VisualParams const visual;
    ParameterComplex root(nullptr, "root", visual);
    new ParameterList(&root, "L", "i", visual, ParameterSimple::String, ParameterSimple::Fasets());
    new ParameterListTLEs(&root, "T", "TLE", visual);
    std::vector<ValueLine> const listed = valueLines(&root, true);
    QCOMPARE(listed.size(), std::size_t(2));
    QCOMPARE(QString::fromStdString(toText(listed[0])), QStringLiteral("L = "));
    QCOMPARE(QString::fromStdString(toText(listed[1])), QStringLiteral("T = "));
    QVERIFY(valueLines(&root, false).empty());
}

QTEST_APPLESS_MAIN(TestValueText)
#include "tst_valuetext.moc"
