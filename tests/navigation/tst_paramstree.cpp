// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "sampletree.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

namespace {

// The tree and the stack as the main window holds them: the stack adopts
// the pages, so they go with it at the end of a test.
struct Built
{
    SampleTree sample;
    ParamsWidget stack{nullptr};
    ParamsTree tree{nullptr};

    void build(const QString &service) { stack.setAreas(tree.createAreas(sample.root.get(), service)); }
    QStandardItemModel *model() const { return qobject_cast<QStandardItemModel *>(tree.model()); }
    QModelIndex row(const QString &text) const
    {
        const QModelIndexList hits = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, text, 1,
                                                         Qt::MatchExactly | Qt::MatchRecursive);
        return hits.isEmpty() ? QModelIndex() : hits.first();
    }
    ParamsArea *page(const QString &rowText) const { return tree.getAreaPtr(row(rowText)); }
};

QCheckBox *checkBoxOf(const QWidget *page, const QString &title)
{
    for (ParamSimple *editor : page->findChildren<ParamSimple *>()) {
        if (editor->toolTip() == title)
            return editor->findChild<QCheckBox *>();
    }
    return nullptr;
}

void collectIndexes(const QAbstractItemModel *model, const QModelIndex &parent, QModelIndexList &out)
{
    for (int r = 0; r < model->rowCount(parent); ++r) {
        const QModelIndex index = model->index(r, 0, parent);
        out << index;
        collectIndexes(model, index, out);
    }
}

} // namespace

class TestParamsTree : public QObject
{
    Q_OBJECT

private slots:
    void viewIsReadOnlySingleRowSelectionWithoutHeader();
    void rowsFollowSchemaOrderWithGeneralFirst_data();
    void rowsFollowSchemaOrderWithGeneralFirst();
    void generalPageGathersImportanceZeroLeavesDepthFirst_data();
    void generalPageGathersImportanceZeroLeavesDepthFirst();
    void generalIsFirstItemAndFirstIndex();
    void noGeneralRowWithoutImportanceZeroLeaf();
    void sectionWithAllLeavesHiddenHasNoRow();
    void invisibleSectionHasNoRowDespiteVisibleLeaves();
    void tleListHasRowInSchemaOrderAndNeverOnGeneral();
    void sectionWithoutNameShowsEmptyRow();
    void mapHoldsOnePagePerRowUnderItsIndex();
    void everyRowExpandedAndNothingSelectedAfterBuild();
    void importanceZeroParameterShowsEditOnBothPages();
    void secondBuildLeavesNoPageOfFirstBuild();
    void rootWithoutSectionsOrGeneralLeavesGivesEmptyTree();
    void nullRootGivesNullMapAndNoModel();
    void selectItemEmitsClickedBeforeSelecting();
    void viewSignalsAreReemittedAsItemSelected_data();
    void viewSignalsAreReemittedAsItemSelected();
    void valuesUpdateReachesEveryPage();
    void pageEditsReachTheTree();
    void currentIndexAndAreaNameFollowSelection();
    void unselectItemsClearsSelection();
};

void TestParamsTree::viewIsReadOnlySingleRowSelectionWithoutHeader()
{
    ParamsTree tree(nullptr);
    QCOMPARE(tree.editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(tree.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(tree.selectionMode(), QAbstractItemView::SingleSelection);
    QVERIFY(tree.alternatingRowColors());
    QVERIFY(tree.header()->isHidden());
    QVERIFY(tree.header()->stretchLastSection());
    QCOMPARE(tree.header()->defaultAlignment(), Qt::Alignment(Qt::AlignCenter));
    QVERIFY(tree.getAreasPtrs() == nullptr);
    QVERIFY(!tree.getFirstIndexItem().isValid());
    QVERIFY(!tree.getCurrentIndex().isValid());
}

void TestParamsTree::rowsFollowSchemaOrderWithGeneralFirst_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QString>("rows");
    QTest::newRow("service A")
        << "A"
        << "GENERAL|Main{Deep{Deeper}|TLE sets|After}|Groups{Group one|Group two}|Mixed{Sub}";
    QTest::newRow("service B") << "B"
                               << "GENERAL|Main{Deep{Deeper}|TLE sets|After}|Hidden leaves{Inner}|Only B"
                                  "|Groups{Group one|Group two}|Mixed{Sub}";
    QTest::newRow("no service")
        << ""
        << "GENERAL|Main{Deep{Deeper}|TLE sets|After}|Groups{Group one|Group two}|Mixed{Sub}";
}

void TestParamsTree::rowsFollowSchemaOrderWithGeneralFirst()
{
    QFETCH(QString, service);
    QFETCH(QString, rows);
    Built b;
    b.build(service);
    QCOMPARE(fixture::rowsOf(b.model()), rows);
}

void TestParamsTree::generalPageGathersImportanceZeroLeavesDepthFirst_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("service A") << "A" << QStringList{"Version", "Deep zero", "M two"};
    QTest::newRow("service B") << "B" << QStringList{"Version", "Deep zero", "B zero", "M two"};
}

