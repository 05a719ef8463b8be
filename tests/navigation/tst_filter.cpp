// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/filter.h"
#include "navigationharness.h"
#include "sampletree.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace {

// The user types one letter and takes it back again.
void typeAndErase(Filter *filter)
{
    QTest::keyClicks(filter, "x");
    QTest::keyClick(filter, Qt::Key_Backspace);
}

// Whether the box stands ready to swallow the next emptying: it does when an
// emptying by hand gives no reset. The probe uses up the mark.
bool marksForcedClear(Filter *filter)
{
    QSignalSpy reset(filter, &Filter::sig_reset);
    typeAndErase(filter);
    return reset.isEmpty();
}

// The harness opened on the sample tree, the search list filled with its
// leaves of the importance-0 kind and a few more.
struct Opened
{
    SampleTree sample;
    NavigationHarness nav;
    Opened()
    {
        nav.searchList << sample.version << sample.g0;
        nav.window.show();
        nav.open(sample.root.get(), "A");
    }
    QWidget *page(const QString &row) const { return nav.tree->getAreaPtr(nav.row(row)); }
};

} // namespace

class TestFilter : public QObject
{
    Q_OBJECT

private slots:
    void showsSearchIconPlaceholderAndClearButton();
    void everyNonEmptyTextSearchesAtOnce();
    void freshBoxResetsOnFirstEmptying();
    void treeSelectionOnEmptyBoxOnlyMarksIt();
    void treeSelectionDuringSearchWithMarkClearsWithoutReset();
    void treeSelectionDuringSearchWithoutMarkResets();
    void emptyingByHandWithMarkOnlyDropsIt();
    void clearButtonActsLikeEmptyingByHand();
    void pastingOverSelectionGivesOneSearch();

    void choosingRowDuringSearchShowsChosenPageWithoutNewSearch();
    void choosingRowAfterHandEmptiedSearchShowsFirstSection();
    void emptiedBoxKeepsSearchPageOnScreen();
    void emptyingByHandReturnsToFirstSectionEverySecondTime();
    void typingThreeLettersMakesThreeSearchPages();
    void closeAndOpenLeaveSearchTextToSelectionChain();
};

void TestFilter::showsSearchIconPlaceholderAndClearButton()
{
    Filter filter(nullptr);
    QCOMPARE(filter.placeholderText(), QString("Search..."));
    QVERIFY(filter.isClearButtonEnabled());
    QVERIFY(QFile::exists(":/graphics/search.png"));
    bool hasIcon = false;
    for (QAction *action : filter.actions())
        hasIcon = hasIcon || !action->icon().isNull();
    QVERIFY(hasIcon);
}

void TestFilter::everyNonEmptyTextSearchesAtOnce()
{
    Filter filter(nullptr);
    QSignalSpy search(&filter, &Filter::sig_searchQuery);
    QSignalSpy reset(&filter, &Filter::sig_reset);
    QTest::keyClicks(&filter, "abc");
    QCOMPARE(search.count(), 3);
    QCOMPARE(search.at(0).at(0).toString(), QString("a"));
    QCOMPARE(search.at(1).at(0).toString(), QString("ab"));
    QCOMPARE(search.at(2).at(0).toString(), QString("abc"));
    QVERIFY(reset.isEmpty());
}

void TestFilter::freshBoxResetsOnFirstEmptying()
{
    Filter filter(nullptr);
    QSignalSpy reset(&filter, &Filter::sig_reset);
    typeAndErase(&filter);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(reset.at(0).at(0).toBool(), true);
}

void TestFilter::treeSelectionOnEmptyBoxOnlyMarksIt()
{
    Filter filter(nullptr);
    QSignalSpy search(&filter, &Filter::sig_searchQuery);
    QSignalSpy reset(&filter, &Filter::sig_reset);
    QSignalSpy text(&filter, &QLineEdit::textChanged);
    filter.sl_textForcedCleared();
    QVERIFY(text.isEmpty());
    QVERIFY(search.isEmpty());
    QVERIFY(reset.isEmpty());
    QVERIFY(marksForcedClear(&filter));
}

