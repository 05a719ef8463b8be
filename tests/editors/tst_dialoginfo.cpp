// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialoginfo.h"
#include "editors/paramsimple.h"
#include "model/parameter.h"

#include "modalanswerer.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

#include <memory>

namespace {

QPushButton *okButtonOf(QWidget *dialog)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->text() == "Ok")
            return button;
    }
    return nullptr;
}

// What the dialog shows, read while it runs, and then its Ok pressed.
struct Shown
{
    QString text;
    QString link;
    bool readOnly = false;
};

ModalAnswerer::Handler readAndPressOk(Shown &shown)
{
    return [&shown](QWidget *modal) {
        if (QTextEdit *edit = modal->findChild<QTextEdit *>()) {
            shown.text = edit->toPlainText();
            shown.readOnly = edit->isReadOnly();
        }
        if (QLabel *label = modal->findChild<QLabel *>())
            shown.link = label->text();
        if (QPushButton *ok = okButtonOf(modal))
            ok->click();
    };
}

std::unique_ptr<ParameterSimple> documented(const std::string &doc, const std::string &source)
{
    Parameter::VisualParams vp;
    vp.name_en = "Polling period";
    vp.documentation = doc;
    vp.source = source;
    return std::make_unique<ParameterSimple>(nullptr, "period", vp, ParameterSimple::Integer,
                                             ParameterSimple::Fasets());
}

QPushButton *infoButtonOf(QWidget *frame)
{
    for (QPushButton *button : frame->findChildren<QPushButton *>()) {
        if (button->text() == "?")
            return button;
    }
    return nullptr;
}

} // namespace

class TestDialogInfo : public QObject
{
    Q_OBJECT

private slots:
    void linkLineNamesTheUrl_data();
    void linkLineNamesTheUrl();
    void textIsReadOnlyAndShowsRichTextAsSuch();
    void layoutPutsTextAboveLinkAboveOkButton();
    void isFixedSizeDialogWithTitleAndCloseButtons();
    void createRunsModallyAndLeavesHiddenChild();
    void infoButtonOfDocumentedFrameOpensDialog();
    void frameWithoutDocumentationCannotOpenDialog();
};

void TestDialogInfo::linkLineNamesTheUrl_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("link");
    QTest::newRow("no url") << ""
                            << "";
    QTest::newRow("url") << "https://example.org/doc.html"
                         << "<a href=\"https://example.org/doc.html\">Online documentation</a>";
    QTest::newRow("url taken unescaped")
        << "https://example.org/?a=1&b=<2>"
        << "<a href=\"https://example.org/?a=1&b=<2>\">Online documentation</a>";
}

void TestDialogInfo::linkLineNamesTheUrl()
{
    QFETCH(QString, url);
    QFETCH(QString, link);
    DialogInfo dialog("Polling period", "How often to look.", url, nullptr);
    QCOMPARE(dialog.windowTitle(), QString("Polling period"));
    const QList<QLabel *> labels = dialog.findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), link);
    QVERIFY(labels.first()->openExternalLinks());
    // Without a url the line is still there, empty.
    QVERIFY(dialog.layout()->indexOf(labels.first()) >= 0);
}

void TestDialogInfo::textIsReadOnlyAndShowsRichTextAsSuch()
{
    DialogInfo dialog("Title", "<b>Bold</b> words", "", nullptr);
    QTextEdit *edit = dialog.findChild<QTextEdit *>();
    QVERIFY(edit);
    QVERIFY(edit->isReadOnly());
    QCOMPARE(edit->toPlainText(), QString("Bold words"));

    DialogInfo plain("Title", "Plain words", "", nullptr);
    QCOMPARE(plain.findChild<QTextEdit *>()->toPlainText(), QString("Plain words"));
}

void TestDialogInfo::layoutPutsTextAboveLinkAboveOkButton()
{
    DialogInfo dialog("Title", "Text", "https://example.org", nullptr);
    auto *grid = qobject_cast<QGridLayout *>(dialog.layout());
    QVERIFY(grid);
    auto position = [grid](QWidget *w) {
        int row = -1, column = -1, rowSpan = -1, columnSpan = -1;
        grid->getItemPosition(grid->indexOf(w), &row, &column, &rowSpan, &columnSpan);
        return QList<int>{row, column, rowSpan, columnSpan};
    };
    QCOMPARE(position(dialog.findChild<QTextEdit *>()), (QList<int>{0, 0, 2, 3}));
    QCOMPARE(position(dialog.findChild<QLabel *>()), (QList<int>{2, 0, 1, 3}));
    QCOMPARE(position(okButtonOf(&dialog)), (QList<int>{3, 2, 1, 1}));
}

void TestDialogInfo::isFixedSizeDialogWithTitleAndCloseButtons()
{
    DialogInfo dialog("Title", "Text", "", nullptr);
    const Qt::WindowFlags flags = dialog.windowFlags();
    QVERIFY(flags.testFlag(Qt::WindowTitleHint));
    QVERIFY(flags.testFlag(Qt::WindowSystemMenuHint));
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.layout()->sizeConstraint(), QLayout::SetFixedSize);
}

void TestDialogInfo::createRunsModallyAndLeavesHiddenChild()
{
    QWidget parent;
    ModalAnswerer answerer;
    Shown shown;
    answerer.handleWith(readAndPressOk(shown));
    const int result =
        DialogInfo::create("Polling period", "How often to look.", "https://example.org", &parent);
    QCOMPARE(result, int(QDialog::Accepted));
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().className, QString("DialogInfo"));
    QCOMPARE(answerer.seen().first().title, QString("Polling period"));
    QCOMPARE(shown.text, QString("How often to look."));
    QVERIFY(shown.readOnly);
    QCOMPARE(shown.link, QString("<a href=\"https://example.org\">Online documentation</a>"));

    const QList<DialogInfo *> left = parent.findChildren<DialogInfo *>();
    QCOMPARE(left.size(), 1);
    QVERIFY(left.first()->isHidden());
}

void TestDialogInfo::infoButtonOfDocumentedFrameOpensDialog()
{
    auto param = documented("Seconds between two looks.", "");
    ParamSimple frame(param.get(), nullptr);
    QPushButton *info = infoButtonOf(&frame);
    QVERIFY(info);
    QVERIFY(info->isEnabled());

    ModalAnswerer answerer;
    Shown shown;
    answerer.handleWith(readAndPressOk(shown));
    info->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().first().title, QString("Polling period"));
    QCOMPARE(shown.text, QString("Seconds between two looks."));
    QCOMPARE(shown.link, QString(""));
    QCOMPARE(frame.findChildren<DialogInfo *>().size(), 1);
}

void TestDialogInfo::frameWithoutDocumentationCannotOpenDialog()
{
    // A link alone does not make the dialog reachable.
    auto param = documented("", "https://example.org");
    ParamSimple frame(param.get(), nullptr);
    QPushButton *info = infoButtonOf(&frame);
    QVERIFY(info);
    QVERIFY(!info->isEnabled());
    ModalAnswerer answerer;
    answerer.cancel(); // only used if a dialog came up after all
    info->click();
    QVERIFY(answerer.seen().isEmpty());
    QVERIFY(frame.findChildren<DialogInfo *>().isEmpty());
}

QTEST_MAIN(TestDialogInfo)
#include "tst_dialoginfo.moc"