void TestParamsTree::generalPageGathersImportanceZeroLeavesDepthFirst()
{
    QFETCH(QString, service);
    QFETCH(QStringList, titles);
    Built b;
    b.build(service);
    ParamsArea *general = b.page("GENERAL");
    QVERIFY(general);
    QCOMPARE(general->getAreaName(), QString("GENERAL"));
    QCOMPARE(general->getType(), ParamsArea::AreaParams);
    QVERIFY(general->getParameterPtr() == nullptr);
    QCOMPARE(fixture::editorTitles(general), titles);
    // Gathering moves nothing: the deep leaf still stands on its own section's page.
    QCOMPARE(fixture::editorTitles(b.page("Deeper")), QStringList{"Deep zero"});
}

void TestParamsTree::generalIsFirstItemAndFirstIndex()
{
    Built b;
    b.build("A");
    QCOMPARE(b.tree.getFirstIndexItem(), b.row("GENERAL"));
    QCOMPARE(b.tree.getFirstIndexItem().row(), 0);
    QVERIFY(!b.tree.getFirstIndexItem().parent().isValid());
}

void TestParamsTree::noGeneralRowWithoutImportanceZeroLeaf()
{
    auto root = fixture::root();
    fixture::leaf(root.get(), "top", {"Top", 1});
    ParameterComplex *first = fixture::section(root.get(), "first", {"First"});
    fixture::leaf(first, "f", {"Eff", 3});
    // Importance 0, but hidden: it does not make a general page.
    fixture::leaf(first, "hidden", {"Hidden", 0, false});
    ParameterComplex *second = fixture::section(root.get(), "second", {"Second"});
    fixture::leaf(second, "s", {"Ess"});
    fixture::tles(second, "t", {"Sets", 0});

    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(root.get(), "A"));
    QCOMPARE(fixture::rowsOf(qobject_cast<QStandardItemModel *>(tree.model())),
             QString("First|Second{Sets}"));
    const QModelIndex firstIndex = tree.getFirstIndexItem();
    QVERIFY(firstIndex.isValid());
    QCOMPARE(firstIndex.data().toString(), QString("First"));
    QCOMPARE(tree.getAreaPtr(firstIndex)->getAreaName(), QString("First"));
}

void TestParamsTree::sectionWithAllLeavesHiddenHasNoRow()
{
    Built b;
    b.build("A");
    QVERIFY(!b.row("Hidden leaves").isValid());
    // Its subsection has a leaf for another service only, and no row either.
    QVERIFY(!b.row("Inner").isValid());
    for (ParamsArea *page : *b.tree.getAreasPtrs())
        QVERIFY(page->getParameterPtr() != b.sample.hiddenLeaves);
}

void TestParamsTree::invisibleSectionHasNoRowDespiteVisibleLeaves()
{
    Built b;
    b.build("A");
    QVERIFY(!b.row("Invisible").isValid());
    QVERIFY(!b.row("Shown").isValid());
    QVERIFY(!fixture::editorTitles(b.page("GENERAL")).contains("Invisible zero"));
}

void TestParamsTree::tleListHasRowInSchemaOrderAndNeverOnGeneral()
{
    Built b;
    b.build("A");
    const QModelIndex main = b.row("Main");
    QCOMPARE(b.model()->rowCount(main), 3);
    QCOMPARE(b.model()->index(1, 0, main).data().toString(), QString("TLE sets"));
    QCOMPARE(b.model()->rowCount(b.model()->index(1, 0, main)), 0);

    ParamsArea *tlePage = b.page("TLE sets");
    QVERIFY(tlePage);
    QCOMPARE(tlePage->getType(), ParamsArea::AreaParams);
    QCOMPARE(tlePage->getAreaName(), QString("TLE sets"));
    QCOMPARE(tlePage->findChildren<ParamSimple *>().size(), 1);
    QVERIFY(!fixture::editorTitles(b.page("GENERAL")).contains("TLE sets"));
}

