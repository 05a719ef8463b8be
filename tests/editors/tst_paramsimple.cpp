// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/paramsimple.h"

#include "editors/dialogadditem.h"
#include "editors/listview.h"
#include "model/parameter.h"
#include "modalanswerer.h"
#include "typing.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QWheelEvent>
#include <QtTest>

#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace {

using Type = ParameterSimple::SimpleType;

const QString keyRule25 = QStringLiteral("[a-zA-Z0-9)(_\\-]{1,25}");
const QString keyRule8 = QStringLiteral("[A-Z0-9)(_\\-]{1,8}");
const QString emailRule = QStringLiteral("[a-zA-Z0-9.]+@[a-zA-Z0-9.]+");
const QString black = QStringLiteral("QLineEdit { color: black;}");
const QString red = QStringLiteral("QLineEdit { color: red;}");

Parameter::VisualParams visual(const std::string &name = "Some value", int importance = 2,
                               const std::string &doc = std::string(),
                               const std::string &source = std::string(),
                               const std::string &dimension = std::string())
{
    Parameter::VisualParams v;
    v.name_en = name;
    v.importance = importance;
    v.documentation = doc;
    v.source = source;
    v.dimension = dimension;
    return v;
}

ParameterSimple::Fasets range(double minValue, double maxValue)
{
    ParameterSimple::Fasets f;
    f.kind = ParameterSimple::FasetRange;
    f.minValue = minValue;
    f.maxValue = maxValue;
    return f;
}

ParameterSimple::Fasets enumeration(std::vector<std::string> entries)
{
    ParameterSimple::Fasets f;
    f.kind = ParameterSimple::FasetEnumeration;
    f.enumeration = std::move(entries);
    return f;
}

// A leaf that can be given a value its facets would refuse, as a file written
// for another schema leaves behind.
class LooseParameter : public ParameterSimple
{
public:
    using ParameterSimple::ParameterSimple;
    void forceValue(const std::string &text) { value = text; }
};

// The parameters of one test; the root owns them.
struct Tree
{
    Tree() : root(nullptr, "root", Parameter::VisualParams()) {}

    LooseParameter *simple(Type type, const std::string &value = std::string(),
                           const ParameterSimple::Fasets &fasets = ParameterSimple::Fasets(),
                           const Parameter::VisualParams &v = visual(), const std::string &key = "key")
    {
        auto *p = new LooseParameter(&root, key, v, type, fasets);
        if (!value.empty())
            p->forceValue(value);
        return p;
    }

    ParameterList *list(Type type, std::vector<std::string> values = {}, double minimum = 0,
                        const Parameter::VisualParams &v = visual())
    {
        auto *p = new ParameterList(&root, "items", "item", v, type, range(minimum, 9999999.9));
        if (!values.empty())
            p->setValues(values);
        return p;
    }

    ParameterListTLEs *tles(const Parameter::VisualParams &v = visual())
    {
        return new ParameterListTLEs(&root, "tles", "tle", v);
    }

    ParameterComplex root;
};

QString dataFile(const QString &name)
{
    return QStringLiteral(ORVEX_TEST_DATA_DIR "/editors/") + name;
}

