// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "sampletree.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItem>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// A section page with more editors than fit on a small page.
struct TallSection
{
    std::unique_ptr<ParameterComplex> root = fixture::root();
    ParameterComplex *section = fixture::section(root.get(), "tall", {"Tall"});
    TallSection()
    {
        for (int i = 0; i < 30; ++i)
            fixture::leaf(section, "flag" + std::to_string(i), {"Flag " + std::to_string(i)});
    }
};

QModelIndex rowOf(const ParamsTree &tree, const QString &text)
{
    const QModelIndexList hits = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                                     Qt::MatchExactly | Qt::MatchRecursive);
    return hits.isEmpty() ? QModelIndex() : hits.first();
}

// Leaves to search through: the first matches "alpha" by its key only, the
// second by its name only; the fourth has "alpha" in its documentation only.
struct SearchList
{
    std::unique_ptr<ParameterComplex> root = fixture::root();
    QList<ParameterSimple *> params;
    SearchList()
    {
        params << fixture::leaf(root.get(), "alpha_rate", {"Sampling Rate"})
               << fixture::leaf(root.get(), "beta", {"Alpha Beta"})
               << fixture::leaf(root.get(), "gamma", {"Gamma"})
               << fixture::leaf(root.get(), "DeltaKey", {"Other", 2, true, {}, "alpha in the text"});
    }
};

void scrollToBottom(ParamsArea *page)
{
    QScrollBar *bar = page->verticalScrollBar();
    bar->setValue(bar->maximum());
}

} // namespace

class TestParamsArea : public QObject
{
    Q_OBJECT

private slots:
    void typeCountsDirectChildrenWhateverTheirVisibility_data();
    void typeCountsDirectChildrenWhateverTheirVisibility();
    void sectionWithOnlySubsectionsHasBlankPageAndHeading();
    void sectionShowsItsVisibleParametersInSchemaOrder_data();
    void sectionShowsItsVisibleParametersInSchemaOrder();
    void hiddenDirectLeavesWithVisibleLeafDeeperGiveHeadingWithoutEditors();
    void childTleListIsEditedOnParentPageToo();
    void sectionPageIsOneColumnWithWideMargins();
    void tlePageHasOneEditorFillingThePage();
    void tlePageOfNullListStaysEmpty();
    void listPageKeepsGivenOrderWithoutVisibilityTest();
    void searchIgnoresCaseAndLooksAtKeyAndName_data();
    void searchIgnoresCaseAndLooksAtKeyAndName();
    void searchWithoutHitsIsEmptyPageUnderSearchResults();
    void refreshReachesEveryEditorAndEditsComeBack();
    void refreshReloadsEditorsBeforeScrollingToTop();
    void everyTreePageReturnsToTopAfterTreeRefresh();
    void editOnSearchPageDoesNotReachTheTree();
    void serviceChangeIsOnlyPassedOn();
};

void TestParamsArea::typeCountsDirectChildrenWhateverTheirVisibility_data()
{
    // Children: L a visible leaf, H a hidden leaf, C a section, T a TLE list.
    QTest::addColumn<QString>("children");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("hasContent");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<int>("editors");
    QTest::newRow("no children") << "" << int(ParamsArea::AreaEmpty) << false << "" << 0;
    QTest::newRow("leaves") << "LL" << int(ParamsArea::AreaParams) << true << "Section" << 2;
    QTest::newRow("hidden leaves") << "HH" << int(ParamsArea::AreaParams) << true << "Section" << 0;
    QTest::newRow("TLE list") << "T" << int(ParamsArea::AreaParams) << true << "Section" << 1;
    QTest::newRow("sections") << "CC" << int(ParamsArea::AreaSections) << false << "" << 0;
    QTest::newRow("both") << "CLC" << int(ParamsArea::AreaMixed) << true << "Section" << 1;
    QTest::newRow("hidden leaf and section") << "HC" << int(ParamsArea::AreaMixed) << true << "Section" << 0;
}

void TestParamsArea::typeCountsDirectChildrenWhateverTheirVisibility()
{
    QFETCH(QString, children);
    QFETCH(int, type);
    QFETCH(bool, hasContent);
    QFETCH(QString, heading);
    QFETCH(int, editors);

    auto root = fixture::root();
    ParameterComplex *section = fixture::section(root.get(), "section", {"Section"});
    int n = 0;
    for (const QChar c : children) {
        const std::string key = "child" + std::to_string(n++);
        if (c == 'L')
            fixture::leaf(section, key, {key});
        else if (c == 'H')
            fixture::leaf(section, key, {key, 2, false});
        else if (c == 'T')
            fixture::tles(section, key, {key});
        else
            fixture::leaf(fixture::section(section, key, {key}), key + "leaf", {key});
    }

    QStandardItem item("Section");
    ParamsArea page(section, &item, "A", nullptr);
    QCOMPARE(int(page.getType()), type);
    QCOMPARE(page.widget() != nullptr, hasContent);
    QCOMPARE(page.getAreaName(), heading);
    QCOMPARE(page.findChildren<ParamSimple *>().size(), editors);
    QVERIFY(page.getParameterPtr() == section);
    QVERIFY(page.getItemPtr() == &item);
}