void TestParamsTree::sectionWithoutNameShowsEmptyRow()
{
    auto root = fixture::root();
    ParameterComplex *nameless = fixture::section(root.get(), "nameless", {""});
    fixture::leaf(nameless, "n", {"En"});
    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    stack.setAreas(tree.createAreas(root.get(), "A"));
    QCOMPARE(tree.model()->rowCount(), 1);
    QCOMPARE(tree.model()->index(0, 0).data().toString(), QString(""));
    QCOMPARE(tree.getAreaPtr(tree.model()->index(0, 0))->getAreaName(), QString(""));
}

void TestParamsTree::mapHoldsOnePagePerRowUnderItsIndex()
{
    Built b;
    b.build("A");
    QModelIndexList indexes;
    collectIndexes(b.tree.model(), QModelIndex(), indexes);
    QMap<QModelIndex, ParamsArea *> *map = b.tree.getAreasPtrs();
    QCOMPARE(map->size(), indexes.size());
    for (const QModelIndex &index : indexes) {
        ParamsArea *page = map->value(index, nullptr);
        QVERIFY2(page, qPrintable(index.data().toString()));
        QCOMPARE(page->getItemPtr()->index(), index);
        QCOMPARE(b.stack.indexOf(page) >= 0, true);
    }
}

void TestParamsTree::everyRowExpandedAndNothingSelectedAfterBuild()
{
    Built b;
    b.build("A");
    QModelIndexList indexes;
    collectIndexes(b.tree.model(), QModelIndex(), indexes);
    for (const QModelIndex &index : indexes) {
        if (b.tree.model()->rowCount(index) > 0)
            QVERIFY2(b.tree.isExpanded(index), qPrintable(index.data().toString()));
    }
    QVERIFY(b.tree.selectionModel()->selectedIndexes().isEmpty());
    QVERIFY(!b.tree.getCurrentIndex().isValid());
    QVERIFY(b.tree.getCurrentAreaName().isNull());
}

void TestParamsTree::importanceZeroParameterShowsEditOnBothPages()
{
    Built b;
    b.build("A");
    QCheckBox *onGeneral = checkBoxOf(b.page("GENERAL"), "Deep zero");
    QCheckBox *onSection = checkBoxOf(b.page("Deeper"), "Deep zero");
    QVERIFY(onGeneral && onSection);
    QVERIFY(!onGeneral->isChecked() && !onSection->isChecked());
    QSignalSpy changed(&b.tree, &ParamsTree::sig_parametersChenged);

    onSection->click();
    QCOMPARE(b.sample.g0->getValue(), std::string("true"));
    QCOMPARE(changed.count(), 1);
    // The refresh that follows every tree selection brings the other editor along.
    b.tree.selectItem(b.row("GENERAL"));
    emit b.tree.sig_valuesUpdate();
    QVERIFY(onGeneral->isChecked());

    onGeneral->click();
    QCOMPARE(b.sample.g0->getValue(), std::string("false"));
    QCOMPARE(changed.count(), 2);
    emit b.tree.sig_valuesUpdate();
    QVERIFY(!onSection->isChecked());
}

void TestParamsTree::secondBuildLeavesNoPageOfFirstBuild()
{
    Built b;
    b.build("A");
    QList<QPointer<ParamsArea>> firstPages;
    for (ParamsArea *page : *b.tree.getAreasPtrs())
        firstPages << page;
    QVERIFY(!firstPages.isEmpty());

    b.build("B");
    for (const QPointer<ParamsArea> &page : qAsConst(firstPages))
        QVERIFY(page.isNull());
    QMap<QModelIndex, ParamsArea *> *map = b.tree.getAreasPtrs();
    // The blank page and the pages of the second build, nothing more.
    QCOMPARE(b.stack.count(), 1 + map->size());
    for (ParamsArea *page : *map)
        QVERIFY(b.stack.indexOf(page) >= 0);
    QVERIFY(b.row("Only B").isValid());
}

void TestParamsTree::rootWithoutSectionsOrGeneralLeavesGivesEmptyTree()
{
    auto root = fixture::root();
    fixture::leaf(root.get(), "plain", {"Plain", 1});
    ParameterComplex *hidden = fixture::section(root.get(), "hidden", {"Hidden", 2, false});
    fixture::leaf(hidden, "zero", {"Zero", 0});
    ParameterComplex *empty = fixture::section(root.get(), "empty", {"Empty"});
    fixture::leaf(empty, "other", {"Other", 0, true, {"B"}});

    ParamsWidget stack(nullptr);
    ParamsTree tree(nullptr);
    QMap<QModelIndex, ParamsArea *> *map = tree.createAreas(root.get(), "A");
    QVERIFY(map != nullptr);
    QVERIFY(map->isEmpty());
    stack.setAreas(map);
    QCOMPARE(tree.model()->rowCount(), 0);
    QVERIFY(!tree.getFirstIndexItem().isValid());
    QCOMPARE(stack.count(), 1);
}