QByteArray readData(const QString &name)
{
    QFile file(dataFile(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data %s", qPrintable(name));
    return file.readAll();
}

// The sets of a file in the form the editor writes: one empty line between
// sets, two line feeds at the end.
QString normalForm(const QByteArray &fileText)
{
    QString text = QString::fromUtf8(fileText).trimmed();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text + QStringLiteral("\n\n");
}

void showAndWait(QWidget &widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

QPushButton *buttonOf(QWidget *parent, const QString &text)
{
    for (QPushButton *button : parent->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

QPushButton *infoButton(ParamSimple &frame)
{
    return buttonOf(&frame, QStringLiteral("?"));
}

// The line edit of a text control, not the one inside a spin box.
QLineEdit *lineEditOf(ParamSimple &frame)
{
    return frame.findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
}

QString patternOf(const QLineEdit *edit)
{
    auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    return validator ? validator->regularExpression().pattern() : QStringLiteral("<none>");
}

bool caseInsensitive(const QLineEdit *edit)
{
    auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    return validator
           && validator->regularExpression().patternOptions().testFlag(
               QRegularExpression::CaseInsensitiveOption);
}

// Where a widget sits in a grid: row, column, row span, column span.
QList<int> cellOf(QGridLayout *grid, QWidget *widget)
{
    const int i = grid->indexOf(widget);
    if (i < 0)
        return {};
    int row, column, rowSpan, columnSpan;
    grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
    return {row, column, rowSpan, columnSpan};
}

// The grid that holds the control, right of the "?" button.
QGridLayout *controlGrid(ParamSimple &frame)
{
    auto *main = qobject_cast<QGridLayout *>(frame.layout());
    if (!main)
        return nullptr;
    for (int i = 0; i < main->count(); ++i) {
        if (auto *grid = qobject_cast<QGridLayout *>(main->itemAt(i)->layout()))
            return grid;
    }
    return nullptr;
}

// The text the control shows as its title.
QString titleShown(ParamSimple &frame)
{
    if (auto *group = frame.findChild<QGroupBox *>())
        return group->title();
    if (auto *check = frame.findChild<QCheckBox *>())
        return check->text();
    if (auto *label = frame.findChild<QLabel *>())
        return label->text();
    return QString();
}

// A short name for the control a frame holds.
QString controlKind(ParamSimple &frame)
{
    if (frame.findChild<QPlainTextEdit *>())
        return QStringLiteral("tle");
    if (frame.findChild<ListView *>())
        return QStringLiteral("list");
    if (frame.findChild<QRadioButton *>())
        return QStringLiteral("radio");
    if (frame.findChild<QDoubleSpinBox *>())
        return QStringLiteral("double");
    if (frame.findChild<QSpinBox *>())
        return QStringLiteral("int");
    if (frame.findChild<QCheckBox *>())
        return QStringLiteral("check");
    if (QLineEdit *edit = lineEditOf(frame)) {
        QString kind = QStringLiteral("line ") + patternOf(edit);
        if (edit->echoMode() == QLineEdit::Password)
            kind += QStringLiteral(" password");
        if (buttonOf(&frame, QStringLiteral("...")))
            kind += QStringLiteral(" browse");
        return kind;
    }
    return QStringLiteral("none");
}

// Clicks a check box or radio button by mouse, on its indicator.
void clickIndicator(QAbstractButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

QRadioButton *radioOf(ParamSimple &frame, const QString &text)
{
    for (QRadioButton *button : frame.findChildren<QRadioButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

QStringList checkedRadios(ParamSimple &frame)
{
    QStringList on;
    for (QRadioButton *button : frame.findChildren<QRadioButton *>()) {
        if (button->isChecked())
            on << button->text();
    }
    return on;
}

QStringList rowsOf(ListView *view)
{
    QStringList rows;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        rows << view->model()->index(row, 0).data().toString();
    return rows;
}

void clickRow(ListView *view, int row)
{
    const QRect rect = view->visualRect(view->model()->index(row, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

// Answers the add dialog: types, then presses Ok or Cancel.
ModalAnswerer::Handler typeInAddDialog(const QString &typed, bool ok)
{
    return [typed, ok](QWidget *w) {
        QLineEdit *edit = w->findChild<QLineEdit *>();
        QVERIFY(edit);
        QTest::keyClicks(edit, typed);
        buttonOf(w, ok ? QStringLiteral("&Ok") : QStringLiteral("&Cancel"))->click();
    };
}

std::vector<std::string> strings(std::initializer_list<const char *> items)
{
    return std::vector<std::string>(items.begin(), items.end());
}

QPlainTextEdit *fieldOf(ParamSimple &frame)
{
    return frame.findChild<QPlainTextEdit *>();
}

void paste(QPlainTextEdit *field, const QString &text)
{
    QApplication::clipboard()->setText(text);
    field->paste();
}

std::vector<ParameterListTLEs::TLE> setsOf(const QByteArray &fileText)
{
    std::vector<ParameterListTLEs::TLE> sets;
    const QStringList lines = QString::fromUtf8(fileText).remove(QLatin1Char('\r')).split('\n');
    for (int i = 0; i + 2 < lines.size(); i += 4)
        sets.push_back({lines[i].toStdString(), lines[i + 1].toStdString(), lines[i + 2].toStdString()});
    return sets;
}

// The field's text for these sets.
QString fieldTextOf(const std::vector<ParameterListTLEs::TLE> &sets)
{
    QStringList parts;
    for (const ParameterListTLEs::TLE &set : sets) {
        QString part;
        if (!set.line0.empty())
            part += QString::fromStdString(set.line0) + QLatin1Char('\n');
        part += QString::fromStdString(set.line1) + QLatin1Char('\n') + QString::fromStdString(set.line2);
        parts << part;
    }
    return parts.join(QStringLiteral("\n\n")) + QStringLiteral("\n\n");
}

QStringList namesOf(const std::vector<ParameterListTLEs::TLE> &sets)
{
    QStringList names;
    for (const ParameterListTLEs::TLE &set : sets)
        names << QString::fromStdString(set.line0);
    return names;
}

void checkWarning(const ModalAnswerer::Seen &seen, const QString &text)
{
    QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
    QCOMPARE(seen.title, QStringLiteral("Warning!"));
    QCOMPARE(seen.text, text);
    QCOMPARE(seen.buttons, int(QMessageBox::Ok));
    QCOMPARE(seen.icon, QMessageBox::Warning);
}

} // namespace

class TestParamSimple : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    // the frame
    void titleIsNameOrKey_data();
    void titleIsNameOrKey();
    void titleBoldForImportanceAtMostOne_data();
    void titleBoldForImportanceAtMostOne();
    void radioGroupBoldForImportanceAtMostOne_data();
    void radioGroupBoldForImportanceAtMostOne();
    void infoButtonGreyWithoutDocumentation_data();
    void infoButtonGreyWithoutDocumentation();
    void infoButtonOpensDocumentation();
    void frameLaysOutButtonLeftOfControl();
    void controlChosenByType_data();
    void controlChosenByType();
    void listAddRuleChosenByItemType_data();
    void listAddRuleChosenByItemType();
    void nullParameterGivesButtonOnly();
    void hoverIsAnnounced();
    void ignoreFilterSwallowsWheelAndEnter_data();
    void ignoreFilterSwallowsWheelAndEnter();
    void wheelOverSpinBoxChangesNothing_data();
    void wheelOverSpinBoxChangesNothing();
    void checkBoxWritesEveryClick();
    void checkBoxLoadDoesNotWrite();

    // line editors
    void validatedFieldsRefuseImpossibleKeystrokes_data();
    void validatedFieldsRefuseImpossibleKeystrokes();
    void emptyingValidatedFieldStoresEmptyInRed_data();
    void emptyingValidatedFieldStoresEmptyInRed();
    void freshValidatedFieldHasNoColour();
    void loadedTextSkipsValidatorButIsColoured();
    void plainEditorRefusesNothing();
    void lineEditsShowLabelAboveEdit();
    void passwordIsHiddenButStoredAsTyped();
    void nonAsciiValueRoundTrips();
    void loadWithSameValueFiresNothing();
    void loadWithNewValueWritesAndReports();
    void browseCancelLeavesValue_data();
    void browseCancelLeavesValue();
    void browseOpensAtCurrentValue_data();
    void browseOpensAtCurrentValue();
    void browseToMissingPathFallsBack_data();
    void browseToMissingPathFallsBack();
    void browsePickReportsTwiceOrOnce_data();
    void browsePickReportsTwiceOrOnce();

    // numbers and choices
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

    // list editors
    void listControlLayout();
    void fitkeyListAddsInCapitals();
    void listAddCancelledOrEmptyChangesNothing_data();
    void listAddCancelledOrEmptyChangesNothing();
    void refusedListItemStillReported();
    void listGrowsBeyondMaximum();
    void deleteStopsAtMinimum();
    void addEnablesDeleteOnlyAboveMinimum();
    void deleteAfterRefreshHitsNothing();
    void filePathsAddOneRowEachAndReportOnce();
    void filePathsCancelChangesNothing();
    void nonAsciiPathReadsAsLatin1AfterReload();

    // TLE editor
    void tleFieldSetUp();
    void tleFieldEmptyUntilFirstRefresh();
    void tleRefreshShowsSetsAndLeavesClear();
    void tleRefreshOfEmptyListGivesEmptyField();
    void tleRefreshHidesBadRecordButKeepsIt();
    void tlePastedCatalogStored();
    void tlePastedCatalogWithBadSetKeepsGoodOnes();
    void tleLineOfWrongLengthReported();
    void tleOneTypedCharacterVanishes();
    void tleIncompleteSetDependsOnLastLineFeed();
    void tleCharacterTypedIntoDataLine();
    void tleCursorAtStartAfterRewrite();
    void tleCarriageReturnsPass();
    void tleSetWithoutName();
    void tleLoadAppendsAndRepeats();
    void tleLoadWithoutGoodSetWarnsOnce_data();
    void tleLoadWithoutGoodSetWarnsOnce();
    void tleLoadCancelledOrEmptyChangesNothing_data();
    void tleLoadCancelledOrEmptyChangesNothing();
    void tleLoadDecodesLatin1OrUtf8UpToZeroByte();
    void tleClearWarnsExactlyOnce();
    void tleRemovingAllTextWarns();
    void tleTwoEditorsDoNotTellEachOther();

private:
    QTemporaryDir _dir;
};

void TestParamSimple::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
    QVERIFY(_dir.isValid());
}

// ---------------------------------------------------------------- the frame

void TestParamSimple::titleIsNameOrKey_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("enumerated");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");

    const QString key = QStringLiteral("max_retries");
    for (int type : {int(ParameterSimple::String), int(ParameterSimple::Integer),
                     int(ParameterSimple::Boolean), int(ParameterSimple::Decimal)}) {
        QTest::addRow("type %d, no name", type) << type << false << QString() << key;
        QTest::addRow("type %d, named", type) << type << false << "Retries at most" << "Retries at most";
    }
    QTest::newRow("radio, no name") << int(ParameterSimple::String) << true << QString() << key;
    QTest::newRow("radio, named") << int(ParameterSimple::String) << true << "Mode" << "Mode";
}

void TestParamSimple::titleIsNameOrKey()
{
    QFETCH(int, type);
    QFETCH(bool, enumerated);
    QFETCH(QString, name);
    QFETCH(QString, title);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), std::string(),
                                     enumerated ? enumeration({"a", "b"}) : ParameterSimple::Fasets(),
                                     visual(name.toStdString()), "max_retries");
    ParamSimple frame(p, nullptr);
    QCOMPARE(titleShown(frame), title);
    QCOMPARE(frame.toolTip(), title);
}

void TestParamSimple::titleBoldForImportanceAtMostOne_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("importance");
    QTest::addColumn<bool>("bold");

    for (int type : {int(ParameterSimple::String), int(ParameterSimple::Boolean),
                     int(ParameterSimple::Integer)}) {
        QTest::addRow("type %d, importance -1", type) << type << -1 << true;
        QTest::addRow("type %d, importance 0", type) << type << 0 << true;
        QTest::addRow("type %d, importance 1", type) << type << 1 << true;
        QTest::addRow("type %d, importance 2", type) << type << 2 << false;
        QTest::addRow("type %d, importance 5", type) << type << 5 << false;
        QTest::addRow("type %d, default importance", type) << type << -100 << false;
    }
}

void TestParamSimple::titleBoldForImportanceAtMostOne()
{
    QFETCH(int, type);
    QFETCH(int, importance);
    QFETCH(bool, bold);

    Parameter::VisualParams v = visual();
    if (importance != -100) // -100: keep the record's default
        v.importance = importance;
    Tree tree;
    ParamSimple frame(tree.simple(Type(type), std::string(), ParameterSimple::Fasets(), v), nullptr);
    QWidget *titled = frame.findChild<QCheckBox *>();
    if (!titled)
        titled = frame.findChild<QLabel *>();
    QVERIFY(titled);
    QCOMPARE(titled->font().bold(), bold);
    QCOMPARE(titled->font().weight(), bold ? int(QFont::Bold) : QFont().weight());
}

void TestParamSimple::radioGroupBoldForImportanceAtMostOne_data()
{
    QTest::addColumn<int>("importance");
    QTest::addColumn<QString>("styleSheet");

    QTest::newRow("0") << 0 << "QGroupBox { font-weight: bold; }";
    QTest::newRow("1") << 1 << "QGroupBox { font-weight: bold; }";
    QTest::newRow("2") << 2 << QString();
    QTest::newRow("3") << 3 << QString();
}

void TestParamSimple::radioGroupBoldForImportanceAtMostOne()
{
    QFETCH(int, importance);
    QFETCH(QString, styleSheet);

    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String, "a", enumeration({"a", "b"}),
                                  visual("Mode", importance)),
                      nullptr);
    auto *group = frame.findChild<QGroupBox *>();
    QVERIFY(group);
    QCOMPARE(group->styleSheet(), styleSheet);
    QCOMPARE(group->font().bold(), false); // the title font plays no part here
}

void TestParamSimple::infoButtonGreyWithoutDocumentation_data()
{
    QTest::addColumn<QString>("doc");
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("styleSheet");

    QTest::newRow("link without text") << QString() << "https://example.org/doc" << false << "color: grey";
    QTest::newRow("neither") << QString() << QString() << false << "color: grey";
    QTest::newRow("text without link") << "How often to try." << QString() << true << "color: blue";
    QTest::newRow("text and link") << "How often to try." << "https://example.org/doc" << true
                                   << "color: blue";
}

void TestParamSimple::infoButtonGreyWithoutDocumentation()
{
    QFETCH(QString, doc);
    QFETCH(QString, source);
    QFETCH(bool, enabled);
    QFETCH(QString, styleSheet);

    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String, std::string(), ParameterSimple::Fasets(),
                                  visual("Retries", 2, doc.toStdString(), source.toStdString())),
                      nullptr);
    QPushButton *button = infoButton(frame);
    QVERIFY(button);
    QCOMPARE(button->isEnabled(), enabled);
    QCOMPARE(button->styleSheet(), styleSheet);
    QVERIFY(button->isFlat());
    QCOMPARE(button->minimumWidth(), 30);
    QCOMPARE(button->maximumWidth(), 30);
    QCOMPARE(frame.whatsThis(), doc);
}

