// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The frame every simple editor sits in: its title, its "?" button, the
// control chosen by type, and the filter that keeps wheel and Enter away.

#include "editorfixture.h"

#include <QtTest>

using namespace fixture;

class TestParamFrame : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

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
};

void TestParamFrame::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
}

void TestParamFrame::titleIsNameOrKey_data()
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

void TestParamFrame::titleIsNameOrKey()
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

void TestParamFrame::titleBoldForImportanceAtMostOne_data()
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

void TestParamFrame::titleBoldForImportanceAtMostOne()
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

void TestParamFrame::radioGroupBoldForImportanceAtMostOne_data()
{
    QTest::addColumn<int>("importance");
    QTest::addColumn<QString>("styleSheet");

    QTest::newRow("0") << 0 << "QGroupBox { font-weight: bold; }";
    QTest::newRow("1") << 1 << "QGroupBox { font-weight: bold; }";
    QTest::newRow("2") << 2 << QString();
    QTest::newRow("3") << 3 << QString();
}

void TestParamFrame::radioGroupBoldForImportanceAtMostOne()
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

void TestParamFrame::infoButtonGreyWithoutDocumentation_data()
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

void TestParamFrame::infoButtonGreyWithoutDocumentation()
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

void TestParamFrame::infoButtonOpensDocumentation()
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

void TestParamFrame::frameLaysOutButtonLeftOfControl()
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

void TestParamFrame::controlChosenByType_data()
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

void TestParamFrame::controlChosenByType()
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

void TestParamFrame::listAddRuleChosenByItemType_data()
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

void TestParamFrame::listAddRuleChosenByItemType()
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

void TestParamFrame::nullParameterGivesButtonOnly()
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

void TestParamFrame::hoverIsAnnounced()
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

void TestParamFrame::ignoreFilterSwallowsWheelAndEnter_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("swallowed");

    QTest::newRow("wheel") << int(QEvent::Wheel) << true;
    QTest::newRow("enter") << int(QEvent::Enter) << true;
    QTest::newRow("leave") << int(QEvent::Leave) << false;
    QTest::newRow("focus in") << int(QEvent::FocusIn) << false;
    QTest::newRow("user") << int(QEvent::User) << false;
}

void TestParamFrame::ignoreFilterSwallowsWheelAndEnter()
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

void TestParamFrame::wheelOverSpinBoxChangesNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("integer box") << int(ParameterSimple::Integer);
    QTest::newRow("decimal box") << int(ParameterSimple::Decimal);
}

void TestParamFrame::wheelOverSpinBoxChangesNothing()
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

void TestParamFrame::checkBoxWritesEveryClick()
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

void TestParamFrame::checkBoxLoadDoesNotWrite()
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

QTEST_MAIN(TestParamFrame)
#include "tst_paramframe.moc"
