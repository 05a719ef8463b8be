// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialogadditem.h"

#include "modalanswerer.h"
#include "typing.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QtTest>

namespace {

const QString keyRule25 = QStringLiteral("[a-zA-Z0-9)(_\\-]{1,25}");
const QString keyRule8 = QStringLiteral("[A-Z0-9)(_\\-]{1,8}");

QRegularExpression rule(const QString &pattern)
{
    return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

QLineEdit *entryOf(QWidget *dialog)
{
    return dialog->findChild<QLineEdit *>();
}

QPushButton *buttonOf(QWidget *dialog, const QString &text)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

// Types into the dialog's field, then presses the named button.
ModalAnswerer::Handler typeAndPress(const QString &typed, const QString &button)
{
    return [typed, button](QWidget *w) {
        QLineEdit *edit = entryOf(w);
        QVERIFY(edit);
        QTest::keyClicks(edit, typed);
        QPushButton *b = buttonOf(w, button);
        QVERIFY(b);
        b->click();
    };
}

} // namespace

class TestDialogAddItem : public QObject
{
    Q_OBJECT

private slots:
    void entryRuleRefusesImpossibleKeystrokes_data();
    void entryRuleRefusesImpossibleKeystrokes();
    void okReturnsTheEnteredText();
    void okOnEmptyFieldReturnsEmptyText();
    void okReturnsIntermediateTextAsItStands();
    void cancelReturnsEmptyText();
    void dialogStaysHiddenChildOfParent();
    void dialogHasTitleButtonsAndNoCloseButton();
    void dialogHasFixedSizeAndWideField();
    void getValueIsTheFieldText();
};

void TestDialogAddItem::entryRuleRefusesImpossibleKeystrokes_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");

    QTest::newRow("25 characters fit") << keyRule25 << QString(25, QLatin1Char('a'))
                                       << QString(25, QLatin1Char('a'));
    QTest::newRow("26th character refused") << keyRule25 << QString(26, QLatin1Char('b'))
                                            << QString(25, QLatin1Char('b'));
    QTest::newRow("blank refused, 25 rule") << keyRule25 << "ab cd" << "abcd";
    QTest::newRow("dot refused, 25 rule") << keyRule25 << "ab.cd" << "abcd";
    QTest::newRow("parentheses taken, 25 rule") << keyRule25 << "(a)_-1" << "(a)_-1";
    QTest::newRow("blank refused, 8 rule") << keyRule8 << "AB CD" << "ABCD";
    QTest::newRow("dot refused, 8 rule") << keyRule8 << "AB.CD" << "ABCD";
    QTest::newRow("parentheses taken, 8 rule") << keyRule8 << "(A)_-1" << "(A)_-1";
    QTest::newRow("small letters taken, 8 rule") << keyRule8 << "abc" << "abc";
    QTest::newRow("9th character refused") << keyRule8 << "ABCDEFGHI" << "ABCDEFGH";
    QTest::newRow("non-ASCII letter refused") << keyRule25 << QString::fromUtf8("aüb") << "ab";
}

void TestDialogAddItem::entryRuleRefusesImpossibleKeystrokes()
{
    QFETCH(QString, pattern);
    QFETCH(QString, typed);
    QFETCH(QString, shown);

    DialogAddItem dialog(rule(pattern), nullptr);
    QLineEdit *edit = entryOf(&dialog);
    QVERIFY(edit);
    typeText(edit, typed);
    QCOMPARE(edit->text(), shown);
}

void TestDialogAddItem::okReturnsTheEnteredText()
{
    QWidget parent;
    ModalAnswerer answerer;
    answerer.handleWith(typeAndPress(QStringLiteral("abc_(1)"), QStringLiteral("&Ok")));
    const QString result = DialogAddItem::create(rule(keyRule25), &parent);
    QVERIFY(answerer.allAnswered());
    QCOMPARE(result, QStringLiteral("abc_(1)"));
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().at(0).className, QStringLiteral("DialogAddItem"));
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
    QCOMPARE(answerer.seen().at(0).text, QString());
}

void TestDialogAddItem::okOnEmptyFieldReturnsEmptyText()
{
    QWidget parent;
    ModalAnswerer answerer;
    answerer.handleWith(typeAndPress(QString(), QStringLiteral("&Ok")));
    const QString result = DialogAddItem::create(rule(keyRule25), &parent);
    QVERIFY(answerer.allAnswered());
    QVERIFY(result.isEmpty());
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
}

