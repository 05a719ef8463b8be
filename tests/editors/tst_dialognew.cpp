// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialognew.h"

#include "modalanswerer.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {

QPushButton *buttonOf(QWidget *dialog, const QString &text)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

// Answers the dialog: checks the radio button at `choice` (none for -1),
// then presses the button with the text `press`.
ModalAnswerer::Handler choose(int choice, const QString &press)
{
    return [choice, press](QWidget *modal) {
        const QList<QRadioButton *> radios = modal->findChildren<QRadioButton *>();
        if (choice >= 0 && choice < radios.size())
            radios.at(choice)->click();
        if (QPushButton *button = buttonOf(modal, press))
            button->click();
    };
}

const QList<QString> threeServices{"Alpha station", "Beta station", "Gamma station"};

} // namespace

class TestDialogNew : public QObject
{
    Q_OBJECT

private slots:
    void showsTitlePromptAndOneButtonPerService();
    void firstServiceIsPreselected();
    void isFixedSizeDialogWithTitleAndCloseButtons();
    void okWithPreselectedServiceGivesZero();
    void chosenServiceGivesItsIndexInListOrder_data();
    void chosenServiceGivesItsIndexInListOrder();
    void cancelReturnsZeroButIndexStillNamesCheckedButton();
    void buttonsExcludeEachOther();
    void emptyServiceListOffersNoChoice();
    void dialogStaysHiddenChildAfterUse();
};

void TestDialogNew::showsTitlePromptAndOneButtonPerService()
{
    QWidget parent;
    DialogNew dialog(threeServices, &parent);
    QCOMPARE(dialog.windowTitle(), QString("Service select"));
    const QList<QLabel *> labels = dialog.findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), QString("Please select a service type:"));
    QStringList texts;
    for (QRadioButton *radio : dialog.findChildren<QRadioButton *>())
        texts << radio->text();
    QCOMPARE(texts, QStringList(threeServices));
    QVERIFY(buttonOf(&dialog, "&Ok"));
    QVERIFY(buttonOf(&dialog, "&Cancel"));

    // From top to bottom: prompt, the services, then Ok and Cancel side by side.
    QLayout *layout = dialog.layout();
    QCOMPARE(layout->itemAt(0)->widget(), static_cast<QWidget *>(labels.first()));
    QVERIFY(layout->itemAt(1)->spacerItem());
    for (int i = 0; i < 3; ++i)
        QCOMPARE(qobject_cast<QRadioButton *>(layout->itemAt(2 + i)->widget())->text(), threeServices.at(i));
    QVERIFY(layout->itemAt(5)->spacerItem());
    QLayout *row = layout->itemAt(6)->layout();
    QVERIFY(row);
    QCOMPARE(row->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(row->itemAt(0)->widget(), static_cast<QWidget *>(buttonOf(&dialog, "&Ok")));
    QVERIFY(row->itemAt(1)->spacerItem());
    QCOMPARE(row->itemAt(2)->widget(), static_cast<QWidget *>(buttonOf(&dialog, "&Cancel")));
}

void TestDialogNew::firstServiceIsPreselected()
{
    DialogNew dialog(threeServices, nullptr);
    const QList<QRadioButton *> radios = dialog.findChildren<QRadioButton *>();
    QVERIFY(radios.at(0)->isChecked());
    QVERIFY(!radios.at(1)->isChecked());
    QVERIFY(!radios.at(2)->isChecked());
    QCOMPARE(dialog.getServiceIndex(), 0);
}

void TestDialogNew::isFixedSizeDialogWithTitleAndCloseButtons()
{
    DialogNew dialog(threeServices, nullptr);
    const Qt::WindowFlags flags = dialog.windowFlags();
    QVERIFY(flags.testFlag(Qt::WindowTitleHint));
    QVERIFY(flags.testFlag(Qt::WindowSystemMenuHint));
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.layout()->sizeConstraint(), QLayout::SetFixedSize);
}

void TestDialogNew::okWithPreselectedServiceGivesZero()
{
    QWidget parent;
    DialogNew dialog(threeServices, &parent);
    ModalAnswerer answerer;
    answerer.handleWith(choose(-1, "&Ok"));
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().first().title, QString("Service select"));
    QCOMPARE(dialog.getServiceIndex(), 0);
}

void TestDialogNew::chosenServiceGivesItsIndexInListOrder_data()
{
    QTest::addColumn<int>("choice");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
    QTest::newRow("third") << 2;
}

void TestDialogNew::chosenServiceGivesItsIndexInListOrder()
{
    QFETCH(int, choice);
    DialogNew dialog(threeServices, nullptr);
    ModalAnswerer answerer;
    answerer.handleWith(choose(choice, "&Ok"));
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QVERIFY(answerer.allAnswered());
    QCOMPARE(dialog.getServiceIndex(), choice);
}

void TestDialogNew::cancelReturnsZeroButIndexStillNamesCheckedButton()
{
    DialogNew dialog(threeServices, nullptr);
    ModalAnswerer answerer;
    answerer.handleWith(choose(1, "&Cancel"));
    QCOMPARE(dialog.exec(), 0);
    QVERIFY(answerer.allAnswered());
    // The caller goes by the result of exec(), not by the index.
    QCOMPARE(dialog.getServiceIndex(), 1);
}

void TestDialogNew::buttonsExcludeEachOther()
{
    DialogNew dialog(threeServices, nullptr);
    const QList<QRadioButton *> radios = dialog.findChildren<QRadioButton *>();
    radios.at(2)->click();
    QVERIFY(!radios.at(0)->isChecked());
    QVERIFY(radios.at(2)->isChecked());
    radios.at(1)->click();
    QVERIFY(!radios.at(2)->isChecked());
    QCOMPARE(dialog.getServiceIndex(), 1);
}

void TestDialogNew::emptyServiceListOffersNoChoice()
{
    DialogNew dialog(QList<QString>{}, nullptr);
    QVERIFY(dialog.findChildren<QRadioButton *>().isEmpty());
    QCOMPARE(dialog.getServiceIndex(), -1);
}

void TestDialogNew::dialogStaysHiddenChildAfterUse()
{
    QWidget parent;
    auto *dialog = new DialogNew(threeServices, &parent);
    ModalAnswerer answerer;
    answerer.handleWith(choose(2, "&Ok"));
    QCOMPARE(dialog->exec(), int(QDialog::Accepted));
    QCOMPARE(parent.findChildren<DialogNew *>().size(), 1);
    QVERIFY(dialog->isHidden());
    QCOMPARE(dialog->getServiceIndex(), 2);
}

QTEST_MAIN(TestDialogNew)
#include "tst_dialognew.moc"
