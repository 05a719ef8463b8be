// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "paramfixture.h"

#include <QPointer>
#include <QStandardItemModel>
#include <QtTest>

namespace {

// Two sections, each with a leaf, and a list to search through.
struct TwoSections
{
    std::unique_ptr<ParameterComplex> root = fixture::root();
    QList<ParameterSimple *> all;
    TwoSections()
    {
        ParameterComplex *first = fixture::section(root.get(), "first", {"First"});
        all << fixture::leaf(first, "one", {"One"});
        ParameterComplex *second = fixture::section(root.get(), "second", {"Second"});
        all << fixture::leaf(second, "two", {"Two"});
    }
};

ParamsArea *searchPage(const QList<ParameterSimple *> &list, const QString &text)
{
    return new ParamsArea(list, text, "Search results", nullptr);
}

} // namespace

class TestParamsWidget : public QObject
{
    Q_OBJECT

private slots:
    void startsOnBlankPage();
    void setAreasAddsPagesInKeyOrder();
    void activeteAreaShowsPageOfIndex();
    void unknownIndexShowsBlankPageAndHasNoPage_data();
    void unknownIndexShowsBlankPageAndHasNoPage();
    void nullPageInMapShowsBlankPage();
    void newSearchPageReplacesOldOneWithoutShowingIt();
    void onlyLastOfSeveralSearchPagesStaysInStack();
    void activeteSearchAreaBeforeAnySearchLeavesCurrentPage();
    void searchPageOutlivesRebuildOfSections();
    void activeteEmptyAreaGoesBackToBlankPage();
};

void TestParamsWidget::startsOnBlankPage()
{
    ParamsWidget stack(nullptr);
    QCOMPARE(stack.count(), 1);
    QWidget *blank = stack.currentWidget();
    QVERIFY(qobject_cast<QScrollArea *>(blank));
    QVERIFY(!qobject_cast<ParamsArea *>(blank));
    QCOMPARE(blank->parent(), static_cast<QObject *>(&stack));
    QVERIFY(stack.getAreaPtr(QModelIndex()) == nullptr);
}

void TestParamsWidget::setAreasAddsPagesInKeyOrder()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    QMap<QModelIndex, ParamsArea *> *map = tree.createAreas(sections.root.get(), "A");
    stack.setAreas(map);
    QCOMPARE(stack.count(), 1 + map->size());
    int i = 1;
    for (ParamsArea *page : *map) {
        QCOMPARE(stack.widget(i++), static_cast<QWidget *>(page));
        QCOMPARE(page->parent(), static_cast<QObject *>(&stack));
    }
    // Adding pages shows none of them.
    QVERIFY(!qobject_cast<ParamsArea *>(stack.currentWidget()));
}

void TestParamsWidget::activeteAreaShowsPageOfIndex()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sections.root.get(), "A"));
    const QModelIndex second = tree.model()->index(1, 0);
    stack.activeteArea(second);
    QCOMPARE(stack.currentWidget(), static_cast<QWidget *>(tree.getAreaPtr(second)));
    QCOMPARE(stack.getAreaPtr(second), tree.getAreaPtr(second));
    QCOMPARE(stack.getAreaPtr(second)->getAreaName(), QString("Second"));
}

void TestParamsWidget::unknownIndexShowsBlankPageAndHasNoPage_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("invalid index") << "invalid";
    QTest::newRow("index of another model") << "foreign";
    QTest::newRow("before any build") << "unbuilt";
}

void TestParamsWidget::unknownIndexShowsBlankPageAndHasNoPage()
{
    QFETCH(QString, kind);
    TwoSections sections;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    QStandardItemModel other;
    other.appendRow(new QStandardItem("First"));

    QWidget *blank = stack.currentWidget();
    QModelIndex index;
    if (kind == "foreign")
        index = other.index(0, 0);
    if (kind != "unbuilt") {
        stack.setAreas(tree.createAreas(sections.root.get(), "A"));
        stack.activeteArea(tree.model()->index(0, 0));
        QVERIFY(stack.currentWidget() != blank);
    } else {
        index = other.index(0, 0);
    }

    stack.activeteArea(index);
    QCOMPARE(stack.currentWidget(), blank);
    QVERIFY(stack.getAreaPtr(index) == nullptr);
}

void TestParamsWidget::nullPageInMapShowsBlankPage()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem("Nothing"));
    QMap<QModelIndex, ParamsArea *> map;
    map.insert(model.index(0, 0), nullptr);
    ParamsWidget stack(nullptr);
    QWidget *blank = stack.currentWidget();
    stack.setAreas(&map);
    QCOMPARE(stack.count(), 1);
    stack.activeteArea(model.index(0, 0));
    QCOMPARE(stack.currentWidget(), blank);
}

void TestParamsWidget::newSearchPageReplacesOldOneWithoutShowingIt()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    QWidget *blank = stack.currentWidget();
    ParamsArea *page = searchPage(sections.all, "o");
    stack.setNewSearchArea(page);
    QCOMPARE(stack.currentWidget(), blank);
    QVERIFY(stack.indexOf(page) >= 0);
    stack.activeteSearchArea();
    QCOMPARE(stack.currentWidget(), static_cast<QWidget *>(page));
}

void TestParamsWidget::onlyLastOfSeveralSearchPagesStaysInStack()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    QList<QPointer<ParamsArea>> pages;
    for (const QString &text : {QString("t"), QString("tw"), QString("two")}) {
        pages << searchPage(sections.all, text);
        stack.setNewSearchArea(pages.last());
        stack.activeteSearchArea();
    }
    QCOMPARE(stack.count(), 2);
    QCOMPARE(stack.currentWidget(), static_cast<QWidget *>(pages.at(2)));
    for (int i = 0; i < 2; ++i) {
        // Taken out of the stack, not deleted: a hidden child with its editors.
        QVERIFY(!pages.at(i).isNull());
        QCOMPARE(stack.indexOf(pages.at(i)), -1);
        QCOMPARE(pages.at(i)->parent(), static_cast<QObject *>(&stack));
        QVERIFY(pages.at(i)->isHidden());
        QCOMPARE(pages.at(i)->findChildren<ParamSimple *>().size(), 1);
    }
}

void TestParamsWidget::activeteSearchAreaBeforeAnySearchLeavesCurrentPage()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sections.root.get(), "A"));
    stack.activeteArea(tree.model()->index(1, 0));
    QWidget *shown = stack.currentWidget();
    stack.activeteSearchArea();
    QCOMPARE(stack.currentWidget(), shown);
    QCOMPARE(stack.count(), 3);
}

void TestParamsWidget::searchPageOutlivesRebuildOfSections()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sections.root.get(), "A"));
    ParamsArea *page = searchPage(sections.all, "t");
    stack.setNewSearchArea(page);
    stack.setAreas(tree.createAreas(sections.root.get(), "B"));
    QVERIFY(stack.indexOf(page) >= 0);
    QCOMPARE(stack.count(), 1 + 1 + tree.getAreasPtrs()->size());
    stack.activeteSearchArea();
    QCOMPARE(stack.currentWidget(), static_cast<QWidget *>(page));
}

void TestParamsWidget::activeteEmptyAreaGoesBackToBlankPage()
{
    TwoSections sections;
    ParamsWidget stack(nullptr);
    QWidget *blank = stack.currentWidget();
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sections.root.get(), "A"));
    stack.activeteArea(tree.model()->index(0, 0));
    stack.activeteEmptyArea();
    QCOMPARE(stack.currentWidget(), blank);
}

QTEST_MAIN(TestParamsWidget)
#include "tst_paramswidget.moc"