void TestDialogAddItem::okReturnsIntermediateTextAsItStands()
{
    // An e-mail rule with nothing behind the at sign is intermediate, not
    // acceptable; Ok does not wait for more.
    QWidget parent;
    ModalAnswerer answerer;
    answerer.handleWith(typeAndPress(QStringLiteral("me@"), QStringLiteral("&Ok")));
    const QString result =
        DialogAddItem::create(rule(QStringLiteral("[a-zA-Z0-9.]+@[a-zA-Z0-9.]+")), &parent);
    QVERIFY(answerer.allAnswered());
    QCOMPARE(result, QStringLiteral("me@"));
}

void TestDialogAddItem::cancelReturnsEmptyText()
{
    QWidget parent;
    ModalAnswerer answerer;
    answerer.handleWith(typeAndPress(QStringLiteral("typed"), QStringLiteral("&Cancel")));
    const QString result = DialogAddItem::create(rule(keyRule25), &parent);
    QVERIFY(answerer.allAnswered());
    QVERIFY(result.isEmpty());
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Item select"));
}

void TestDialogAddItem::dialogStaysHiddenChildOfParent()
{
    QWidget parent;
    ModalAnswerer answerer;
    answerer.handleWith(typeAndPress(QStringLiteral("one"), QStringLiteral("&Ok")));
    answerer.handleWith(typeAndPress(QStringLiteral("two"), QStringLiteral("&Cancel")));
    QCOMPARE(DialogAddItem::create(rule(keyRule25), &parent), QStringLiteral("one"));
    QCOMPARE(DialogAddItem::create(rule(keyRule25), &parent), QString());
    QVERIFY(answerer.allAnswered());
    const QList<DialogAddItem *> dialogs = parent.findChildren<DialogAddItem *>();
    QCOMPARE(dialogs.size(), 2);
    for (DialogAddItem *dialog : dialogs)
        QVERIFY(!dialog->isVisible());
}

void TestDialogAddItem::dialogHasTitleButtonsAndNoCloseButton()
{
    DialogAddItem dialog(rule(keyRule25), nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Item select"));
    QVERIFY(buttonOf(&dialog, QStringLiteral("&Ok")));
    QVERIFY(buttonOf(&dialog, QStringLiteral("&Cancel")));
    const Qt::WindowFlags flags = dialog.windowFlags();
    QVERIFY(flags.testFlag(Qt::WindowTitleHint));
    QVERIFY(flags.testFlag(Qt::WindowSystemMenuHint));
    QVERIFY(!flags.testFlag(Qt::WindowCloseButtonHint));
}

void TestDialogAddItem::dialogHasFixedSizeAndWideField()
{
    DialogAddItem dialog(rule(keyRule25), nullptr);
    auto *layout = qobject_cast<QGridLayout *>(dialog.layout());
    QVERIFY(layout);
    QCOMPARE(layout->sizeConstraint(), QLayout::SetFixedSize);
    QLineEdit *edit = entryOf(&dialog);
    QCOMPARE(edit->minimumWidth(), 200);

    int row, column, rowSpan, columnSpan;
    layout->getItemPosition(layout->indexOf(edit), &row, &column, &rowSpan, &columnSpan);
    QCOMPARE(QList<int>({row, column, rowSpan, columnSpan}), QList<int>({0, 0, 1, 2}));
    layout->getItemPosition(layout->indexOf(buttonOf(&dialog, QStringLiteral("&Ok"))), &row,
                            &column, &rowSpan, &columnSpan);
    QCOMPARE(QList<int>({row, column}), QList<int>({1, 0}));
    layout->getItemPosition(layout->indexOf(buttonOf(&dialog, QStringLiteral("&Cancel"))), &row,
                            &column, &rowSpan, &columnSpan);
    QCOMPARE(QList<int>({row, column}), QList<int>({1, 1}));

    auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    QVERIFY(validator);
    QCOMPARE(validator->regularExpression().pattern(), keyRule25);
}

void TestDialogAddItem::getValueIsTheFieldText()
{
    DialogAddItem dialog(rule(keyRule25), nullptr);
    QVERIFY(dialog.getValue().isEmpty());
    QTest::keyClicks(entryOf(&dialog), QStringLiteral("key1"));
    QCOMPARE(dialog.getValue(), QStringLiteral("key1"));
}

QTEST_MAIN(TestDialogAddItem)
#include "tst_dialogadditem.moc"