void TestParamSimple::infoButtonOpensDocumentation()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String, std::string(), ParameterSimple::Fasets(),
                                  visual("Retries", 2, "How often to try.", "https://example.org/doc")),
                      nullptr);
    showAndWait(frame);
    QString shownText;
    QString shownLink;
    ModalAnswerer answerer;
    answerer.handleWith([&shownText, &shownLink](QWidget *w) {
        if (auto *text = w->findChild<QTextEdit *>())
            shownText = text->toPlainText();
        if (auto *link = w->findChild<QLabel *>())
            shownLink = link->text();
        static_cast<QDialog *>(w)->accept();
    });
    QTest::mouseClick(infoButton(frame), Qt::LeftButton);
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().at(0).className, QStringLiteral("DialogInfo"));
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Retries"));
    QCOMPARE(answerer.seen().at(0).text, QString());
    QCOMPARE(shownText, QStringLiteral("How often to try."));
    QVERIFY2(shownLink.contains(QStringLiteral("https://example.org/doc")), qPrintable(shownLink));
}

void TestParamSimple::frameLaysOutButtonLeftOfControl()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String), nullptr);
    auto *main = qobject_cast<QGridLayout *>(frame.layout());
    QVERIFY(main);
    QCOMPARE(cellOf(main, infoButton(frame)), QList<int>({0, 0, 1, 1}));
    QGridLayout *grid = controlGrid(frame);
    QVERIFY(grid);
    int row, column, rowSpan, columnSpan;
    for (int i = 0; i < main->count(); ++i) {
        if (main->itemAt(i)->layout() == grid) {
            main->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
            QCOMPARE(QList<int>({row, column}), QList<int>({0, 1}));
        }
    }
    QCOMPARE(main->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QVERIFY(frame.testAttribute(Qt::WA_MouseTracking));
}

void TestParamSimple::controlChosenByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("fasetKind"); // -1: an enumeration kind with no entries
    QTest::addColumn<QString>("control");

    const int none = ParameterSimple::FasetNone;
    const int list = ParameterSimple::FasetEnumeration;
    QTest::newRow("Integer") << int(ParameterSimple::Integer) << none << "int";
    QTest::newRow("Integer with range") << int(ParameterSimple::Integer)
                                        << int(ParameterSimple::FasetRange) << "int";
    QTest::newRow("Decimal") << int(ParameterSimple::Decimal) << none << "double";
    QTest::newRow("Boolean") << int(ParameterSimple::Boolean) << none << "check";
    QTest::newRow("String") << int(ParameterSimple::String) << none << "line ";
    QTest::newRow("Dirpath") << int(ParameterSimple::Dirpath) << none << "line <none> browse";
    QTest::newRow("Filepath") << int(ParameterSimple::Filepath) << none << "line <none> browse";
    QTest::newRow("Email") << int(ParameterSimple::Email) << none << "line " + emailRule;
    QTest::newRow("Password") << int(ParameterSimple::Password) << none << "line <none> password";
    QTest::newRow("HeaderKeys") << int(ParameterSimple::HeaderKeys) << none << "line " + keyRule8;
    QTest::newRow("FilterKeys") << int(ParameterSimple::FilterKeys) << none << "line " + keyRule25;
    QTest::newRow("TLE as a simple value") << int(ParameterSimple::TLE) << none << "line ";
    QTest::newRow("Integer with enumeration") << int(ParameterSimple::Integer) << list << "radio";
    QTest::newRow("Boolean with enumeration") << int(ParameterSimple::Boolean) << list << "radio";
    QTest::newRow("Email with enumeration") << int(ParameterSimple::Email) << list << "radio";
    QTest::newRow("empty enumeration") << int(ParameterSimple::Integer) << -1 << "none";
}

void TestParamSimple::controlChosenByType()
{
    QFETCH(int, type);
    QFETCH(int, fasetKind);
    QFETCH(QString, control);

    ParameterSimple::Fasets fasets;
    if (fasetKind == ParameterSimple::FasetEnumeration)
        fasets = enumeration({"1", "2"});
    else if (fasetKind == -1)
        fasets = enumeration({});
    else if (fasetKind == ParameterSimple::FasetRange)
        fasets = range(1, 10);
    Tree tree;
    ParamSimple frame(tree.simple(Type(type), "1", fasets), nullptr);
    QCOMPARE(controlKind(frame), control);
    if (QLineEdit *edit = lineEditOf(frame)) {
        if (edit->validator())
            QVERIFY(caseInsensitive(edit));
    }
}

void TestParamSimple::listAddRuleChosenByItemType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("rule");

    QTest::newRow("HeaderKeys") << int(ParameterSimple::HeaderKeys) << "DialogAddItem" << keyRule8;
    QTest::newRow("FilterKeys") << int(ParameterSimple::FilterKeys) << "DialogAddItem" << keyRule25;
    QTest::newRow("Filepath") << int(ParameterSimple::Filepath) << "QFileDialog" << QString();
    QTest::newRow("Password, the generic editor") << int(ParameterSimple::Password)
                                                  << "DialogAddItem" << keyRule25;
    QTest::newRow("Dirpath, the generic editor") << int(ParameterSimple::Dirpath) << "DialogAddItem"
                                                 << keyRule25;
    QTest::newRow("String") << int(ParameterSimple::String) << "DialogAddItem" << keyRule25;
    QTest::newRow("Integer") << int(ParameterSimple::Integer) << "DialogAddItem" << keyRule25;
}

void TestParamSimple::listAddRuleChosenByItemType()
{
    QFETCH(int, type);
    QFETCH(QString, dialog);
    QFETCH(QString, rule);

    Tree tree;
    ParamSimple frame(tree.list(Type(type)), nullptr);
    QCOMPARE(controlKind(frame), QStringLiteral("list"));
    QString seenRule;
    bool seenCaseInsensitive = false;
    ModalAnswerer answerer;
    answerer.handleWith([&](QWidget *w) {
        if (QLineEdit *edit = qobject_cast<DialogAddItem *>(w) ? w->findChild<QLineEdit *>() : nullptr) {
            seenRule = patternOf(edit);
            seenCaseInsensitive = caseInsensitive(edit);
        }
        static_cast<QDialog *>(w)->reject();
    });
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).className, dialog);
    QCOMPARE(seenRule, rule);
    QCOMPARE(seenCaseInsensitive, !rule.isEmpty());
    if (dialog == QLatin1String("QFileDialog"))
        QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Some value"));
    else
        QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
}

void TestParamSimple::nullParameterGivesButtonOnly()
{
    ParamSimple frame(nullptr, nullptr);
    QCOMPARE(controlKind(frame), QStringLiteral("none"));
    QPushButton *button = infoButton(frame);
    QVERIFY(button);
    QVERIFY(!button->isEnabled());
    QCOMPARE(frame.findChildren<QWidget *>().size(), 1);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::hoverIsAnnounced()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::String), nullptr);
    QSignalSpy hovered(&frame, &ParamSimple::sig_hovered);
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(&frame, &enter);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&frame, &leave);
    QCOMPARE(hovered.size(), 2);
    QCOMPARE(hovered.at(0).at(0).toBool(), true);
    QCOMPARE(hovered.at(1).at(0).toBool(), false);
}

