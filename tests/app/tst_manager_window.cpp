// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The main window: its actions, menus and button row, the open and saved
// states with their caption and information label, and the two chains of
// signals between the editors and the window.

#include "managertestkit.h"

#include "app/control.h"
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
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using namespace ManagerTest;

namespace {

QStringList _texts(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts << (action->isSeparator() ? QStringLiteral("--") : action->text());
    return texts;
}

} // namespace

class TestManagerWindow : public ManagerFixture
{
    Q_OBJECT

public:
    TestManagerWindow() : ManagerFixture(false) {}

private slots:
    void sevenActionsHaveTextsAndStandardKeys();
    void menusHoldActionsInOrder();
    void buttonRowHoldsFourButtons();
    void stateDecidesCaptionAndEnabledWidgets_data();
    void stateDecidesCaptionAndEnabledWidgets();
    void openingSelectsFirstSection();
    void treeSelectionShowsPageAndRefreshesValues();
    void refreshReloadsCheckBoxFromTree();
    void refreshOnOpenDoesNotMarkConfiguration();
    void checkBoxClickMarksCaptionRightAfterPath();
    void saveButtonRunsSameSlotAsMenu();
    void shortcutsOfDisabledActionsDoNothing();
    void shortcutsOfNewAndOpenWork();
    void closedTreeKeepsSectionsOfLastBuild();
    void infoLabelShowsStateAtLastOpen();
    void configurationOfVersionZeroShowsOnlyService();

private:
    // Opens a copy of a fixture through the menu; returns the copy's path.
    QString _open(const QString &fixtureName, const QString &name = QString());

};

QString TestManagerWindow::_open(const QString &fixtureName, const QString &name)
{
    const QString path = copyInto(fixture(fixtureName), _dir->path(), name);
    Modals modals;
    modals.choose(path);
    _window->actOpen->trigger();
    if (!modals.done())
        qWarning("%s", qPrintable(modals.report()));
    return modals.done() ? path : QString();
}

void TestManagerWindow::sevenActionsHaveTextsAndStandardKeys()
{
    const QList<QAction *> actions = _window->actions();
    QCOMPARE(_texts(actions),
        QStringList({ "&Quit", "&Close", "&New", "&Open", "&Save", "S&ave As..", "&About" }));
    const QList<QKeySequence> keys = { QKeySequence(QKeySequence::Quit),
        QKeySequence(QKeySequence::Close), QKeySequence(QKeySequence::New),
        QKeySequence(QKeySequence::Open), QKeySequence(QKeySequence::Save),
        QKeySequence(QKeySequence::SaveAs), QKeySequence() };
    for (int i = 0; i < actions.size(); ++i)
        QCOMPARE(actions.at(i)->shortcut(), keys.at(i));
    for (QAction *action : actions)
        QCOMPARE(action->parent(), static_cast<QObject *>(_manager.get()));
}

void TestManagerWindow::menusHoldActionsInOrder()
{
    const QList<QAction *> menus = _manager->menuBar()->actions();
    QCOMPARE(_texts(menus), QStringList({ "&File", "&Help" }));
    const QList<QAction *> file = menus.at(0)->menu()->actions();
    QCOMPARE(_texts(file),
        QStringList({ "&New", "&Open", "&Close", "--", "&Save", "S&ave As..", "--", "&Quit" }));
    QCOMPARE(file.at(0), _window->actNew);
    QCOMPARE(file.at(1), _window->actOpen);
    QCOMPARE(file.at(2), _window->actClose);
    QCOMPARE(file.at(4), _window->actSave);
    QCOMPARE(file.at(5), _window->actSaveAs);
    QCOMPARE(file.at(7), _window->actQuit);
    QCOMPARE(menus.at(1)->menu()->actions(), QList<QAction *>({ _window->actAbout }));
    QVERIFY(_manager->findChildren<QToolBar *>().isEmpty());
}

void TestManagerWindow::buttonRowHoldsFourButtons()
{
    QStringList texts;
    for (const QPushButton *button : _window->control->findChildren<QPushButton *>())
        texts << button->text();
    QCOMPARE(texts, QStringList({ "&New", "&Open", "&Save", "S&ave As.." }));
}