void TestFilter::treeSelectionDuringSearchWithMarkClearsWithoutReset()
{
    Filter filter(nullptr);
    filter.sl_textForcedCleared();
    QTest::keyClicks(&filter, "ab");
    QSignalSpy search(&filter, &Filter::sig_searchQuery);
    QSignalSpy reset(&filter, &Filter::sig_reset);

    filter.sl_textForcedCleared();
    QVERIFY(filter.text().isEmpty());
    QVERIFY(reset.isEmpty());
    QVERIFY(search.isEmpty());
    // The mark fell while the box emptied and was set again afterwards.
    QVERIFY(marksForcedClear(&filter));
}

void TestFilter::treeSelectionDuringSearchWithoutMarkResets()
{
    Filter filter(nullptr);
    filter.sl_textForcedCleared();
    typeAndErase(&filter); // emptied by hand once: the mark is gone
    QTest::keyClicks(&filter, "ab");
    QSignalSpy reset(&filter, &Filter::sig_reset);

    filter.sl_textForcedCleared();
    QVERIFY(filter.text().isEmpty());
    QCOMPARE(reset.count(), 1);
    QCOMPARE(reset.at(0).at(0).toBool(), true);
    // Set after the text was cleared, so the mark stands at the end.
    QVERIFY(marksForcedClear(&filter));
}

void TestFilter::emptyingByHandWithMarkOnlyDropsIt()
{
    Filter filter(nullptr);
    filter.sl_textForcedCleared();
    QSignalSpy reset(&filter, &Filter::sig_reset);
    typeAndErase(&filter);
    QVERIFY(reset.isEmpty());
    typeAndErase(&filter);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(reset.at(0).at(0).toBool(), true);
}

void TestFilter::clearButtonActsLikeEmptyingByHand()
{
    Filter filter(nullptr);
    QTest::keyClicks(&filter, "abc");
    QAction *clearAction = filter.findChild<QAction *>("_q_qlineeditclearaction");
    QVERIFY(clearAction);
    QToolButton *clear = nullptr;
    for (QToolButton *button : filter.findChildren<QToolButton *>()) {
        if (button->defaultAction() == clearAction)
            clear = button;
    }
    QVERIFY(clear);
    QSignalSpy search(&filter, &Filter::sig_searchQuery);
    QSignalSpy reset(&filter, &Filter::sig_reset);
    clear->click();
    QVERIFY(filter.text().isEmpty());
    QVERIFY(search.isEmpty());
    QCOMPARE(reset.count(), 1);
}

void TestFilter::pastingOverSelectionGivesOneSearch()
{
    Filter filter(nullptr);
    QTest::keyClicks(&filter, "abc");
    filter.selectAll();
    QApplication::clipboard()->setText("rate");
    QSignalSpy search(&filter, &Filter::sig_searchQuery);
    QSignalSpy reset(&filter, &Filter::sig_reset);
    filter.paste();
    QCOMPARE(filter.text(), QString("rate"));
    QCOMPARE(search.count(), 1);
    QCOMPARE(search.at(0).at(0).toString(), QString("rate"));
    QVERIFY(reset.isEmpty());
}

void TestFilter::choosingRowDuringSearchShowsChosenPageWithoutNewSearch()
{
    Opened o;
    QCOMPARE(o.nav.shown(), o.page("GENERAL"));
    QTest::keyClicks(o.nav.filter, "de");
    QCOMPARE(o.nav.shown(), static_cast<QWidget *>(o.nav.searchPages.last()));
    QCOMPARE(o.nav.title->text(), QString("Search results"));
    QSignalSpy search(o.nav.filter, &Filter::sig_searchQuery);
    QSignalSpy reset(o.nav.filter, &Filter::sig_reset);

    o.nav.tree->selectItem(o.nav.row("Mixed"));
    QVERIFY(o.nav.filter->text().isEmpty());
    QCOMPARE(o.nav.shown(), o.page("Mixed"));
    QCOMPARE(o.nav.title->text(), QString("Mixed"));
    QVERIFY(search.isEmpty());
    QVERIFY(reset.isEmpty());
}