namespace {
class EventRecorder : public QObject
{
public:
    QList<QEvent::Type> received;

protected:
    bool event(QEvent *e) override
    {
        received << e->type();
        return QObject::event(e);
    }
};
} // namespace

void TestParamSimple::ignoreFilterSwallowsWheelAndEnter_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("swallowed");

    QTest::newRow("wheel") << int(QEvent::Wheel) << true;
    QTest::newRow("enter") << int(QEvent::Enter) << true;
    QTest::newRow("leave") << int(QEvent::Leave) << false;
    QTest::newRow("focus in") << int(QEvent::FocusIn) << false;
    QTest::newRow("user") << int(QEvent::User) << false;
}

void TestParamSimple::ignoreFilterSwallowsWheelAndEnter()
{
    QFETCH(int, type);
    QFETCH(bool, swallowed);

    EventRecorder target;
    target.installEventFilter(new IgnoreEventFilter(&target));
    target.received.clear(); // the filter's own arrival as a child
    QEvent plain(static_cast<QEvent::Type>(type));
    QCoreApplication::sendEvent(&target, &plain);
    QCOMPARE(target.received.isEmpty(), swallowed);
}

void TestParamSimple::wheelOverSpinBoxChangesNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("integer box") << int(ParameterSimple::Integer);
    QTest::newRow("decimal box") << int(ParameterSimple::Decimal);
}

void TestParamSimple::wheelOverSpinBoxChangesNothing()
{
    QFETCH(int, type);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), "5");
    ParamSimple frame(p, nullptr);
    showAndWait(frame);
    auto *box = frame.findChild<QAbstractSpinBox *>();
    QVERIFY(box);
    QCOMPARE(box->focusPolicy(), Qt::StrongFocus);
    const QString before = box->text();
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    const QPoint at = box->rect().center();
    QWheelEvent wheel(at, box->mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    QCOMPARE(box->text(), before);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(p->getValue(), std::string("5"));

    // The same event turns a box without the filter.
    QSpinBox bare;
    bare.setValue(5);
    QWheelEvent again(at, at, QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&bare, &again);
    QCOMPARE(bare.value(), 6);
}

void TestParamSimple::checkBoxWritesEveryClick()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Boolean, "false", ParameterSimple::Fasets(),
                                     visual("Verbose"));
    ParamSimple frame(p, nullptr);
    showAndWait(frame);
    auto *box = frame.findChild<QCheckBox *>();
    QVERIFY(box);
    QCOMPARE(box->text(), QStringLiteral("Verbose"));
    QVERIFY(!box->isChecked());
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    clickIndicator(box);
    QVERIFY(box->isChecked());
    QCOMPARE(p->getValue(), std::string("true"));
    QCOMPARE(changed.size(), 1);

    clickIndicator(box); // back to the old state, still an edit
    QCOMPARE(p->getValue(), std::string("false"));
    QCOMPARE(changed.size(), 2);

    clickIndicator(box);
    QCOMPARE(p->getValue(), std::string("true"));
    QCOMPARE(changed.size(), 3);
    QCOMPARE(cellOf(controlGrid(frame), box), QList<int>({0, 0, 1, 1}));
}

void TestParamSimple::checkBoxLoadDoesNotWrite()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::Boolean, "1");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QCheckBox *>();
    QVERIFY(box->isChecked()); // a whole number other than 0 reads as true
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    p->forceValue("yes"); // any word but "true" reads as false
    emit frame.sig_update();
    QVERIFY(!box->isChecked());
    QCOMPARE(p->getValue(), std::string("yes"));
    p->forceValue("true");
    emit frame.sig_update();
    QVERIFY(box->isChecked());
    QCOMPARE(changed.size(), 0);
}

// ---------------------------------------------------------------- line editors

void TestParamSimple::validatedFieldsRefuseImpossibleKeystrokes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("colour");

    const int fit = ParameterSimple::HeaderKeys;
    const int filter = ParameterSimple::FilterKeys;
    const int mail = ParameterSimple::Email;
    QTest::newRow("fit key of eight") << fit << "ABCD1234" << "ABCD1234" << black;
    QTest::newRow("fit key, ninth refused") << fit << "ABCD12345" << "ABCD1234" << black;
    QTest::newRow("fit key in small letters") << fit << "abc_-()" << "abc_-()" << black;
    QTest::newRow("fit key, blank refused") << fit << "AB CD" << "ABCD" << black;
    QTest::newRow("fit key, dot refused") << fit << "A.B" << "AB" << black;
    QTest::newRow("fit key, at sign refused") << fit << "A@B" << "AB" << black;
    QTest::newRow("filter key of 25") << filter << QString(25, QLatin1Char('k'))
                                      << QString(25, QLatin1Char('k')) << black;
    QTest::newRow("filter key, 26th refused") << filter << QString(26, QLatin1Char('K'))
                                              << QString(25, QLatin1Char('K')) << black;
    QTest::newRow("filter key, blank refused") << filter << "ab cd" << "abcd" << black;
    QTest::newRow("filter key, star refused") << filter << "a*b(1)" << "ab(1)" << black;
    QTest::newRow("filter key, non-ASCII refused") << filter << QString::fromUtf8("aäb") << "ab" << black;
    QTest::newRow("address complete") << mail << "me.you@host.org" << "me.you@host.org" << black;
    QTest::newRow("address ending at the at sign") << mail << "me@" << "me@" << red;
    QTest::newRow("address without at sign") << mail << "me" << "me" << red;
    QTest::newRow("address, blank refused") << mail << "me @x" << "me@x" << black;
    QTest::newRow("address, second at sign refused") << mail << "a@b@c" << "a@bc" << black;
    QTest::newRow("address, plus refused") << mail << "a+b@c" << "ab@c" << black;
}

void TestParamSimple::validatedFieldsRefuseImpossibleKeystrokes()
{
    QFETCH(int, type);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QString, colour);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type));
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QVERIFY(edit);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    typeText(edit, typed);
    QCOMPARE(edit->text(), shown);
    QCOMPARE(edit->styleSheet(), colour);
    QCOMPARE(QString::fromStdString(p->getValue()), shown);
    // One report per keystroke taken; a refused one fires nothing.
    QCOMPARE(changed.size(), shown.size());
}

void TestParamSimple::emptyingValidatedFieldStoresEmptyInRed_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");

    QTest::newRow("address") << int(ParameterSimple::Email) << "me@host";
    QTest::newRow("fit key") << int(ParameterSimple::HeaderKeys) << "NAXIS1";
    QTest::newRow("filter key") << int(ParameterSimple::FilterKeys) << "camera_2";
}

void TestParamSimple::emptyingValidatedFieldStoresEmptyInRed()
{
    QFETCH(int, type);
    QFETCH(QString, value);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), value.toStdString());
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), value);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QCOMPARE(edit->text(), QString());
    QCOMPARE(p->getValue(), std::string());
    QCOMPARE(edit->styleSheet(), red);
    QCOMPARE(changed.size(), 1);
}

void TestParamSimple::freshValidatedFieldHasNoColour()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::HeaderKeys, "BAD KEY!");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), QStringLiteral("BAD KEY!"));
    QCOMPARE(edit->styleSheet(), QString());
    emit frame.sig_update(); // same text: nothing fires, nothing is coloured
    QCOMPARE(edit->styleSheet(), QString());
}

void TestParamSimple::loadedTextSkipsValidatorButIsColoured()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::HeaderKeys, "GOOD");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    p->forceValue("TOO LONG KEY");
    emit frame.sig_update();
    QCOMPARE(edit->text(), QStringLiteral("TOO LONG KEY"));
    QCOMPARE(edit->styleSheet(), red);
    QCOMPARE(p->getValue(), std::string("TOO LONG KEY"));
    QCOMPARE(changed.size(), 1);

    p->forceValue("FINE");
    emit frame.sig_update();
    QCOMPARE(edit->styleSheet(), black);
    QCOMPARE(changed.size(), 2);
}

void TestParamSimple::plainEditorRefusesNothing()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::String);
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(patternOf(edit), QString());
    QVERIFY(caseInsensitive(edit));
    const QString typed = QString::fromUtf8(" .@#*+ab CD/\\ üß €");
    typeText(edit, typed);
    QCOMPARE(edit->text(), typed);
    QCOMPARE(QString::fromStdString(p->getValue()), typed);
    QCOMPARE(edit->styleSheet(), QString()); // the plain editor is never coloured
}

