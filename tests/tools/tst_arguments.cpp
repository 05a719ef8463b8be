// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The command-line arguments of one orvexctl command.
#include "ctl/arguments.h"

#include <QtTest>

namespace {

std::vector<OptionInfo> const _known
    = { { "--help", "-h", false }, { "--schema", "", true }, { "--output", "-o", true } };

} // namespace

class TestArguments : public QObject
{
    Q_OBJECT

private slots:
    void optionsAndPositionalsAreSplit();
    void negativeNumbersArePositional_data();
    void negativeNumbersArePositional();
    void doubleDashEndsOptions();
    void unknownOptionIsRefused();
    void optionWithoutValueIsRefused();
    void lastValueOfRepeatedOptionWins();
};

void TestArguments::optionsAndPositionalsAreSplit()
{
    Arguments args;
    std::string error;
    QVERIFY(args.parse({ "a.conf", "-o", "b.conf", "--schema", "s.xsd", "x" }, _known, error));
    QCOMPARE(args.positional(), (std::vector<std::string> { "a.conf", "x" }));
    QCOMPARE(args.value("--output"), std::string("b.conf"));
    QCOMPARE(args.value("--schema"), std::string("s.xsd"));
    QVERIFY(!args.isSet("--help"));
    QCOMPARE(args.value("--help"), std::string());
}

void TestArguments::negativeNumbersArePositional_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("integer") << "-20";
    QTest::newRow("decimal") << "-.5";
    QTest::newRow("lone dash") << "-";
}

void TestArguments::negativeNumbersArePositional()
{
    QFETCH(QString, value);
    Arguments args;
    std::string error;
    QVERIFY(args.parse({ "c.conf", "Site/Altitude", value.toStdString() }, _known, error));
    QCOMPARE(args.positional().back(), value.toStdString());
}

void TestArguments::doubleDashEndsOptions()
{
    Arguments args;
    std::string error;
    QVERIFY(args.parse({ "c.conf", "--", "--schema", "-h" }, _known, error));
    QCOMPARE(args.positional(), (std::vector<std::string> { "c.conf", "--schema", "-h" }));
    QVERIFY(!args.isSet("--schema"));
}

void TestArguments::unknownOptionIsRefused()
{
    Arguments args;
    std::string error;
    QVERIFY(!args.parse({ "c.conf", "--colour" }, _known, error));
    QCOMPARE(error, std::string("unknown option --colour"));
}

void TestArguments::optionWithoutValueIsRefused()
{
    Arguments args;
    std::string error;
    QVERIFY(!args.parse({ "c.conf", "-o" }, _known, error));
    QCOMPARE(error, std::string("option -o needs a value"));
}

void TestArguments::lastValueOfRepeatedOptionWins()
{
    Arguments args;
    std::string error;
    QVERIFY(args.parse({ "--schema", "a.xsd", "--schema", "b.xsd" }, _known, error));
    QCOMPARE(args.value("--schema"), std::string("b.xsd"));
}

QTEST_APPLESS_MAIN(TestArguments)
#include "tst_arguments.moc"