void TestManagerWindow::stateDecidesCaptionAndEnabledWidgets_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("isOpened");
    QTest::addColumn<bool>("isSaved");
    QTest::addColumn<bool>("withPath");
    QTest::addColumn<QString>("info");

    const QString alpha = QStringLiteral("Config version: 2.0\tService: ALPHA");
    QTest::newRow("closed at start") << QStringList() << false << true << false << QString();
    QTest::newRow("new") << QStringList({ "new" }) << true << true << false << alpha;
    QTest::newRow("new, edited") << QStringList({ "new", "edit" }) << true << false << false
                                 << alpha;
    QTest::newRow("open, saved") << QStringList({ "open" }) << true << true << true << alpha;
    QTest::newRow("open, modified")
        << QStringList({ "open", "edit" }) << true << false << true << alpha;
    QTest::newRow("closed again") << QStringList({ "open", "close" }) << false << true << false
                                  << QString();
}

void TestManagerWindow::stateDecidesCaptionAndEnabledWidgets()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, isOpened);
    QFETCH(bool, isSaved);
    QFETCH(bool, withPath);
    QFETCH(QString, info);

    QVERIFY(showActive(_manager.get()));
    QString path;
    for (const QString &step : steps) {
        if (step == QLatin1String("open")) {
            path = _open(QStringLiteral("alpha-current.conf"));
            QVERIFY(!path.isEmpty());
        } else if (step == QLatin1String("new")) {
            Modals modals;
            modals.chooseService(0);
            _window->actNew->trigger();
            VERIFY_MODALS_DONE(modals);
        } else if (step == QLatin1String("edit")) {
            QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
            QVERIFY(enabled);
            clickCheckBox(enabled);
        } else if (step == QLatin1String("close")) {
            Modals modals;
            _window->actClose->trigger();
            VERIFY_MODALS_DONE(modals);
            QVERIFY(modals.seen().isEmpty());
        }
    }

    const QString wrong = _window->wrongEnabledState(isOpened);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QCOMPARE(_manager->isSaved(), isSaved);
    // A configuration without a file name never shows the "*".
    QCOMPARE(
        _manager->windowTitle(), withPath ? caption(path, !isSaved) : QString::fromLatin1(kTitle));
    QCOMPARE(_manager->getConfigPath(), withPath ? path : QString());
    QCOMPARE(_window->infoText(), info);
}

void TestManagerWindow::openingSelectsFirstSection()
{
    QVERIFY(!_open(QStringLiteral("alpha-current.conf")).isEmpty());
    QCOMPARE(_window->rowTexts(), QStringList({ "Station", "Network", "Satellites" }));
    QCOMPARE(_window->tree->getCurrentIndex(), _window->tree->getFirstIndexItem());
    QCOMPARE(_window->tree->getCurrentIndex().data().toString(), QStringLiteral("Station"));
    QVERIFY(_window->currentPage());
    QCOMPARE(_window->currentPage()->getAreaName(), QStringLiteral("Station"));
    QCOMPARE(_window->headingText(), QStringLiteral("Station"));
}

void TestManagerWindow::treeSelectionShowsPageAndRefreshesValues()
{
    QVERIFY(!_open(QStringLiteral("alpha-current.conf")).isEmpty());
    QSignalSpy refresh(_window->tree, &ParamsTree::sig_valuesUpdate);
    QVERIFY(_window->selectRow(QStringLiteral("Network")));
    QCOMPARE(_window->currentPage()->getAreaName(), QStringLiteral("Network"));
    QCOMPARE(_window->headingText(), QStringLiteral("Network"));
    QVERIFY(refresh.count() >= 1);
}

void TestManagerWindow::refreshReloadsCheckBoxFromTree()
{
    QVERIFY(!_open(QStringLiteral("alpha-current.conf")).isEmpty());
    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    QVERIFY(enabled);
    QVERIFY(!enabled->isChecked());
    auto *editor = qobject_cast<ParamSimple *>(enabled->parentWidget());
    QVERIFY(editor);

    QSignalSpy treeRefresh(_window->tree, &ParamsTree::sig_valuesUpdate);
    QSignalSpy pageRefresh(_window->currentPage(), &ParamsArea::sig_valuesUpdate);
    QSignalSpy editorRefresh(editor, &ParamSimple::sig_update);
    QVERIFY(_window->parameter(QStringLiteral("Station/Enabled"))->setValue("true"));
    QVERIFY(!enabled->isChecked()); // nothing reloads by itself

    emit _manager->sig_configOpened();

    QCOMPARE(treeRefresh.count(), 1);
    QCOMPARE(pageRefresh.count(), 1);
    QCOMPARE(editorRefresh.count(), 1);
    QVERIFY(enabled->isChecked());
    QVERIFY(_manager->isSaved()); // a load by refresh is no edit
}