void TestParamSimple::lineEditsShowLabelAboveEdit()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::Filepath, std::string(), ParameterSimple::Fasets(),
                                  visual("Log file", 1)),
                      nullptr);
    QGridLayout *grid = controlGrid(frame);
    auto *label = frame.findChild<QLabel *>();
    QCOMPARE(label->text(), QStringLiteral("Log file"));
    QCOMPARE(cellOf(grid, label), QList<int>({0, 0, 1, 1}));
    QCOMPARE(cellOf(grid, lineEditOf(frame)), QList<int>({1, 0, 1, 1}));
    QPushButton *browse = buttonOf(&frame, QStringLiteral("..."));
    QVERIFY(browse);
    QCOMPARE(cellOf(grid, browse), QList<int>({1, 1, 1, 1}));
    QCOMPARE(browse->maximumWidth(), 20);
    QVERIFY(label->font().bold());
    QVERIFY(!lineEditOf(frame)->font().bold()); // the edit keeps the default font
}

void TestParamSimple::passwordIsHiddenButStoredAsTyped()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Password, "old");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->echoMode(), QLineEdit::Password);
    QCOMPARE(edit->validator(), nullptr);
    QCOMPARE(edit->text(), QStringLiteral("old"));
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    QTest::keyClicks(edit, QStringLiteral(" s3cr#t"));
    QCOMPARE(p->getValue(), std::string("old s3cr#t"));
    QCOMPARE(changed.size(), 7);
}

void TestParamSimple::nonAsciiValueRoundTrips()
{
    const std::string value = u8"Zürich – 日本 ß";
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::String, value);
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), QString::fromUtf8(value.c_str()));
    typeText(edit, QString::fromUtf8("é"));
    QCOMPARE(p->getValue(), value + u8"é");
    emit frame.sig_update();
    QCOMPARE(edit->text(), QString::fromUtf8((value + u8"é").c_str()));
}

void TestParamSimple::loadWithSameValueFiresNothing()
{
    for (Type type : {ParameterSimple::String, ParameterSimple::Email, ParameterSimple::Dirpath,
                      ParameterSimple::Password, ParameterSimple::FilterKeys}) {
        Tree tree;
        ParameterSimple *p = tree.simple(type, "same");
        ParamSimple frame(p, nullptr);
        QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
        emit frame.sig_update();
        emit frame.sig_update();
        QCOMPARE(changed.size(), 0);
        QCOMPARE(lineEditOf(frame)->styleSheet(), QString());
    }
}

void TestParamSimple::loadWithNewValueWritesAndReports()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::String, "before");
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    p->forceValue("after");
    emit frame.sig_update();
    QCOMPARE(lineEditOf(frame)->text(), QStringLiteral("after"));
    QCOMPARE(p->getValue(), std::string("after"));
    QCOMPARE(changed.size(), 1);
}

void TestParamSimple::browseCancelLeavesValue_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("directory") << int(ParameterSimple::Dirpath);
    QTest::newRow("file") << int(ParameterSimple::Filepath);
}

void TestParamSimple::browseCancelLeavesValue()
{
    QFETCH(int, type);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), _dir.path().toStdString(), ParameterSimple::Fasets(),
                                     visual("Data place"));
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().at(0).className, QStringLiteral("QFileDialog"));
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Data place"));
    QCOMPARE(answerer.seen().at(0).text, QString());
    QCOMPARE(p->getValue(), _dir.path().toStdString());
    QCOMPARE(lineEditOf(frame)->text(), _dir.path());
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::browseOpensAtCurrentValue_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("filters");
    QTest::newRow("directory") << int(ParameterSimple::Dirpath) << QStringList();
    QTest::newRow("file") << int(ParameterSimple::Filepath) << QStringList({"All files (*)"});
}

void TestParamSimple::browseOpensAtCurrentValue()
{
    QFETCH(int, type);
    QFETCH(QStringList, filters);

    QDir(_dir.path()).mkpath(QStringLiteral("start/inner"));
    const QString start = _dir.path() + QStringLiteral("/start");
    QFile file(start + QStringLiteral("/shown.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const QString value = type == ParameterSimple::Dirpath ? start : file.fileName();

    Tree tree;
    ParamSimple frame(tree.simple(Type(type), value.toStdString()), nullptr);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).directory, start);
    if (!filters.isEmpty())
        QCOMPARE(answerer.seen().at(0).nameFilters, filters);
}

void TestParamSimple::browseToMissingPathFallsBack_data()
{
    browseCancelLeavesValue_data();
}

void TestParamSimple::browseToMissingPathFallsBack()
{
    QFETCH(int, type);

    const QString missing = _dir.path() + QStringLiteral("/no/such/place");
    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), missing.toStdString());
    ParamSimple frame(p, nullptr);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    const QString opened = answerer.seen().at(0).directory;
    QVERIFY2(opened != missing && QDir(opened).exists(), qPrintable(opened));
    QCOMPARE(p->getValue(), missing.toStdString());
}

void TestParamSimple::browsePickReportsTwiceOrOnce_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("samePath");
    QTest::addColumn<int>("reports");

    QTest::newRow("new directory") << int(ParameterSimple::Dirpath) << false << 2;
    QTest::newRow("same directory") << int(ParameterSimple::Dirpath) << true << 1;
    QTest::newRow("new file") << int(ParameterSimple::Filepath) << false << 2;
    QTest::newRow("same file") << int(ParameterSimple::Filepath) << true << 1;
}

void TestParamSimple::browsePickReportsTwiceOrOnce()
{
    QFETCH(int, type);
    QFETCH(bool, samePath);
    QFETCH(int, reports);

    const QString base = _dir.path() + QStringLiteral("/pick");
    QDir(_dir.path()).mkpath(QStringLiteral("pick/old"));
    QDir(_dir.path()).mkpath(QStringLiteral("pick/new"));
    for (const QString &name : {QStringLiteral("/old.txt"), QStringLiteral("/new.txt")}) {
        QFile file(base + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const bool dir = type == ParameterSimple::Dirpath;
    const QString oldPath = base + (dir ? QStringLiteral("/old") : QStringLiteral("/old.txt"));
    const QString newPath = base + (dir ? QStringLiteral("/new") : QStringLiteral("/new.txt"));
    const QString picked = samePath ? oldPath : newPath;

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), oldPath.toStdString());
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.chooseFile(picked);
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(lineEditOf(frame)->text(), picked);
    QCOMPARE(p->getValue(), picked.toStdString());
    QCOMPARE(changed.size(), reports);
}

// ---------------------------------------------------------------- numbers and choices

void TestParamSimple::integerInBoundsKeepsItsText()
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

void TestParamSimple::integerShowsClampedUntilFirstRefresh()
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

void TestParamSimple::integerRewrittenInPlainDecimal()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Integer, "0250xyz");
    ParamSimple frame(p, nullptr);
    emit frame.sig_update();
    QCOMPARE(p->getValue(), std::string("250"));
}

void TestParamSimple::searchPageKeepsClampedNumber()
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

void TestParamSimple::decimalShowsSixDecimalsAndDimension()
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

void TestParamSimple::emptyDimensionEndsInBlank_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("shown");
    QTest::newRow("integer") << int(ParameterSimple::Integer) << "7 ";
    QTest::newRow("decimal") << int(ParameterSimple::Decimal) << "7.000000 ";
}

void TestParamSimple::emptyDimensionEndsInBlank()
{
    QFETCH(int, type);
    QFETCH(QString, shown);

    Tree tree;
    ParamSimple frame(tree.simple(Type(type), "7"), nullptr);
    auto *box = frame.findChild<QAbstractSpinBox *>();
    QCOMPARE(box->text(), shown);
    QVERIFY(box->text().endsWith(QLatin1Char(' ')));
}

void TestParamSimple::decimalShortenedToSixSignificantDigits()
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

void TestParamSimple::decimalRoundedToSixDecimals()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "0.12345678");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    emit frame.sig_update();
    QCOMPARE(box->text(), QStringLiteral("0.123457 "));
    QCOMPARE(p->getValue(), std::string("0.123457"));
}

void TestParamSimple::decimalOnSearchPageShowsTwoDecimals()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Decimal, "3.14159");
    ParamSimple frame(p, nullptr);
    auto *box = frame.findChild<QDoubleSpinBox *>();
    QCOMPARE(box->value(), 3.14);
    QCOMPARE(box->text(), QStringLiteral("3.140000 "));
    QCOMPARE(p->getValue(), std::string("3.14159"));
}

