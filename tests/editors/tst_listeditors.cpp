// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The list editors: adding, deleting and their bounds, and lists of file paths.

#include "editorfixture.h"

#include <QtTest>

using namespace fixture;

class TestListEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

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

private:
    QTemporaryDir _dir;
};

void TestListEditors::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
    QVERIFY(_dir.isValid());
}

void TestListEditors::listControlLayout()
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

void TestListEditors::fitkeyListAddsInCapitals()
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

void TestListEditors::listAddCancelledOrEmptyChangesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("ok");
    QTest::newRow("cancel") << "key" << false;
    QTest::newRow("ok on empty field") << QString() << true;
}

void TestListEditors::listAddCancelledOrEmptyChangesNothing()
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

void TestListEditors::refusedListItemStillReported()
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

void TestListEditors::listGrowsBeyondMaximum()
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

void TestListEditors::deleteStopsAtMinimum()
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

void TestListEditors::addEnablesDeleteOnlyAboveMinimum()
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

void TestListEditors::deleteAfterRefreshHitsNothing()
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

void TestListEditors::filePathsAddOneRowEachAndReportOnce()
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
        // By now the name field has the focus, where selectFile() would leave it empty.
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        QVERIFY(ModalAnswerer::enterFileNames(
            dialog, base, {QStringLiteral("a.txt"), QStringLiteral("c.txt"), QStringLiteral("b.txt")}));
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

void TestListEditors::filePathsCancelChangesNothing()
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

void TestListEditors::nonAsciiPathReadsAsLatin1AfterReload()
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

QTEST_MAIN(TestListEditors)
#include "tst_listeditors.moc"