void TestManagerWindow::refreshOnOpenDoesNotMarkConfiguration()
{
    // The spin box of Timeout is built with at most 99; the refresh after
    // opening loads 4000 into it, and the box writes that back as an edit.
    const QString path = _open(QStringLiteral("alpha-current.conf"));
    QVERIFY(!path.isEmpty());
    QVERIFY(_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QVERIFY(_window->selectRow(QStringLiteral("Network")));
    QSpinBox *timeout = _window->currentPage()->findChild<QSpinBox *>();
    QVERIFY(timeout);
    QCOMPARE(timeout->value(), 4000);
    QCOMPARE(
        _window->parameter(QStringLiteral("Network/Timeout"))->getValue(), std::string("4000"));
    QVERIFY(_manager->isSaved());
}

void TestManagerWindow::checkBoxClickMarksCaptionRightAfterPath()
{
    QVERIFY(showActive(_manager.get()));
    const QString path = _open(QStringLiteral("alpha-current.conf"));
    QVERIFY(!path.isEmpty());
    QCOMPARE(_manager->windowTitle(), path + QStringLiteral(" - Orvex Config Manager"));
    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    QVERIFY(enabled);
    auto *editor = qobject_cast<ParamSimple *>(enabled->parentWidget());
    QVERIFY(editor);

    QSignalSpy editorChanged(editor, &ParamSimple::sig_chenged);
    QSignalSpy pageChanged(_window->currentPage(), &ParamsArea::sig_parametersChenged);
    QSignalSpy treeChanged(_window->tree, &ParamsTree::sig_parametersChenged);
    clickCheckBox(enabled);

    QVERIFY(enabled->isChecked());
    QCOMPARE(
        _window->parameter(QStringLiteral("Station/Enabled"))->getValue(), std::string("true"));
    QCOMPARE(editorChanged.count(), 1);
    QCOMPARE(pageChanged.count(), 1);
    QCOMPARE(treeChanged.count(), 1);
    QVERIFY(!_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), path + QStringLiteral("* - Orvex Config Manager"));
}

