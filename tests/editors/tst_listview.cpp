// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/listview.h"

#include "model/parameter.h"
#include "parambuilders.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QtTest>

#include <memory>
#include <string>
#include <vector>

namespace {

struct ListFixture
{
    ListFixture(ParameterSimple::SimpleType type, double minValue, std::vector<std::string> values,
                double maxValue = 9999999.9)
        : root(nullptr, "root", Parameter::VisualParams())
    {
        list = new ParameterList(&root, "items", "item", Parameter::VisualParams(), type,
                                 builders::range(minValue, maxValue));
        if (!values.empty())
            list->setValues(values);
    }

    ParameterComplex root; // owns the list
    ParameterList *list;
};

QStringList rowsOf(ListView &view)
{
    QStringList rows;
    QAbstractItemModel *model = view.model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 0).data().toString();
    return rows;
}

std::vector<std::string> strings(std::initializer_list<const char *> items)
{
    return std::vector<std::string>(items.begin(), items.end());
}

// Shows the view so that mouse clicks reach its rows.
void showAndWait(QWidget &widget)
{
    widget.resize(200, 200);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

} // namespace

class TestListView : public QObject
{
    Q_OBJECT

private slots:
    void viewShowsTheItemsInOrder();
    void viewRefusesEditingAndSelectsSingleRows();
    void addItemAppendsSelectsAndAnnounces();
    void addItemsAppendsEachInOrder();
    void addItemKeepsNonAsciiButReloadShowsLatin1();
    void refusedItemStillGetsARow();
    void deletionAfterRefusedAddHitsAnotherItem();
    void noUpperBoundOnRows();
    void deleteItemRemovesRowAndSelection();
    void deleteOfInvalidIndexChangesNothing();
    void minimumRule_data();
    void minimumRule();
    void clickOnRowAnnouncesSelection();
    void keyboardSelectionAnnouncesNothing();
    void currentIndexIsInvalidWithoutSelection();
    void reinitRebuildsRowsAndDropsSelection();
};

void TestListView::viewShowsTheItemsInOrder()
{
    ListFixture f(ParameterSimple::String, 0, strings({"b", "a", "c"}));
    ListView view(f.list, nullptr);
    QCOMPARE(rowsOf(view), QStringList({"b", "a", "c"}));
    QCOMPARE(view.getItemsAmount(), 3);
}

void TestListView::viewRefusesEditingAndSelectsSingleRows()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a"}));
    ListView view(f.list, nullptr);
    QCOMPARE(view.editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    QCOMPARE(view.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(view.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

void TestListView::addItemAppendsSelectsAndAnnounces()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a"}));
    ListView view(f.list, nullptr);
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    view.addItem(QStringLiteral("b"));
    QCOMPARE(f.list->getValues(), strings({"a", "b"}));
    QCOMPARE(rowsOf(view), QStringList({"a", "b"}));
    QCOMPARE(view.getCurrentIndex().row(), 1);
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toBool(), true);
}

void TestListView::addItemsAppendsEachInOrder()
{
    ListFixture f(ParameterSimple::String, 0, {});
    ListView view(f.list, nullptr);
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    view.addItems({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")});
    QCOMPARE(f.list->getValues(), strings({"x", "y", "z"}));
    QCOMPARE(rowsOf(view), QStringList({"x", "y", "z"}));
    QCOMPARE(view.getCurrentIndex().row(), 2);
    QCOMPARE(selected.size(), 3);
}

void TestListView::addItemKeepsNonAsciiButReloadShowsLatin1()
{
    const QString path = QString::fromUtf8("/data/Zürich/ßpace.txt");
    ListFixture f(ParameterSimple::Filepath, 0, {});
    ListView view(f.list, nullptr);
    view.addItem(path);
    QCOMPARE(f.list->getValues(), std::vector<std::string>({path.toUtf8().toStdString()}));
    QCOMPARE(rowsOf(view), QStringList({path}));

    view.sl_reinit();
    const QByteArray bytes = path.toUtf8();
    QCOMPARE(rowsOf(view), QStringList({QString::fromLatin1(bytes)}));
    QVERIFY(rowsOf(view).at(0) != path);
}

void TestListView::refusedItemStillGetsARow()
{
    // Each item of an Integer list is held against the same minimum as the count.
    ListFixture f(ParameterSimple::Integer, 1, strings({"5"}));
    ListView view(f.list, nullptr);
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    view.addItem(QStringLiteral("0"));
    QCOMPARE(f.list->getValues(), strings({"5"}));
    QCOMPARE(rowsOf(view), QStringList({"5", "0"}));
    QCOMPARE(selected.size(), 1);

    view.sl_reinit();
    QCOMPARE(rowsOf(view), QStringList({"5"}));
}

void TestListView::deletionAfterRefusedAddHitsAnotherItem()
{
    ListFixture f(ParameterSimple::Integer, 1, strings({"5"}));
    ListView view(f.list, nullptr);
    view.addItem(QStringLiteral("0")); // refused by the list, shown by the view
    view.addItem(QStringLiteral("7"));
    QCOMPARE(f.list->getValues(), strings({"5", "7"}));
    QCOMPARE(rowsOf(view), QStringList({"5", "0", "7"}));

    view.deleteItem(view.model()->index(1, 0)); // the row of "0" is item 1, which is "7"
    QCOMPARE(f.list->getValues(), strings({"5"}));
    QCOMPARE(rowsOf(view), QStringList({"5", "7"}));

    view.deleteItem(view.model()->index(1, 0)); // no item 1 any more
    QCOMPARE(f.list->getValues(), strings({"5"}));
    QCOMPARE(rowsOf(view), QStringList({"5"}));
}

void TestListView::noUpperBoundOnRows()
{
    ListFixture f(ParameterSimple::String, 0, {}, 2);
    ListView view(f.list, nullptr);
    view.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QCOMPARE(view.getItemsAmount(), 3);
    QCOMPARE(f.list->getValues(), strings({"a", "b", "c"}));
}

void TestListView::deleteItemRemovesRowAndSelection()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a", "b", "c"}));
    ListView view(f.list, nullptr);
    view.selectionModel()->select(view.model()->index(1, 0), QItemSelectionModel::ClearAndSelect);
    QCOMPARE(view.getCurrentIndex().row(), 1);
    QSignalSpy selected(&view, &ListView::sig_isSelected);

    view.deleteItem(view.getCurrentIndex());
    QCOMPARE(f.list->getValues(), strings({"a", "c"}));
    QCOMPARE(rowsOf(view), QStringList({"a", "c"}));
    QVERIFY(!view.getCurrentIndex().isValid());
    QVERIFY(!view.selectionModel()->currentIndex().isValid());
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toBool(), false);
}

void TestListView::deleteOfInvalidIndexChangesNothing()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a", "b"}));
    ListView view(f.list, nullptr);
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    view.deleteItem(QModelIndex());
    QCOMPARE(f.list->getValues(), strings({"a", "b"}));
    QCOMPARE(rowsOf(view), QStringList({"a", "b"}));
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toBool(), false);
}