void TestParamSimple::valueOutsideBoundsPulledToBound_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");

    QTest::newRow("integer above") << int(ParameterSimple::Integer) << "500" << "200";
    QTest::newRow("decimal above") << int(ParameterSimple::Decimal) << "500.5" << "200";
}

void TestParamSimple::valueOutsideBoundsPulledToBound()
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

void TestParamSimple::decimalWriteAboveBoundIsRefusedButReported()
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

void TestParamSimple::spinBoxSteps()
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

void TestParamSimple::spinBoxHasNoSpecialTextAndNoWrapping()
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

void TestParamSimple::integerBoundsTruncatedToInt_data()
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

void TestParamSimple::integerBoundsTruncatedToInt()
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

void TestParamSimple::spinBoxStandsLeftOfItsLabel()
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

void TestParamSimple::radioClickWritesEntryAndReports()
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

void TestParamSimple::radioComparisonIsTextual()
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

void TestParamSimple::radioLoadNeverSwitchesOff()
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

void TestParamSimple::radioWithOneEntry_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("on");
    QTest::newRow("matching") << "only" << true;
    QTest::newRow("not matching") << "other" << false;
    QTest::newRow("empty") << QString() << false;
}

void TestParamSimple::radioWithOneEntry()
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

void TestParamSimple::dimensionShownOnlyBySpinBoxes_data()
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

void TestParamSimple::dimensionShownOnlyBySpinBoxes()
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

// ---------------------------------------------------------------- list editors

void TestParamSimple::listControlLayout()
{
    Tree tree;
    ParamSimple frame(tree.list(ParameterSimple::String, strings({"a"}), 0, visual("Names", 1)), nullptr);
    QGridLayout *grid = controlGrid(frame);
    auto *label = frame.findChild<QLabel *>();
    QCOMPARE(label->text(), QStringLiteral("Names"));
    QVERIFY(label->font().bold());
    QCOMPARE(cellOf(grid, label), QList<int>({0, 0, 1, 1}));
    QCOMPARE(cellOf(grid, frame.findChild<ListView *>()), QList<int>({1, 0, 2, 2}));
    QCOMPARE(cellOf(grid, buttonOf(&frame, QStringLiteral("Add"))), QList<int>({1, 2, 1, 1}));
    QPushButton *remove = buttonOf(&frame, QStringLiteral("Delete"));
    QCOMPARE(cellOf(grid, remove), QList<int>({2, 2, 1, 1}));
    QVERIFY(!remove->isEnabled());
}

void TestParamSimple::fitkeyListAddsInCapitals()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::HeaderKeys);
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.handleWith(typeInAddDialog(QStringLiteral("abc"), true));
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
    QCOMPARE(list->getValues(), strings({"ABC"}));
    QCOMPARE(rowsOf(frame.findChild<ListView *>()), QStringList({"ABC"}));
    QCOMPARE(changed.size(), 1);
}

void TestParamSimple::listAddCancelledOrEmptyChangesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("ok");
    QTest::newRow("cancel") << "key" << false;
    QTest::newRow("ok on empty field") << QString() << true;
}

void TestParamSimple::listAddCancelledOrEmptyChangesNothing()
{
    QFETCH(QString, typed);
    QFETCH(bool, ok);

    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::FilterKeys, strings({"one"}));
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.handleWith(typeInAddDialog(typed, ok));
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
    QCOMPARE(list->getValues(), strings({"one"}));
    QCOMPARE(rowsOf(frame.findChild<ListView *>()), QStringList({"one"}));
    QCOMPARE(changed.size(), 0);
    QVERIFY(!buttonOf(&frame, QStringLiteral("Delete"))->isEnabled());
}

void TestParamSimple::refusedListItemStillReported()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::Integer, strings({"5"}), 1);
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.handleWith(typeInAddDialog(QStringLiteral("0"), true)); // below the minimum of 1
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(list->getValues(), strings({"5"}));
    QCOMPARE(rowsOf(frame.findChild<ListView *>()), QStringList({"5", "0"}));
    QCOMPARE(changed.size(), 1);
}

void TestParamSimple::listGrowsBeyondMaximum()
{
    Tree tree;
    ParameterSimple::Fasets fasets = range(0, 1);
    auto *list = new ParameterList(&tree.root, "items", "item", visual(), ParameterSimple::String, fasets);
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.handleWith(typeInAddDialog(QStringLiteral("a"), true));
    answerer.handleWith(typeInAddDialog(QStringLiteral("b"), true));
    answerer.handleWith(typeInAddDialog(QStringLiteral("c"), true));
    QPushButton *add = buttonOf(&frame, QStringLiteral("Add"));
    add->click();
    add->click();
    add->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(rowsOf(frame.findChild<ListView *>()), QStringList({"a", "b", "c"}));
    QCOMPARE(list->getValues(), strings({"a", "b", "c"}));
}

void TestParamSimple::deleteStopsAtMinimum()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::String, strings({"a", "b", "c"}), 2);
    ParamSimple frame(list, nullptr);
    showAndWait(frame);
    auto *view = frame.findChild<ListView *>();
    QPushButton *remove = buttonOf(&frame, QStringLiteral("Delete"));
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    clickRow(view, 1);
    QVERIFY(remove->isEnabled());
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(list->getValues(), strings({"a", "c"}));
    QCOMPARE(rowsOf(view), QStringList({"a", "c"}));
    QVERIFY(!remove->isEnabled());
    QCOMPARE(changed.size(), 1);

    clickRow(view, 0); // at the minimum: stays dark
    QVERIFY(!remove->isEnabled());
    QCOMPARE(view->getCurrentIndex().row(), 0);
}

void TestParamSimple::addEnablesDeleteOnlyAboveMinimum()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::String, strings({"a"}), 2);
    ParamSimple frame(list, nullptr);
    QPushButton *remove = buttonOf(&frame, QStringLiteral("Delete"));
    ModalAnswerer answerer;
    answerer.handleWith(typeInAddDialog(QStringLiteral("b"), true));
    answerer.handleWith(typeInAddDialog(QStringLiteral("c"), true));
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(!remove->isEnabled()); // two rows: at the minimum
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(remove->isEnabled()); // three rows
    QVERIFY(answerer.allAnswered());

    emit frame.sig_update(); // a refresh leaves the button as it is
    QVERIFY(remove->isEnabled());
}

void TestParamSimple::deleteAfterRefreshHitsNothing()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::String, strings({"a", "b"}));
    ParamSimple frame(list, nullptr);
    showAndWait(frame);
    auto *view = frame.findChild<ListView *>();
    QPushButton *remove = buttonOf(&frame, QStringLiteral("Delete"));
    clickRow(view, 0);
    QVERIFY(remove->isEnabled());

    emit frame.sig_update();
    QVERIFY(remove->isEnabled());
    QVERIFY(!view->getCurrentIndex().isValid());

    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(list->getValues(), strings({"a", "b"}));
    QCOMPARE(rowsOf(view), QStringList({"a", "b"}));
    QVERIFY(!remove->isEnabled());
    QCOMPARE(changed.size(), 1);
}

void TestParamSimple::filePathsAddOneRowEachAndReportOnce()
{
    QDir(_dir.path()).mkpath(QStringLiteral("many"));
    const QString base = _dir.path() + QStringLiteral("/many/");
    for (const QString &name : {QStringLiteral("a.txt"), QStringLiteral("b.txt"), QStringLiteral("c.txt")}) {
        QFile file(base + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::Filepath, {}, 0, visual("Inputs"));
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.handleWith([base](QWidget *w) {
        auto *dialog = qobject_cast<QFileDialog *>(w);
        QVERIFY(dialog);
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFiles);
        dialog->setDirectory(base);
        dialog->selectFile(QStringLiteral("\"a.txt\" \"c.txt\" \"b.txt\""));
        static_cast<QDialog *>(dialog)->accept();
    });
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Inputs"));

    const std::vector<std::string> values = list->getValues();
    QCOMPARE(values.size(), std::size_t(3));
    auto *view = frame.findChild<ListView *>();
    QCOMPARE(view->getItemsAmount(), 3);
    QCOMPARE(view->getCurrentIndex().row(), 2); // the last one stays selected
    QCOMPARE(rowsOf(view).at(2), QString::fromStdString(values.at(2)));
    QCOMPARE(changed.size(), 1);
    QVERIFY(buttonOf(&frame, QStringLiteral("Delete"))->isEnabled());
}