void TestManagerWindow::saveButtonRunsSameSlotAsMenu()
{
    // A file in a layout of its own: a save rewrites it in the writer's layout.
    const QString path = _open(QStringLiteral("alpha-current.conf"));
    QVERIFY(!path.isEmpty());
    QVERIFY(readAll(path).contains("<!--"));
    QSignalSpy menuSave(_window->actSave, &QAction::triggered);
    {
        Modals modals;
        QTest::mouseClick(_window->buttonSave, Qt::LeftButton);
        VERIFY_MODALS_DONE(modals);
        QVERIFY(modals.seen().isEmpty());
    }
    QCOMPARE(menuSave.count(), 1);
    QVERIFY(!readAll(path).contains("<!--"));
    QVERIFY(readAll(path).startsWith(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <Version>2.0</Version>\n"));

    // Without a file name both ways ask for one.
    {
        Modals modals;
        modals.chooseService(1);
        _window->actNew->trigger();
        VERIFY_MODALS_DONE(modals);
    }
    QList<ModalAnswerer::Seen> asked;
    for (int way = 0; way < 2; ++way) {
        Modals modals;
        modals.cancel();
        if (way == 0)
            QTest::mouseClick(_window->buttonSave, Qt::LeftButton);
        else
            _window->actSave->trigger();
        VERIFY_MODALS_DONE(modals);
        QCOMPARE(modals.seen().size(), 1);
        asked << modals.seen().at(0);
    }
    QCOMPARE(menuSave.count(), 3);
    for (const ModalAnswerer::Seen &seen : asked) {
        QCOMPARE(seen.className, QStringLiteral("QFileDialog"));
        QCOMPARE(seen.title, QStringLiteral("Save Config File"));
    }
}

void TestManagerWindow::shortcutsOfDisabledActionsDoNothing()
{
    QVERIFY(showActive(_manager.get()));
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QList<QKeySequence> keys;
    for (QAction *action : { _window->actSave, _window->actSaveAs, _window->actClose }) {
        QVERIFY(!action->isEnabled());
        spies.push_back(std::make_unique<QSignalSpy>(action, &QAction::triggered));
        keys << action->shortcuts();
    }
    QVERIFY(!keys.isEmpty());
    QSignalSpy newTriggered(_window->actNew, &QAction::triggered);
    Modals modals;
    for (const QKeySequence &key : keys)
        QTest::keySequence(_manager.get(), key);
    // The same way of pressing keys reaches an enabled action.
    modals.cancel();
    QTest::keySequence(_manager.get(), _window->actNew->shortcut());
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(modals.seen().at(0).className, QStringLiteral("DialogNew"));
    QCOMPARE(newTriggered.count(), 1);
    for (const auto &spy : spies)
        QCOMPARE(spy->count(), 0);
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
}

void TestManagerWindow::shortcutsOfNewAndOpenWork()
{
    QVERIFY(showActive(_manager.get()));
    QSignalSpy newTriggered(_window->actNew, &QAction::triggered);
    QSignalSpy openTriggered(_window->actOpen, &QAction::triggered);
    Modals modals;
    modals.cancel();
    modals.cancel();
    QTest::keySequence(_manager.get(), _window->actNew->shortcut());
    // The offscreen platform leaves no window active after a dialog.
    QVERIFY(showActive(_manager.get()));
    QTest::keySequence(_manager.get(), _window->actOpen->shortcut());
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(newTriggered.count(), 1);
    QCOMPARE(openTriggered.count(), 1);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(0).className, QStringLiteral("DialogNew"));
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Open Config File"));
}

void TestManagerWindow::closedTreeKeepsSectionsOfLastBuild()
{
    QVERIFY(!_open(QStringLiteral("beta-current.conf")).isEmpty());
    const QStringList betaRows = { "Station", "Network", "Beta options", "Satellites" };
    QCOMPARE(_window->rowTexts(), betaRows);
    {
        Modals modals;
        _window->actClose->trigger();
        VERIFY_MODALS_DONE(modals);
    }
    QVERIFY(!_window->tree->isEnabled());
    QCOMPARE(_window->rowTexts(), betaRows);
    QVERIFY(!_window->tree->getCurrentIndex().isValid());
    QVERIFY(!_window->currentPage());
    QCOMPARE(_window->headingText(), QString());

    QVERIFY(!_open(QStringLiteral("alpha-current.conf")).isEmpty());
    QCOMPARE(_window->rowTexts(), QStringList({ "Station", "Network", "Satellites" }));
}

void TestManagerWindow::infoLabelShowsStateAtLastOpen()
{
    QCOMPARE(_window->infoText(), QString());
    QVERIFY(!_open(QStringLiteral("beta-current.conf")).isEmpty());
    QCOMPARE(_window->infoText(), QStringLiteral("Config version: 2.0\tService: BETA"));
    {
        Modals modals;
        _window->actClose->trigger();
        VERIFY_MODALS_DONE(modals);
    }
    QCOMPARE(_window->infoText(), QString());
    // A refused file leaves the window closed, and the label blank.
    QVERIFY(!_open(QStringLiteral("alpha-current.conf")).isEmpty());
    QCOMPARE(_window->infoText(), QStringLiteral("Config version: 2.0\tService: ALPHA"));
    const QString broken = _dir->filePath(QStringLiteral("broken.conf"));
    QVERIFY(writeAll(broken, "no xml at all"));
    Modals modals;
    modals.choose(broken);
    modals.ok();
    _window->actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_window->infoText(), QString());
}

void TestManagerWindow::configurationOfVersionZeroShowsOnlyService()
{
    QVERIFY(installSchema(schemaWithVersions({ "0" })));
    std::unique_ptr<Manager> manager;
    {
        Modals modals;
        manager = makeManager();
        VERIFY_MODALS_DONE(modals);
    }
    QVERIFY(installFixtureDefaults());
    Window window(manager.get());
    const QString path = _dir->filePath(QStringLiteral("zero.conf"));
    QVERIFY(writeAll(path, configWith(QStringLiteral("0"), QStringLiteral("ALPHA"))));
    Modals modals;
    modals.choose(path);
    window.actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1); // the file dialog, no box
    QCOMPARE(manager->getConfigVersion().getString(), std::string("0"));
    QCOMPARE(window.infoText(), QStringLiteral("Service: ALPHA"));
}

MANAGER_TEST_MAIN(TestManagerWindow)
#include "tst_manager_window.moc"
