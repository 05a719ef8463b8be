// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The spin boxes for integers and decimals, and the radio buttons of an
// enumeration.

#include "editorfixture.h"

#include <QtTest>

using namespace fixture;

class TestNumberEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void integerInBoundsKeepsItsText();
    void integerShowsClampedUntilFirstRefresh();
    void integerRewrittenInPlainDecimal();
    void searchPageKeepsClampedNumber();
    void decimalShowsSixDecimalsAndDimension();
    void emptyDimensionEndsInBlank_data();
    void emptyDimensionEndsInBlank();
    void decimalShortenedToSixSignificantDigits();
    void decimalRoundedToSixDecimals();
    void decimalOnSearchPageShowsTwoDecimals();
    void valueOutsideBoundsPulledToBound_data();
    void valueOutsideBoundsPulledToBound();
    void decimalWriteAboveBoundIsRefusedButReported();
    void spinBoxSteps();
    void spinBoxHasNoSpecialTextAndNoWrapping();
    void integerBoundsTruncatedToInt_data();
    void integerBoundsTruncatedToInt();
    void spinBoxStandsLeftOfItsLabel();
    void radioClickWritesEntryAndReports();
    void radioComparisonIsTextual();
    void radioLoadNeverSwitchesOff();
    void radioWithOneEntry_data();
    void radioWithOneEntry();
    void dimensionShownOnlyBySpinBoxes_data();
    void dimensionShownOnlyBySpinBoxes();
};

void TestNumberEditors::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
}

void TestNumberEditors::integerInBoundsKeepsItsText()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "15", range(10, 20));
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QSpinBox *>();
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(box->value(), 15);
    QCOMPARE(box->minimum(), 10);
    QCOMPARE(box->maximum(), 20);
    QCOMPARE(p->getValue(), std::string("15"));
    QCOMPARE(changed.size(), 0);
}

void TestNumberEditors::integerShowsClampedUntilFirstRefresh()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "5000");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QSpinBox *>();
    QCOMPARE(box->value(), 99);
    QCOMPARE(box->text(), QStringLiteral("99 "));
    QCOMPARE(box->minimum(), -9999999);
    QCOMPARE(box->maximum(), 9999999);
    QCOMPARE(p->getValue(), std::string("5000"));

    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(box->value(), 5000);
    QCOMPARE(p->getValue(), std::string("5000"));
    QCOMPARE(changed.size(), 1); // the first refresh counts as an edit
    emit frame.sig_update();
    QCOMPARE(changed.size(), 1);
}

void TestNumberEditors::integerRewrittenInPlainDecimal()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "0250xyz");
    ParamSimple frame(p, nullptr);
    emit frame.sig_update();
    QCOMPARE(p->getValue(), std::string("250"));
}

void TestNumberEditors::searchPageKeepsClampedNumber()
{
    // A search page never refreshes its editors.
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "5000");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QSpinBox *>();
    QCoreApplication::processEvents();
    QCOMPARE(box->value(), 99);
    QCOMPARE(p->getValue(), std::string("5000"));

    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    box->stepUp(); // only an edit by the user reaches the parameter
    QCOMPARE(p->getValue(), std::string("100"));
    QCOMPARE(changed.size(), 1);
}

void TestNumberEditors::decimalShowsSixDecimalsAndDimension()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "0.5", ParameterSimple::Fasets(),
                                     visual("Range", 2, "", "", "km"));
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    QCOMPARE(box->text(), QStringLiteral("0.500000 km"));
    QCOMPARE(box->decimals(), 6);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(box->text(), QStringLiteral("0.500000 km"));
    QCOMPARE(changed.size(), 0);
    QCOMPARE(p->getValue(), std::string("0.5"));
}

void TestNumberEditors::emptyDimensionEndsInBlank_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("shown");
    QTest::newRow("integer") << int(ParameterSimple::Integer) << "7 ";
    QTest::newRow("decimal") << int(ParameterSimple::Decimal) << "7.000000 ";
}