void TestParamsArea::sectionWithOnlySubsectionsHasBlankPageAndHeading()
{
    SampleTree sample;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sample.root.get(), "A"));
    const QModelIndex groups = rowOf(tree, "Groups");
    QVERIFY(groups.isValid());
    ParamsArea *page = tree.getAreaPtr(groups);
    QVERIFY(page);
    QCOMPARE(page->getType(), ParamsArea::AreaSections);
    QVERIFY(page->widget() == nullptr);
    QVERIFY(page->getAreaName().isEmpty());
    QVERIFY(page->findChildren<ParamSimple *>().isEmpty());
}

void TestParamsArea::sectionShowsItsVisibleParametersInSchemaOrder_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("service A") << "A" << QStringList{"M one", "M two", "M three"};
    QTest::newRow("service B") << "B" << QStringList{"M one", "M two"};
}

void TestParamsArea::sectionShowsItsVisibleParametersInSchemaOrder()
{
    QFETCH(QString, service);
    QFETCH(QStringList, titles);
    SampleTree sample;
    QStandardItem item("Mixed");
    ParamsArea page(sample.mixed, &item, service, nullptr);
    QCOMPARE(page.getType(), ParamsArea::AreaMixed);
    QCOMPARE(page.getAreaName(), QString("Mixed"));
    // The subsection leaves no trace here: it has a page of its own.
    QCOMPARE(fixture::editorTitles(&page), titles);
}

void TestParamsArea::hiddenDirectLeavesWithVisibleLeafDeeperGiveHeadingWithoutEditors()
{
    auto root = fixture::root();
    ParameterComplex *outer = fixture::section(root.get(), "outer", {"Outer"});
    fixture::leaf(outer, "hidden", {"Hidden", 2, false});
    fixture::leaf(outer, "other", {"Other", 2, true, {"B"}});
    ParameterComplex *inner = fixture::section(outer, "inner", {"Inner"});
    fixture::leaf(inner, "shown", {"Shown"});

    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(root.get(), "A"));
    QCOMPARE(fixture::rowsOf(qobject_cast<QStandardItemModel *>(tree.model())), QString("Outer{Inner}"));
    ParamsArea *page = tree.getAreaPtr(rowOf(tree, "Outer"));
    QCOMPARE(page->getType(), ParamsArea::AreaMixed);
    QVERIFY(page->widget() != nullptr);
    QVERIFY(page->findChildren<ParamSimple *>().isEmpty());
    QCOMPARE(page->getAreaName(), QString("Outer"));
}

void TestParamsArea::childTleListIsEditedOnParentPageToo()
{
    SampleTree sample;
    QStandardItem item("Main");
    ParamsArea page(sample.main, &item, "A", nullptr);
    QCOMPARE(fixture::editorTitles(&page), (QStringList{"Alpha", "TLE sets"}));
}

void TestParamsArea::sectionPageIsOneColumnWithWideMargins()
{
    TallSection tall;
    QStandardItem item("Tall");
    ParamsArea page(tall.section, &item, "A", nullptr);
    QVERIFY(!page.widgetResizable());
    QVERIFY(page.widget());
    auto *layout = qobject_cast<QVBoxLayout *>(page.widget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(25, 25, 25, 25));
    QCOMPARE(layout->spacing(), 20);
    // One row per editor and no trailing stretch.
    QCOMPARE(layout->count(), 30);
    for (int i = 0; i < layout->count(); ++i) {
        QVERIFY(qobject_cast<ParamSimple *>(layout->itemAt(i)->widget()));
        QCOMPARE(layout->stretch(i), 0);
        QCOMPARE(layout->itemAt(i)->alignment(), Qt::Alignment());
    }
}