void TestListView::minimumRule_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("atMinimum");

    QTest::newRow("minimum 0, no rows") << 0.0 << 0 << true;
    QTest::newRow("minimum 0, one row") << 0.0 << 1 << false;
    QTest::newRow("minimum 2, one row (below)") << 2.0 << 1 << true;
    QTest::newRow("minimum 2, two rows") << 2.0 << 2 << true;
    QTest::newRow("minimum 2, three rows") << 2.0 << 3 << false;
    QTest::newRow("minimum 2.9 truncated, three rows") << 2.9 << 3 << false;
}

void TestListView::minimumRule()
{
    QFETCH(double, minimum);
    QFETCH(int, rows);
    QFETCH(bool, atMinimum);

    ListFixture f(ParameterSimple::String, minimum, {});
    ListView view(f.list, nullptr);
    for (int i = 0; i < rows; ++i)
        view.addItem(QString::number(i));
    QCOMPARE(view.getItemsAmount(), rows);
    QCOMPARE(view.isWithMimimumItems(), atMinimum);
}

void TestListView::clickOnRowAnnouncesSelection()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a", "b"}));
    ListView view(f.list, nullptr);
    showAndWait(view);
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    const QRect rect = view.visualRect(view.model()->index(1, 0));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toBool(), true);
    QCOMPARE(view.getCurrentIndex().row(), 1);
}

void TestListView::keyboardSelectionAnnouncesNothing()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a", "b", "c"}));
    ListView view(f.list, nullptr);
    showAndWait(view);
    view.setFocus();
    QSignalSpy selected(&view, &ListView::sig_isSelected);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Down);
    QVERIFY(view.getCurrentIndex().isValid());
    QCOMPARE(selected.size(), 0);
}

void TestListView::currentIndexIsInvalidWithoutSelection()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a"}));
    ListView view(f.list, nullptr);
    QVERIFY(!view.getCurrentIndex().isValid());
}

void TestListView::reinitRebuildsRowsAndDropsSelection()
{
    ListFixture f(ParameterSimple::String, 0, strings({"a", "b"}));
    ListView view(f.list, nullptr);
    view.addItem(QStringLiteral("c"));
    QVERIFY(view.getCurrentIndex().isValid());
    f.list->setValues(strings({"x"}));
    QSignalSpy selected(&view, &ListView::sig_isSelected);

    view.sl_reinit();
    QCOMPARE(rowsOf(view), QStringList({"x"}));
    QVERIFY(!view.getCurrentIndex().isValid());
    QCOMPARE(selected.size(), 0);
    view.addItem(QStringLiteral("y")); // the new selection model works on
    QCOMPARE(view.getCurrentIndex().row(), 1);
}

QTEST_MAIN(TestListView)
#include "tst_listview.moc"