void TestParamsTree::nullRootGivesNullMapAndNoModel()
{
    Built b;
    b.build("A");
    QPointer<ParamsArea> oldPage = b.page("Main");
    QVERIFY(b.tree.createAreas(nullptr, "A") == nullptr);
    QVERIFY(b.tree.getAreasPtrs() == nullptr);
    QVERIFY(oldPage.isNull());
    QVERIFY(b.tree.model() == nullptr);
    QVERIFY(!b.tree.getFirstIndexItem().isValid());
    b.tree.unselectItems(); // harmless without a build
}

void TestParamsTree::selectItemEmitsClickedBeforeSelecting()
{
    Built b;
    b.build("A");
    const QModelIndex mixed = b.row("Mixed");
    QList<bool> selectedAtClick;
    const QMetaObject::Connection watch =
        connect(&b.tree, &QAbstractItemView::clicked, &b.tree, [&](const QModelIndex &index) {
            selectedAtClick << (index == mixed) << b.tree.selectionModel()->isSelected(index);
        });
    QSignalSpy selected(&b.tree, &ParamsTree::sig_itemSelected);

    b.tree.selectItem(mixed);
    QCOMPARE(selectedAtClick, (QList<bool>{true, false}));
    disconnect(watch);
    QVERIFY(b.tree.selectionModel()->isRowSelected(mixed.row(), mixed.parent()));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.at(0).at(0).value<QModelIndex>(), mixed);

    b.tree.selectFirstItem();
    QCOMPARE(b.tree.getCurrentIndex(), b.row("GENERAL"));
    QCOMPARE(selected.count(), 2);
}

void TestParamsTree::viewSignalsAreReemittedAsItemSelected_data()
{
    QTest::addColumn<QString>("signal");
    QTest::newRow("clicked") << "clicked";
    QTest::newRow("activated") << "activated";
    QTest::newRow("doubleClicked") << "doubleClicked";
    QTest::newRow("entered") << "entered";
}

void TestParamsTree::viewSignalsAreReemittedAsItemSelected()
{
    QFETCH(QString, signal);
    Built b;
    b.build("A");
    const QModelIndex groupTwo = b.row("Group two");
    QSignalSpy selected(&b.tree, &ParamsTree::sig_itemSelected);
    QVERIFY(QMetaObject::invokeMethod(&b.tree, qPrintable(signal), Qt::DirectConnection,
                                      Q_ARG(QModelIndex, groupTwo)));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.at(0).at(0).value<QModelIndex>(), groupTwo);
}

void TestParamsTree::valuesUpdateReachesEveryPage()
{
    Built b;
    b.build("A");
    QList<QSignalSpy *> spies;
    for (ParamsArea *page : *b.tree.getAreasPtrs())
        spies << new QSignalSpy(page, &ParamsArea::sig_valuesUpdate);
    emit b.tree.sig_valuesUpdate();
    for (QSignalSpy *spy : qAsConst(spies))
        QCOMPARE(spy->count(), 1);
    qDeleteAll(spies);
}

void TestParamsTree::pageEditsReachTheTree()
{
    Built b;
    b.build("A");
    QSignalSpy changed(&b.tree, &ParamsTree::sig_parametersChenged);
    int expected = 0;
    for (ParamsArea *page : *b.tree.getAreasPtrs()) {
        emit page->sig_parametersChenged();
        QCOMPARE(changed.count(), ++expected);
    }
}

void TestParamsTree::currentIndexAndAreaNameFollowSelection()
{
    Built b;
    b.build("A");
    b.tree.selectItem(b.row("Deeper"));
    QCOMPARE(b.tree.getCurrentIndex(), b.row("Deeper"));
    QCOMPARE(b.tree.getCurrentAreaName(), QString("Deeper"));
    // A section of sections has a page without a name.
    b.tree.selectItem(b.row("Groups"));
    QCOMPARE(b.tree.getCurrentAreaName(), QString(""));
}

void TestParamsTree::unselectItemsClearsSelection()
{
    Built b;
    b.build("A");
    b.stack.activeteArea(b.row("Mixed"));
    b.tree.selectItem(b.row("Mixed"));
    b.tree.unselectItems();
    QVERIFY(b.tree.selectionModel()->selectedIndexes().isEmpty());
    QVERIFY(!b.tree.getCurrentIndex().isValid());
    // The page on screen is the stack's business and stays.
    QCOMPARE(b.stack.currentWidget(), b.page("Mixed"));
}

QTEST_MAIN(TestParamsTree)
#include "tst_paramstree.moc"