void TestFilter::choosingRowAfterHandEmptiedSearchShowsFirstSection()
{
    Opened o;
    typeAndErase(o.nav.filter); // the mark of the opening is used up
    QTest::keyClicks(o.nav.filter, "de");
    QSignalSpy reset(o.nav.filter, &Filter::sig_reset);

    o.nav.tree->selectItem(o.nav.row("Mixed"));
    QCOMPARE(reset.count(), 1);
    // The reset selected the first row on the way, and that wins.
    QVERIFY(o.nav.filter->text().isEmpty());
    QCOMPARE(o.nav.shown(), o.page("GENERAL"));
    QCOMPARE(o.nav.title->text(), QString("GENERAL"));
    QVERIFY(marksForcedClear(o.nav.filter));
}

void TestFilter::emptiedBoxKeepsSearchPageOnScreen()
{
    Opened o;
    QTest::keyClicks(o.nav.filter, "d");
    QWidget *results = o.nav.shown();
    QSignalSpy reset(o.nav.filter, &Filter::sig_reset);
    QTest::keyClick(o.nav.filter, Qt::Key_Backspace);
    QVERIFY(reset.isEmpty());
    QCOMPARE(o.nav.shown(), results);
    QCOMPARE(o.nav.title->text(), QString("Search results"));
}

void TestFilter::emptyingByHandReturnsToFirstSectionEverySecondTime()
{
    Opened o;
    o.nav.tree->selectItem(o.nav.row("Mixed"));
    QSignalSpy reset(o.nav.filter, &Filter::sig_reset);
    QList<bool> backToFirst;
    for (int round = 0; round < 4; ++round) {
        QTest::keyClicks(o.nav.filter, "d");
        QTest::keyClick(o.nav.filter, Qt::Key_Backspace);
        backToFirst << (o.nav.shown() == o.page("GENERAL"));
    }
    QCOMPARE(backToFirst, (QList<bool>{false, true, false, true}));
    QCOMPARE(reset.count(), 2);
}

void TestFilter::typingThreeLettersMakesThreeSearchPages()
{
    Opened o;
    const int before = o.nav.stack->count();
    QTest::keyClicks(o.nav.filter, "dee");
    QCOMPARE(o.nav.searchPages.size(), 3);
    QCOMPARE(o.nav.stack->count(), before + 1);
    QCOMPARE(o.nav.stack->indexOf(o.nav.searchPages.at(0)), -1);
    QCOMPARE(o.nav.stack->indexOf(o.nav.searchPages.at(1)), -1);
    QCOMPARE(o.nav.shown(), static_cast<QWidget *>(o.nav.searchPages.at(2)));
    QCOMPARE(fixture::editorTitles(o.nav.searchPages.at(2)), QStringList{"Deep zero"});
    // Searching leaves no row selected.
    QVERIFY(!o.nav.tree->getCurrentIndex().isValid());
}

void TestFilter::closeAndOpenLeaveSearchTextToSelectionChain()
{
    Opened o;
    QTest::keyClicks(o.nav.filter, "ve");
    o.nav.close();
    QCOMPARE(o.nav.filter->text(), QString("ve"));
    QVERIFY(o.nav.title->text().isEmpty());
    QVERIFY(!qobject_cast<ParamsArea *>(o.nav.shown()));

    o.nav.stack->setAreas(o.nav.tree->createAreas(o.sample.root.get(), "B"));
    emit o.nav.tree->sig_valuesUpdate();
    QCOMPARE(o.nav.filter->text(), QString("ve"));

    QSignalSpy reset(o.nav.filter, &Filter::sig_reset);
    o.nav.resetWidgets(true);
    QVERIFY(o.nav.filter->text().isEmpty());
    QVERIFY(reset.isEmpty());
    QCOMPARE(o.nav.shown(), o.page("GENERAL"));
}

QTEST_MAIN(TestFilter)
#include "tst_filter.moc"