void TestParamsArea::tlePageHasOneEditorFillingThePage()
{
    SampleTree sample;
    QStandardItem item("TLE sets");
    ParamsArea page(sample.tles, &item, "A", nullptr);
    QCOMPARE(page.getType(), ParamsArea::AreaParams);
    QVERIFY(page.getItemPtr() == &item);
    QCOMPARE(page.getAreaName(), QString("TLE sets"));
    // No content widget: the editor sits in a grid on the page itself.
    QVERIFY(page.widget() == nullptr);
    auto *grid = qobject_cast<QGridLayout *>(page.layout());
    QVERIFY(grid);
    QCOMPARE(grid->count(), 1);
    QVERIFY(qobject_cast<ParamSimple *>(grid->itemAt(0)->widget()));

    // The page's section is a stand-alone node that only carries the name.
    ParameterComplex *carrier = page.getParameterPtr();
    QVERIFY(carrier);
    QVERIFY(carrier != static_cast<Parameter *>(sample.tles));
    QVERIFY(carrier->getParantPtr() == nullptr);
    QVERIFY(carrier->getChildrenPtrs().empty());
    QCOMPARE(carrier->getParameterKey(), std::string("tles"));
    QCOMPARE(carrier->getVisualParams().name_en, std::string("TLE sets"));
    QCOMPARE(carrier->getVisualParams().importance, 0);
}

void TestParamsArea::tlePageOfNullListStaysEmpty()
{
    QStandardItem item("Nothing");
    ParamsArea page(static_cast<ParameterListTLEs *>(nullptr), &item, "A", nullptr);
    QCOMPARE(page.getType(), ParamsArea::AreaParams);
    QVERIFY(page.getParameterPtr() == nullptr);
    QVERIFY(page.layout() == nullptr);
    QVERIFY(page.getAreaName().isEmpty());
}

void TestParamsArea::listPageKeepsGivenOrderWithoutVisibilityTest()
{
    auto root = fixture::root();
    ParameterSimple *first = fixture::leaf(root.get(), "first", {"First"});
    ParameterSimple *hidden = fixture::leaf(root.get(), "hidden", {"Hidden", 0, false});
    ParameterSimple *other = fixture::leaf(root.get(), "other", {"Other", 0, true, {"B"}});
    QStandardItem item("GENERAL");
    ParamsArea page(QList<ParameterSimple *>{other, hidden, first}, &item, "GENERAL", nullptr);
    QCOMPARE(page.getType(), ParamsArea::AreaParams);
    QCOMPARE(page.getAreaName(), QString("GENERAL"));
    QVERIFY(page.getItemPtr() == &item);
    QVERIFY(page.getParameterPtr() == nullptr);
    QCOMPARE(fixture::editorTitles(&page), (QStringList{"Other", "Hidden", "First"}));
    auto *layout = qobject_cast<QVBoxLayout *>(page.widget()->layout());
    QCOMPARE(layout->contentsMargins(), QMargins(25, 25, 25, 25));
    QCOMPARE(layout->spacing(), 20);
}

void TestParamsArea::searchIgnoresCaseAndLooksAtKeyAndName_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("hits");
    const QStringList alpha{"Sampling Rate", "Alpha Beta"};
    QTest::newRow("capitals") << "ALPHA" << alpha;
    QTest::newRow("small letters") << "alpha" << alpha;
    QTest::newRow("mixed case") << "aLpHa" << alpha;
    QTest::newRow("key only") << "deltakey" << QStringList{"Other"};
    QTest::newRow("key with underscore") << "A_R" << QStringList{"Sampling Rate"};
    QTest::newRow("name only") << "sampling" << QStringList{"Sampling Rate"};
    QTest::newRow("key and name") << "gamma" << QStringList{"Gamma"};
    QTest::newRow("documentation not searched") << "in the text" << QStringList{};
}

void TestParamsArea::searchIgnoresCaseAndLooksAtKeyAndName()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, hits);
    SearchList list;
    ParamsArea page(list.params, filter, "Search results", nullptr);
    QCOMPARE(page.getType(), ParamsArea::AreaParams);
    QCOMPARE(page.getAreaName(), QString("Search results"));
    QVERIFY(page.getItemPtr() == nullptr);
    QVERIFY(page.getParameterPtr() == nullptr);
    QCOMPARE(fixture::editorTitles(&page), hits);
}

void TestParamsArea::searchWithoutHitsIsEmptyPageUnderSearchResults()
{
    SearchList list;
    ParamsArea page(list.params, "nothing like this", "Search results", nullptr);
    QCOMPARE(page.getAreaName(), QString("Search results"));
    QVERIFY(page.widget() == nullptr);
    QVERIFY(page.findChildren<ParamSimple *>().isEmpty());
}