void TestNumberEditors::emptyDimensionEndsInBlank()
{
    QFETCH(int, type);
    QFETCH(QString, shown);

    Tree tree;
    ParamSimple frame(tree.simple(Type(type), "7"), nullptr);
    auto *box = frame.findChild<QAbstractSpinBox *>();
    QCOMPARE(box->text(), shown);
    QVERIFY(box->text().endsWith(QLatin1Char(' ')));
}

void TestNumberEditors::decimalShortenedToSixSignificantDigits()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "1234567.891");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    QCOMPARE(box->value(), 99.99);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    emit frame.sig_update();
    QCOMPARE(p->getValue(), std::string("1.23457e+06"));
    QCOMPARE(box->value(), 1234567.891);
    QCOMPARE(changed.size(), 1);

    // The box still holds the longer number: a second refresh settles it,
    // and reports once more.
    emit frame.sig_update();
    QCOMPARE(box->value(), 1234570.0);
    QCOMPARE(p->getValue(), std::string("1.23457e+06"));
    QCOMPARE(changed.size(), 2);

    emit frame.sig_update();
    QCOMPARE(changed.size(), 2);
}

void TestNumberEditors::decimalRoundedToSixDecimals()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "0.12345678");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    emit frame.sig_update();
    QCOMPARE(box->text(), QStringLiteral("0.123457 "));
    QCOMPARE(p->getValue(), std::string("0.123457"));
}

void TestNumberEditors::decimalOnSearchPageShowsTwoDecimals()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "3.14159");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    QCOMPARE(box->value(), 3.14);
    QCOMPARE(box->text(), QStringLiteral("3.140000 "));
    QCOMPARE(p->getValue(), std::string("3.14159"));
}

void TestNumberEditors::valueOutsideBoundsPulledToBound_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");

    QTest::newRow("integer above") << int(ParameterSimple::Integer) << "500" << "200";
    QTest::newRow("decimal above") << int(ParameterSimple::Decimal) << "500.5" << "200";
}

void TestNumberEditors::valueOutsideBoundsPulledToBound()
{
    QFETCH(int, type);
    QFETCH(QString, value);
    QFETCH(QString, written);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), value.toStdString(), range(100, 200));
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QAbstractSpinBox *>();
    QCOMPARE(box->text().trimmed().toDouble(), 100.0); // 99 pulled up to the minimum
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(box->text().trimmed().toDouble(), 200.0);
    QCOMPARE(QString::fromStdString(p->getValue()), written);
    QCOMPARE(changed.size(), 1);
}

void TestNumberEditors::decimalWriteAboveBoundIsRefusedButReported()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "1234567", range(0, 1234567));
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(box->value(), 1234567.0); // the box keeps its number
    QCOMPARE(p->getValue(), std::string("1234567")); // 1.23457e+06 lies above the maximum
    QCOMPARE(changed.size(), 1);
}

void TestNumberEditors::spinBoxSteps()
{
    Tree tree;
    ParameterSimple *decimal = tree.simple(ParameterSimple::Decimal, "1");
    ParameterSimple *integer = tree.simple(ParameterSimple::Integer, "1");
    ParamSimple decimalFrame(decimal, nullptr);
    ParamSimple integerFrame(integer, nullptr);
    auto *decimalBox = decimalFrame.findChild<QDoubleSpinBox *>();
    auto *integerBox = integerFrame.findChild<QSpinBox *>();
    QCOMPARE(decimalBox->singleStep(), 0.1);
    QCOMPARE(integerBox->singleStep(), 1);

    QTest::keyClick(decimalBox, Qt::Key_Up);
    QCOMPARE(decimal->getValue(), std::string("1.1"));
    decimalBox->stepUp(); // what the up button does
    QCOMPARE(decimal->getValue(), std::string("1.2"));
    QTest::keyClick(decimalBox, Qt::Key_Down);
    QCOMPARE(decimal->getValue(), std::string("1.1"));

    QTest::keyClick(integerBox, Qt::Key_Up);
    QCOMPARE(integer->getValue(), std::string("2"));
    integerBox->stepDown();
    QCOMPARE(integer->getValue(), std::string("1"));
}