void TestParamSimple::filePathsCancelChangesNothing()
{
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::Filepath, strings({"/tmp/x"}));
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).className, QStringLiteral("QFileDialog"));
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Some value"));
    QCOMPARE(list->getValues(), strings({"/tmp/x"}));
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::nonAsciiPathReadsAsLatin1AfterReload()
{
    const QString path = _dir.path() + QString::fromUtf8("/Zürich.txt");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Tree tree;
    ParameterList *list = tree.list(ParameterSimple::Filepath);
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.chooseFile(path);
    buttonOf(&frame, QStringLiteral("Add"))->click();
    QVERIFY(answerer.allAnswered());
    auto *view = frame.findChild<ListView *>();
    QCOMPARE(rowsOf(view), QStringList({path}));
    QCOMPARE(list->getValues(), std::vector<std::string>({path.toStdString()}));

    emit frame.sig_update();
    QCOMPARE(rowsOf(view), QStringList({QString::fromLatin1(path.toUtf8())}));
}

// ---------------------------------------------------------------- TLE editor

void TestParamSimple::tleFieldSetUp()
{
    // The button row's layout is first offered to the frame, which already
    // has one; Qt says so and leaves the layout free for the control grid.
    QTest::ignoreMessage(QtWarningMsg, "QLayout: Attempting to add QLayout \"\" to ParamSimple \"\", "
                                       "which already has a layout");
    Tree tree;
    ParamSimple frame(tree.tles(visual("Satellites")), nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    QVERIFY(field);
    QCOMPARE(field->font().family(), QStringLiteral("Console"));
    QCOMPARE(field->font().pointSize(), 8);
    QCOMPARE(field->font().weight(), 50);
    QVERIFY(!field->font().italic());
    QCOMPARE(field->minimumSize(), QSize(350, 250));
    QCOMPARE(int(field->windowFlags()), 18);
    QCOMPARE(field->lineWrapMode(), QPlainTextEdit::NoWrap);
    QVERIFY(!field->isReadOnly());

    QPushButton *clear = buttonOf(&frame, QStringLiteral("Clear"));
    QPushButton *load = buttonOf(&frame, QStringLiteral("Load from file.."));
    QVERIFY(clear && load);
    QVERIFY(!clear->isEnabled());
    QVERIFY(load->isEnabled());
    QCOMPARE(load->minimumWidth(), 100);
    for (QWidget *w : {static_cast<QWidget *>(field), static_cast<QWidget *>(clear),
                       static_cast<QWidget *>(load)})
        QCOMPARE(w->styleSheet(), QString());
    QCOMPARE(frame.findChildren<QLabel *>().size(), 0); // no title on this control

    QGridLayout *grid = controlGrid(frame);
    QCOMPARE(cellOf(grid, field), QList<int>({1, 0, 1, 1}));
    int row, column, rowSpan, columnSpan;
    bool buttonsFound = false;
    for (int i = 0; i < grid->count(); ++i) {
        auto *row0 = qobject_cast<QHBoxLayout *>(grid->itemAt(i)->layout());
        if (!row0)
            continue;
        buttonsFound = true;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QList<int>({row, column}), QList<int>({0, 0}));
        QCOMPARE(row0->count(), 3);
        QCOMPARE(row0->itemAt(0)->widget(), clear);
        QVERIFY(row0->itemAt(1)->spacerItem());
        QCOMPARE(row0->stretch(1), 1);
        QCOMPARE(row0->itemAt(2)->widget(), load);
        QCOMPARE(row0->contentsMargins(), QMargins(0, 0, 0, 0));
    }
    QVERIFY(buttonsFound);
}

void TestParamSimple::tleFieldEmptyUntilFirstRefresh()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QCOMPARE(fieldOf(frame)->toPlainText(), QString());
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
}

void TestParamSimple::tleRefreshShowsSetsAndLeavesClear()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QCOMPARE(fieldOf(frame)->textCursor().position(), 0);
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::tleRefreshOfEmptyListGivesEmptyField()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    paste(fieldOf(frame), QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    list->setTLEs({});
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), QString()); // not "\n\n"
}

void TestParamSimple::tleRefreshHidesBadRecordButKeepsIt()
{
    std::vector<ParameterListTLEs::TLE> sets = setsOf(readData(QStringLiteral("one-bad-set.tle")));
    QCOMPARE(sets.size(), std::size_t(3));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(sets);
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    emit frame.sig_update();
    QCOMPARE(answerer.seen().size(), 0);
    const QString field = fieldOf(frame)->toPlainText();
    QVERIFY(field.contains(QStringLiteral("BRITE-TORONTO")));
    QVERIFY(!field.contains(QStringLiteral("FLOCK 2K-33")));
    QVERIFY(field.contains(QStringLiteral("IRIDIUM 73 [-]")));
    QVERIFY(field.endsWith(QStringLiteral("\n\n")));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"BRITE-TORONTO", "FLOCK 2K-33", "IRIDIUM 73 [-]"}));
}

void TestParamSimple::tlePastedCatalogStored()
{
    const QByteArray catalog = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    paste(fieldOf(frame), QString::fromUtf8(catalog));
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(catalog));
    const std::vector<ParameterListTLEs::TLE> stored = list->getTLEs();
    const std::vector<ParameterListTLEs::TLE> expected = setsOf(catalog);
    QCOMPARE(stored.size(), expected.size());
    for (std::size_t i = 0; i < stored.size(); ++i) {
        QCOMPARE(stored[i].line0, expected[i].line0);
        QCOMPARE(stored[i].line1, expected[i].line1);
        QCOMPARE(stored[i].line2, expected[i].line2);
    }
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
    QCOMPARE(changed.size(), 0); // TLE edits do not mark the configuration
}