void TestParamsArea::refreshReachesEveryEditorAndEditsComeBack()
{
    SampleTree sample;
    QStandardItem item("Mixed");
    ParamsArea page(sample.mixed, &item, "A", nullptr);
    const QList<ParamSimple *> editors = page.findChildren<ParamSimple *>();
    QCOMPARE(editors.size(), 3);
    QList<QSignalSpy *> updates;
    for (ParamSimple *editor : editors)
        updates << new QSignalSpy(editor, &ParamSimple::sig_update);
    emit page.sig_valuesUpdate();
    for (QSignalSpy *spy : qAsConst(updates))
        QCOMPARE(spy->count(), 1);
    qDeleteAll(updates);

    QSignalSpy changed(&page, &ParamsArea::sig_parametersChenged);
    for (ParamSimple *editor : editors)
        emit editor->sig_chenged();
    QCOMPARE(changed.count(), 3);
}

void TestParamsArea::refreshReloadsEditorsBeforeScrollingToTop()
{
    TallSection tall;
    QStandardItem item("Tall");
    ParamsArea page(tall.section, &item, "A", nullptr);
    page.resize(300, 200);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    scrollToBottom(&page);
    const int bottom = page.verticalScrollBar()->value();
    QVERIFY(bottom > 0);

    QList<int> seenByEditors;
    for (ParamSimple *editor : page.findChildren<ParamSimple *>())
        connect(editor, &ParamSimple::sig_update, &page, [&]() {
            seenByEditors << page.verticalScrollBar()->value();
        });
    emit page.sig_valuesUpdate();
    QCOMPARE(seenByEditors.size(), 30);
    QCOMPARE(seenByEditors.last(), bottom);
    QCOMPARE(page.verticalScrollBar()->value(), 0);
}

void TestParamsArea::everyTreePageReturnsToTopAfterTreeRefresh()
{
    TallSection first;
    first.section = fixture::section(first.root.get(), "second", {"Second"});
    for (int i = 0; i < 30; ++i)
        fixture::leaf(first.section, "more" + std::to_string(i), {"More " + std::to_string(i)});

    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(first.root.get(), "A"));
    stack.resize(300, 200);
    stack.show();
    QVERIFY(QTest::qWaitForWindowExposed(&stack));

    QList<ParamsArea *> pages;
    for (const QString &name : {QString("Tall"), QString("Second")}) {
        stack.activeteArea(rowOf(tree, name));
        ParamsArea *page = tree.getAreaPtr(rowOf(tree, name));
        QCOMPARE(stack.currentWidget(), page);
        scrollToBottom(page);
        QVERIFY(page->verticalScrollBar()->value() > 0);
        pages << page;
    }
    // What the main window does after each tree selection.
    tree.selectItem(rowOf(tree, "Tall"));
    emit tree.sig_valuesUpdate();
    for (ParamsArea *page : qAsConst(pages))
        QCOMPARE(page->verticalScrollBar()->value(), 0);
}

void TestParamsArea::editOnSearchPageDoesNotReachTheTree()
{
    SampleTree sample;
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(sample.root.get(), "A"));
    QSignalSpy treeChanged(&tree, &ParamsTree::sig_parametersChenged);

    auto *search = new ParamsArea(QList<ParameterSimple *>{sample.g0}, "deep", "Search results", nullptr);
    stack.setNewSearchArea(search);
    QSignalSpy searchChanged(search, &ParamsArea::sig_parametersChenged);
    QSignalSpy searchRefreshed(search, &ParamsArea::sig_valuesUpdate);

    QCheckBox *box = search->findChild<QCheckBox *>();
    QVERIFY(box);
    box->click();
    QCOMPARE(sample.g0->getValue(), std::string("true"));
    QCOMPARE(searchChanged.count(), 1);
    // Nothing listens to the search page: the configuration does not count as modified.
    QCOMPARE(treeChanged.count(), 0);
    // Nor does the tree's refresh reach it.
    emit tree.sig_valuesUpdate();
    QCOMPARE(searchRefreshed.count(), 0);
}

void TestParamsArea::serviceChangeIsOnlyPassedOn()
{
    SampleTree sample;
    QStandardItem item("Mixed");
    ParamsArea page(sample.mixed, &item, "A", nullptr);
    QSignalSpy serviceChanged(&page, &ParamsArea::sig_serviceChenged);
    page.sl_serviceChenged("B");
    QCOMPARE(serviceChanged.count(), 1);
    QCOMPARE(serviceChanged.at(0).at(0).toString(), QString("B"));
    QCOMPARE(fixture::editorTitles(&page), (QStringList{"M one", "M two", "M three"}));
}

QTEST_MAIN(TestParamsArea)
#include "tst_paramsarea.moc"
