// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The page of search results, the flat list of parameters it draws on, and
// the about box.

#include "managertestkit.h"

#include "app/manager.h"
#include "editors/paramsimple.h"
#include "model/parameter.h"
#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>

using namespace ManagerTest;

namespace {

QStringList _editorTitles(const ParamsArea *page)
{
    QStringList titles;
    for (const ParamSimple *editor : page->findChildren<ParamSimple *>())
        titles << editor->toolTip();
    return titles;
}

QSpinBox *_spinBox(const ParamsArea *page)
{
    const QList<QSpinBox *> boxes = page->findChildren<QSpinBox *>();
    return boxes.size() == 1 ? boxes.first() : nullptr;
}

} // namespace

class TestManagerSearch : public ManagerFixture
{
    Q_OBJECT

public:
    TestManagerSearch() : ManagerFixture(true) {}

private slots:
    void searchListHoldsUnrestrictedLeavesAndLists();
    void eachTypedCharacterGivesFreshResultsPage();
    void resultsPagesPileUpAndAreNeverRefreshed();
    void editOnResultsPageLeavesNoMarkAndCloseAsksNothing();
    void searchWithoutMatchGivesEmptyPage();
    void searchFindsNoServiceRestrictedParameter_data();
    void searchFindsNoServiceRestrictedParameter();
    void searchNeverFindsTleList();
    void aboutBoxIsAvailableInAllStates_data();
    void aboutBoxIsAvailableInAllStates();

private:
    void _open(const QString &fixtureName);

};

void TestManagerSearch::_open(const QString &fixtureName)
{
    Modals modals;
    modals.choose(copyInto(fixture(fixtureName), _dir->path()));
    _window->actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
}

void TestManagerSearch::searchListHoldsUnrestrictedLeavesAndLists()
{
    QStringList keys;
    for (const ParameterSimple *parameter : _manager->getSimpleParamsList())
        keys << QString::fromStdString(parameter->getParameterKey());
    // Not Version and Service (hidden), AlphaMode and BetaOptions (one
    // service only) nor Satellites (a TLE list).
    QCOMPARE(keys,
        QStringList(
            { "Enabled", "StationTitle", "Retries", "NewFeature", "Host", "Timeout", "Ports" }));
}

void TestManagerSearch::eachTypedCharacterGivesFreshResultsPage()
{
    _open(QStringLiteral("alpha-current.conf"));
    QTest::keyClicks(_window->filter, QStringLiteral("hos"));

    const QList<ParamsArea *> results = _window->searchPages();
    QCOMPARE(results.size(), 3);
    ParamsArea *last = _window->currentPage();
    QVERIFY(results.contains(last));
    for (ParamsArea *page : results)
        QCOMPARE(_window->pages->indexOf(page) >= 0, page == last);
    QCOMPARE(_window->headingText(), QStringLiteral("Search results"));
    QCOMPARE(_editorTitles(last), QStringList({ "Host name" }));
    QVERIFY(!_window->tree->getCurrentIndex().isValid());
}

void TestManagerSearch::resultsPagesPileUpAndAreNeverRefreshed()
{
    _open(QStringLiteral("alpha-current.conf"));
    QTest::keyClicks(_window->filter, QStringLiteral("retr"));
    ParamsArea *results = _window->currentPage();
    QCOMPARE(_editorTitles(results), QStringList({ "Retries" }));
    QSpinBox *found = _spinBox(results);
    QVERIFY(found);
    QCOMPARE(found->value(), 2);

    QSignalSpy resultsRefreshed(results, &ParamsArea::sig_valuesUpdate);
    QVERIFY(_window->parameter(QStringLiteral("Station/Retries"))->setValue("9"));
    emit _manager->sig_configOpened();
    QCOMPARE(resultsRefreshed.count(), 0);
    QCOMPARE(found->value(), 2);

    QVERIFY(_window->selectRow(QStringLiteral("Station")));
    QCOMPARE(_window->filter->text(), QString());
    QSpinBox *onSection = _spinBox(_window->currentPage());
    QVERIFY(onSection);
    QCOMPARE(onSection->value(), 9);
    QCOMPARE(found->value(), 2);
    // The replaced pages are still there, out of the stack.
    QCOMPARE(_window->searchPages().size(), 4);
}