void TestParamSimple::tlePastedCatalogWithBadSetKeepsGoodOnes()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    paste(fieldOf(frame), QString::fromUtf8(readData(QStringLiteral("one-bad-set.tle"))));
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    checkWarning(answerer.seen().at(0),
                 QStringLiteral("Line #6. TLE is not valid. Line #1 is not TLE line.\n"
                                "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"BRITE-TORONTO", "IRIDIUM 73 [-]"}));
    const std::vector<ParameterListTLEs::TLE> all = setsOf(readData(QStringLiteral("one-bad-set.tle")));
    QCOMPARE(fieldOf(frame)->toPlainText(), fieldTextOf({all[0], all[2]}));
    const QString field = fieldOf(frame)->toPlainText();
    QVERIFY(field.startsWith(QStringLiteral("BRITE-TORONTO\n1 40020U")));
    QVERIFY(field.contains(QStringLiteral("192019\n\nIRIDIUM 73 [-]\n1 25344U")));
    QVERIFY(field.endsWith(QStringLiteral("38760\n\n")));
    QVERIFY(!field.contains(QStringLiteral("FLOCK")));
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::tleLineOfWrongLengthReported()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    QStringList changedLines = lines;
    changedLines[9] += QLatin1Char(' '); // third set, first data line: 70 bytes
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    paste(fieldOf(frame), changedLines.join('\n'));
    QVERIFY(answerer.allAnswered());
    checkWarning(answerer.seen().at(0),
                 QStringLiteral("TextLine #9 is not TLE line.\n"
                                "TextLine #11 is not TLE line.\n"
                                "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "JPSS-1"}));
}

void TestParamSimple::tleOneTypedCharacterVanishes()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    QTest::keyClick(fieldOf(frame), Qt::Key_A);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QCOMPARE(fieldOf(frame)->textCursor().position(), 0);
    // The text handler saw "a" and woke Clear; the rewrite to "\n\n" was silent.
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestParamSimple::tleIncompleteSetDependsOnLastLineFeed()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    const QString incomplete = lines[0] + QLatin1Char('\n') + lines[1];

    {
        Tree tree;
        ParameterListTLEs *list = tree.tles();
        ParamSimple frame(list, nullptr);
        ModalAnswerer answerer;
        answerer.pressButton(QMessageBox::Ok);
        paste(fieldOf(frame), incomplete + QLatin1Char('\n'));
        QVERIFY(answerer.allAnswered());
        checkWarning(answerer.seen().at(0), QStringLiteral("TextLine #2 is not TLE line.\n"
                                                           "0 problem-free TLEs were parsed.\n"));
        QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
    }
    {
        Tree tree;
        ParameterListTLEs *list = tree.tles();
        ParamSimple frame(list, nullptr);
        ModalAnswerer answerer;
        paste(fieldOf(frame), incomplete);
        QCOMPARE(answerer.seen().size(), 0);
        QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
    }
}

void TestParamSimple::tleCharacterTypedIntoDataLine()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    QCOMPARE(list->getTLEs().size(), std::size_t(3));

    QTextCursor cursor(field->document()->findBlockByNumber(5)); // JPSS-1, first data line
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 10);
    field->setTextCursor(cursor);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    QTest::keyClick(field, Qt::Key_7);
    QVERIFY(answerer.allAnswered());
    checkWarning(answerer.seen().at(0), QStringLiteral("TextLine #5 is not TLE line.\n"
                                                       "TextLine #7 is not TLE line.\n"
                                                       "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "FLOCK 2E'-6"}));
    const std::vector<ParameterListTLEs::TLE> all = setsOf(readData(QStringLiteral("three-sets.tle")));
    QCOMPARE(field->toPlainText(), fieldTextOf({all[0], all[2]}));
    QCOMPARE(field->document()->blockCount(), 9);
    QVERIFY(!field->toPlainText().contains(QStringLiteral("JPSS-1")));
    QVERIFY(!field->toPlainText().contains(QStringLiteral("43013")));
    QCOMPARE(field->textCursor().position(), 0);
}

void TestParamSimple::tleCursorAtStartAfterRewrite()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    emit frame.sig_update();
    field->moveCursor(QTextCursor::End);
    QTest::keyClick(field, Qt::Key_Return); // an empty line more: no problem
    QCOMPARE(field->textCursor().position(), 0);
    field->moveCursor(QTextCursor::End);
    emit frame.sig_update();
    QCOMPARE(field->textCursor().position(), 0);
    field->moveCursor(QTextCursor::End);
    paste(field, QStringLiteral("\n"));
    QCOMPARE(field->textCursor().position(), 0);
    // As after setPlainText, nothing is left to undo.
    QVERIFY(!field->document()->isUndoAvailable());
    QVERIFY(!field->document()->isModified());
    QCOMPARE(field->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
}

void TestParamSimple::tleCarriageReturnsPass()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("iss-crlf.tle")));
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1); // the file dialog only
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Open TLEs File"));
    QCOMPARE(answerer.seen().at(0).nameFilters,
             QStringList({"Text file (*.txt)", "All files (*)"}));
    const std::vector<ParameterListTLEs::TLE> sets = list->getTLEs();
    QCOMPARE(sets.size(), std::size_t(3));
    QCOMPARE(sets[0].line0, std::string("ISS (ZARYA)             "));
    QCOMPARE(sets[0].line1.size(), std::size_t(69));
    // The file has no empty lines between its sets; the field gets them.
    QStringList lines = QString::fromLatin1(readData(QStringLiteral("iss-crlf.tle")))
                            .remove(QLatin1Char('\r'))
                            .split('\n');
    QCOMPARE(lines.size(), 10);
    lines.insert(6, QString());
    lines.insert(3, QString());
    QCOMPARE(fieldOf(frame)->toPlainText(), lines.join('\n') + QLatin1Char('\n'));
    QVERIFY(!fieldOf(frame)->toPlainText().contains(QLatin1Char('\r')));
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestParamSimple::tleSetWithoutName()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    const QString unnamed = lines[1] + QLatin1Char('\n') + lines[2];
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    paste(fieldOf(frame), unnamed);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(list->getTLEs().size(), std::size_t(1));
    QCOMPARE(list->getTLEs()[0].line0, std::string());
    QCOMPARE(fieldOf(frame)->toPlainText(), unnamed + QStringLiteral("\n\n"));
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), unnamed + QStringLiteral("\n\n"));
}

void TestParamSimple::tleLoadAppendsAndRepeats()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("repeated-set.tle")));
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "JPSS-1", "FLOCK 2E'-6", "JPSS-1"}));
    QCOMPARE(fieldOf(frame)->toPlainText(),
             normalForm(readData(QStringLiteral("three-sets.tle")) + "\n"
                        + readData(QStringLiteral("repeated-set.tle"))));
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestParamSimple::tleLoadWithoutGoodSetWarnsOnce_data()
{
    QTest::addColumn<bool>("earlierSets");
    QTest::addColumn<QString>("warning");
    QTest::newRow("into empty field") << false
                                      << "Line #2. TLE is not valid. Line #2 is not TLE line.\n"
                                         "0 problem-free TLEs were parsed.\n";
    QTest::newRow("behind earlier sets") << true
                                         << "Line #16. TLE is not valid. Line #2 is not TLE line.\n"
                                            "3 problem-free TLEs were parsed.\n";
}

void TestParamSimple::tleLoadWithoutGoodSetWarnsOnce()
{
    QFETCH(bool, earlierSets);
    QFETCH(QString, warning);

    const QByteArray earlier = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    if (earlierSets)
        list->setTLEs(setsOf(earlier));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("no-good-set.tle")));
    answerer.pressButton(QMessageBox::Ok);
    answerer.pressButton(QMessageBox::Ok); // spare: a second box would be a fault
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(answerer.pending(), 1);
    checkWarning(answerer.seen().at(1), warning);
    QCOMPARE(fieldOf(frame)->toPlainText(), earlierSets ? normalForm(earlier) : QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(earlierSets ? 3 : 0));
}

void TestParamSimple::tleLoadCancelledOrEmptyChangesNothing_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("cancelled dialog") << true;
    QTest::newRow("empty file") << false;
}

void TestParamSimple::tleLoadCancelledOrEmptyChangesNothing()
{
    QFETCH(bool, cancel);

    const QString empty = _dir.path() + QStringLiteral("/empty.tle");
    QFile file(empty);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    const QString before = fieldOf(frame)->toPlainText();
    ModalAnswerer answerer;
    if (cancel)
        answerer.cancel();
    else
        answerer.chooseFile(empty);
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1); // no box
    QCOMPARE(fieldOf(frame)->toPlainText(), before);
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestParamSimple::tleLoadDecodesLatin1OrUtf8UpToZeroByte()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("repeated-set.tle"))).split('\n');
    QByteArray content = QByteArray(u8"SAT ü\n") + lines[1].toUtf8() + '\n' + lines[2].toUtf8() + '\n';
    content += QByteArray("\n\0", 2);
    content += readData(QStringLiteral("three-sets.tle")); // behind the zero byte: never read
    const QString path = _dir.path() + QStringLiteral("/named.tle");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.chooseFile(path);
    answerer.chooseFile(path);
    QPushButton *load = buttonOf(&frame, QStringLiteral("Load from file.."));
    load->click(); // into an empty field: Latin-1
    QCOMPARE(namesOf(list->getTLEs()), QStringList({QString::fromLatin1(u8"SAT ü")}));
    load->click(); // behind earlier sets: UTF-8
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(namesOf(list->getTLEs()),
             QStringList({QString::fromLatin1(u8"SAT ü"), QString::fromUtf8(u8"SAT ü")}));
}

void TestParamSimple::tleClearWarnsExactlyOnce()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    QPushButton *clear = buttonOf(&frame, QStringLiteral("Clear"));
    QVERIFY(clear->isEnabled());
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    for (int use = 0; use < 2; ++use) {
        ModalAnswerer answerer;
        answerer.pressButton(QMessageBox::Ok);
        answerer.pressButton(QMessageBox::Ok); // spare: a second box would be a fault
        clear->setEnabled(true);
        clear->click();
        QCOMPARE(answerer.seen().size(), 1);
        QCOMPARE(answerer.pending(), 1);
        checkWarning(answerer.seen().at(0), QStringLiteral("TLEs text is empty.\n"));
        QCOMPARE(field->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
        QVERIFY(!clear->isEnabled());
    }
    QCOMPARE(changed.size(), 0);
}

void TestParamSimple::tleRemovingAllTextWarns()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    checkWarning(answerer.seen().at(0), QStringLiteral("TLEs text is empty.\n"));
    QCOMPARE(field->toPlainText(), QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestParamSimple::tleTwoEditorsDoNotTellEachOther()
{
    const QByteArray catalog = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(catalog));
    ParamSimple own(list, nullptr);
    ParamSimple parents(list, nullptr);
    emit own.sig_update();
    emit parents.sig_update();

    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    buttonOf(&own, QStringLiteral("Clear"))->setEnabled(true);
    buttonOf(&own, QStringLiteral("Clear"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QCOMPARE(fieldOf(parents)->toPlainText(), normalForm(catalog)); // still the old text

    QPlainTextEdit *other = fieldOf(parents);
    other->moveCursor(QTextCursor::End);
    QTest::keyClick(other, Qt::Key_Return); // its next apply writes what it shows
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QCOMPARE(fieldOf(own)->toPlainText(), QStringLiteral("\n\n"));
}

QTEST_MAIN(TestParamSimple)
#include "tst_paramsimple.moc"