void TestNumberEditors::spinBoxHasNoSpecialTextAndNoWrapping()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "20", range(10, 20));
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QSpinBox *>();
    QVERIFY(box->specialValueText().isEmpty());
    QVERIFY(!box->wrapping());
    box->stepUp();
    QCOMPARE(box->value(), 20);
    auto *decimalFrame = new ParamSimple(tree.simple(ParameterSimple::Decimal), &frame);
    auto *decimalBox = decimalFrame->findChild<QDoubleSpinBox *>();
    QVERIFY(decimalBox->specialValueText().isEmpty());
    QVERIFY(!decimalBox->wrapping());
}

void TestNumberEditors::integerBoundsTruncatedToInt_data()
{
    QTest::addColumn<double>("minValue");
    QTest::addColumn<double>("maxValue");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");

    QTest::newRow("fractions") << 0.9 << 5.9 << 0 << 5;
    QTest::newRow("toward zero") << -0.5 << -0.1 << 0 << 0;
    QTest::newRow("negative fractions") << -7.8 << 7.8 << -7 << 7;
    QTest::newRow("defaults") << -9999999.9 << 9999999.9 << -9999999 << 9999999;
    QTest::newRow("32-bit limits") << double(INT_MIN) << double(INT_MAX) << INT_MIN << INT_MAX;
}

void TestNumberEditors::integerBoundsTruncatedToInt()
{
    QFETCH(double, minValue);
    QFETCH(double, maxValue);
    QFETCH(int, minimum);
    QFETCH(int, maximum);

    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::Integer, "0", range(minValue, maxValue)), nullptr);
    auto *box = frame.findChild<QSpinBox *>();
    QCOMPARE(box->minimum(), minimum);
    QCOMPARE(box->maximum(), maximum);
}

void TestNumberEditors::spinBoxStandsLeftOfItsLabel()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::Integer, "3", ParameterSimple::Fasets(),
                                  visual("Threads", 0)),
                      nullptr);
    QGridLayout *grid = controlGrid(frame);
    auto *label = frame.findChild<QLabel *>();
    QCOMPARE(label->text(), QStringLiteral("Threads"));
    QVERIFY(label->font().bold());
    QCOMPARE(cellOf(grid, frame.findChild<QSpinBox *>()), QList<int>({0, 0, 1, 1}));
    QCOMPARE(cellOf(grid, label), QList<int>({0, 1, 1, 1}));
}

void TestNumberEditors::radioClickWritesEntryAndReports()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::String, "low",
                                     enumeration({"low", "Medium (default)", "high"}), visual("Level"));
    ParamSimple frame(p, nullptr);
    showAndWait(frame);
    auto *group = frame.findChild<QGroupBox *>();
    QCOMPARE(group->title(), QStringLiteral("Level"));
    QCOMPARE(cellOf(controlGrid(frame), group), QList<int>({0, 0, 1, 1}));
    QCOMPARE(frame.findChildren<QButtonGroup *>().size(), 0);
    const QList<QRadioButton *> buttons = frame.findChildren<QRadioButton *>();
    QCOMPARE(buttons.size(), 3);
    QCOMPARE(buttons.at(0)->text(), QStringLiteral("low")); // schema order
    QCOMPARE(buttons.at(2)->text(), QStringLiteral("high"));
    for (QRadioButton *button : buttons)
        QCOMPARE(button->parentWidget(), group);
    QCOMPARE(checkedRadios(frame), QStringList({"low"}));

    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    clickIndicator(radioOf(frame, QStringLiteral("Medium (default)")));
    QCOMPARE(p->getValue(), std::string("Medium (default)"));
    QCOMPARE(checkedRadios(frame), QStringList({"Medium (default)"}));
    QCOMPARE(changed.size(), 1);

    clickIndicator(radioOf(frame, QStringLiteral("Medium (default)"))); // already on
    QCOMPARE(p->getValue(), std::string("Medium (default)"));
    QCOMPARE(changed.size(), 2);

    emit frame.sig_update(); // a load is not an edit
    QCOMPARE(changed.size(), 2);
}