void TestManagerSearch::editOnResultsPageLeavesNoMarkAndCloseAsksNothing()
{
    _open(QStringLiteral("alpha-current.conf"));
    const QString path = _manager->getConfigPath();
    QTest::keyClicks(_window->filter, QStringLiteral("enab"));
    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    QVERIFY(enabled);
    QVERIFY(_window->searchPages().contains(_window->currentPage()));
    clickCheckBox(enabled);

    QCOMPARE(
        _window->parameter(QStringLiteral("Station/Enabled"))->getValue(), std::string("true"));
    QVERIFY(_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), caption(path, false));

    Modals modals;
    _window->actClose->trigger();
    VERIFY_MODALS_DONE(modals);
    QVERIFY(modals.seen().isEmpty());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/Enabled")), QStringLiteral("false"));
}

void TestManagerSearch::searchWithoutMatchGivesEmptyPage()
{
    _open(QStringLiteral("alpha-current.conf"));
    QTest::keyClicks(_window->filter, QStringLiteral("zq"));
    ParamsArea *results = _window->currentPage();
    QVERIFY(results);
    QCOMPARE(results->getAreaName(), QStringLiteral("Search results"));
    QVERIFY(results->findChildren<ParamSimple *>().isEmpty());
    QCOMPARE(_window->headingText(), QStringLiteral("Search results"));
}

void TestManagerSearch::searchFindsNoServiceRestrictedParameter_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("pageRow");
    QTest::addColumn<QString>("editorTitle");
    QTest::addColumn<QString>("query");

    QTest::newRow("ALPHA only, by key") << "alpha-current.conf"
                                        << "Station"
                                        << "Alpha mode"
                                        << "alphamode";
    QTest::newRow("ALPHA only, by name") << "alpha-current.conf"
                                         << "Station"
                                         << "Alpha mode"
                                         << "Alpha mode";
    QTest::newRow("section of BETA only") << "beta-current.conf"
                                          << "Beta options"
                                          << "Beta level"
                                          << "beta";
}

void TestManagerSearch::searchFindsNoServiceRestrictedParameter()
{
    QFETCH(QString, file);
    QFETCH(QString, pageRow);
    QFETCH(QString, editorTitle);
    QFETCH(QString, query);

    _open(file);
    // The parameter is open for editing with this service...
    QVERIFY(_window->selectRow(pageRow));
    QVERIFY(_editorTitles(_window->currentPage()).contains(editorTitle));
    // ... and still not found.
    QTest::keyClicks(_window->filter, query);
    QCOMPARE(_window->headingText(), QStringLiteral("Search results"));
    QCOMPARE(_editorTitles(_window->currentPage()), QStringList());
}

void TestManagerSearch::searchNeverFindsTleList()
{
    _open(QStringLiteral("alpha-current.conf"));
    QVERIFY(_window->rowTexts().contains(QStringLiteral("Satellites")));
    QTest::keyClicks(_window->filter, QStringLiteral("sat"));
    QCOMPARE(_window->headingText(), QStringLiteral("Search results"));
    QCOMPARE(_editorTitles(_window->currentPage()), QStringList());
}

void TestManagerSearch::aboutBoxIsAvailableInAllStates_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::newRow("closed") << QStringList();
    QTest::newRow("open") << QStringList({ "open" });
    QTest::newRow("modified") << QStringList({ "open", "edit" });
    QTest::newRow("new") << QStringList({ "new" });
}

void TestManagerSearch::aboutBoxIsAvailableInAllStates()
{
    QFETCH(QStringList, steps);
    for (const QString &step : steps) {
        if (step == QLatin1String("open")) {
            _open(QStringLiteral("alpha-current.conf"));
        } else if (step == QLatin1String("edit")) {
            clickCheckBox(_window->checkBox(QStringLiteral("Enabled")));
        } else {
            Modals modals;
            modals.chooseService(1);
            _window->actNew->trigger();
            VERIFY_MODALS_DONE(modals);
        }
    }
    const QString title = _manager->windowTitle();
    const bool saved = _manager->isSaved();

    QVERIFY(_window->actAbout->isEnabled());
    Modals modals;
    modals.ok();
    _window->actAbout->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(modals.seen().at(0).title, QStringLiteral("About"));
    QCOMPARE(modals.seen().at(0).text,
        QStringLiteral(
            "Orvex Config Manager\nVersion: 0.9.240601\n\nDeveloped using the Qt5 C++ library"));
    QCOMPARE(modals.seen().at(0).buttons, int(QMessageBox::Ok));
    QCOMPARE(_manager->windowTitle(), title);
    QCOMPARE(_manager->isSaved(), saved);
}

MANAGER_TEST_MAIN(TestManagerSearch)
#include "tst_manager_search.moc"