void TestNumberEditors::radioComparisonIsTextual()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::Integer, "1.0", enumeration({"1", "2"}));
    ParamSimple frame(p, nullptr);
    QCOMPARE(checkedRadios(frame), QStringList());
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(checkedRadios(frame), QStringList());
    QCOMPARE(p->getValue(), std::string("1.0")); // nothing written until a click
    QCOMPARE(changed.size(), 0);
}

void TestNumberEditors::radioLoadNeverSwitchesOff()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::String, "b", enumeration({"a", "b", "c"}));
    ParamSimple frame(p, nullptr);
    QCOMPARE(checkedRadios(frame), QStringList({"b"}));
    p->forceValue("z");
    emit frame.sig_update();
    QCOMPARE(checkedRadios(frame), QStringList({"b"}));
    p->forceValue("c");
    emit frame.sig_update();
    QCOMPARE(checkedRadios(frame), QStringList({"c"}));
}

void TestNumberEditors::radioWithOneEntry_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("on");
    QTest::newRow("matching") << "only" << true;
    QTest::newRow("not matching") << "other" << false;
    QTest::newRow("empty") << QString() << false;
}

void TestNumberEditors::radioWithOneEntry()
{
    QFETCH(QString, value);
    QFETCH(bool, on);

    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String, value.toStdString(), enumeration({"only"})),
                      nullptr);
    const QList<QRadioButton *> buttons = frame.findChildren<QRadioButton *>();
    QCOMPARE(buttons.size(), 1);
    QCOMPARE(buttons.at(0)->text(), QStringLiteral("only"));
    QCOMPARE(buttons.at(0)->isChecked(), on);
}

void TestNumberEditors::dimensionShownOnlyBySpinBoxes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("enumerated");
    QTest::addColumn<bool>("shown");

    QTest::newRow("integer") << int(ParameterSimple::Integer) << false << true;
    QTest::newRow("decimal") << int(ParameterSimple::Decimal) << false << true;
    QTest::newRow("radio group") << int(ParameterSimple::Integer) << true << false;
    QTest::newRow("check box") << int(ParameterSimple::Boolean) << false << false;
    QTest::newRow("line edit") << int(ParameterSimple::String) << false << false;
    QTest::newRow("browse") << int(ParameterSimple::Dirpath) << false << false;
}

void TestNumberEditors::dimensionShownOnlyBySpinBoxes()
{
    QFETCH(int, type);
    QFETCH(bool, enumerated);
    QFETCH(bool, shown);

    Tree tree;
    ParamSimple frame(tree.simple(Type(type), "1",
                                  enumerated ? enumeration({"1", "2"}) : ParameterSimple::Fasets(),
                                  visual("Span", 2, "", "", "parsec")),
                      nullptr);
    QStringList texts;
    for (QWidget *w : frame.findChildren<QWidget *>()) {
        if (auto *label = qobject_cast<QLabel *>(w))
            texts << label->text();
        else if (auto *button = qobject_cast<QAbstractButton *>(w))
            texts << button->text();
        else if (auto *group = qobject_cast<QGroupBox *>(w))
            texts << group->title();
        else if (auto *box = qobject_cast<QAbstractSpinBox *>(w))
            texts << box->text();
        else if (auto *edit = qobject_cast<QLineEdit *>(w))
            texts << edit->text();
    }
    QCOMPARE(texts.join('|').contains(QStringLiteral("parsec")), shown);
}

QTEST_MAIN(TestNumberEditors)
#include "tst_numbereditors.moc"
