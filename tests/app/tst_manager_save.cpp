// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Saving and closing: Save, Save As, the question about unsaved edits in
// front of every command that gives up the current state, Close and Quit.

#include "managertestkit.h"

#include "app/manager.h"
#include "model/parameter.h"
#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

using namespace ManagerTest;

namespace {

const QString kQuestion
    = QStringLiteral("Some changes were not saved.\nDo you want to save the config file?");

QStringList _files(const QString &dir)
{
    return QDir(dir).entryList(QDir::Files);
}

} // namespace

class TestManagerSave : public ManagerFixture
{
    Q_OBJECT

public:
    TestManagerSave() : ManagerFixture(true) {}

public:
    enum Command { Open, New, Close, Quit, CloseWindow };
    Q_ENUM(Command)

private slots:
    void saveOfUntouchedConfigurationRewritesFileSilently();
    void saveFailureKeepsMark();
    void saveOfNewConfigurationWithDialogCancelledChangesNothing();
    void saveAsTakesNewPathAndSelectsFirstSection();
    void saveAsToUnwritablePlaceKeepsOldPath_data();
    void saveAsToUnwritablePlaceKeepsOldPath();
    void unsavedEditsAreAskedAbout_data();
    void unsavedEditsAreAskedAbout();
    void quitFromNewConfigurationWithSaveAsCancelledLosesEdits();
    void quitAfterSaveAsksNothing();
    void closeKeepsServiceVersionAndValues();

private:
    // Opens a copy of alpha-current.conf in dir and ticks "Enabled" (false in
    // the file); returns the copy's path.
    QString _openAndEdit(const QString &dir);
    // Makes a new configuration of the first service and ticks "Enabled".
    void _newAndEdit();

};

void TestManagerSave::_newAndEdit()
{
    Modals modals;
    modals.chooseService(0);
    _window->actNew->trigger();
    VERIFY_MODALS_DONE(modals);
    clickCheckBox(_window->checkBox(QStringLiteral("Enabled")));
}

QString TestManagerSave::_openAndEdit(const QString &dir)
{
    const QString path = copyInto(fixture(QStringLiteral("alpha-current.conf")), dir);
    Modals modals;
    modals.choose(path);
    _window->actOpen->trigger();
    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    if (!modals.done() || !enabled || enabled->isChecked())
        return QString();
    clickCheckBox(enabled);
    return _manager->isSaved() ? QString() : path;
}

void TestManagerSave::saveOfUntouchedConfigurationRewritesFileSilently()
{
    const QString path = copyInto(fixture(QStringLiteral("alpha-current.conf")), _dir->path());
    {
        Modals modals;
        modals.choose(path);
        _window->actOpen->trigger();
        VERIFY_MODALS_DONE(modals);
    }
    QVERIFY(readAll(path).contains("<!--"));
    Modals modals;
    _window->actSave->trigger();
    VERIFY_MODALS_DONE(modals);
    QVERIFY(modals.seen().isEmpty());
    // Written again, in the writer's layout.
    QVERIFY(!readAll(path).contains("<!--"));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/StationTitle")),
        QStringLiteral("Current station"));
    QCOMPARE(_manager->windowTitle(), caption(path, false));
}

void TestManagerSave::saveFailureKeepsMark()
{
    const QString sub = _dir->filePath(QStringLiteral("gone"));
    QVERIFY(QDir().mkpath(sub));
    const QString path = _openAndEdit(sub);
    QVERIFY(!path.isEmpty());
    QVERIFY(QDir(sub).removeRecursively());

    Modals modals;
    modals.ok();
    _window->actSave->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(modals.seen().at(0).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(0).icon, QMessageBox::Warning);
    QCOMPARE(modals.seen().at(0).text, QStringLiteral("XML is not created\n"));
    QVERIFY(!_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), caption(path, true));
}

void TestManagerSave::saveOfNewConfigurationWithDialogCancelledChangesNothing()
{
    _newAndEdit();
    QVERIFY(!_manager->isSaved());
    const QStringList before = _files(confDir());

    Modals modals;
    modals.cancel();
    _window->actSave->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    const ModalAnswerer::Seen dialog = modals.seen().at(0);
    QCOMPARE(dialog.className, QStringLiteral("QFileDialog"));
    QCOMPARE(dialog.title, QStringLiteral("Save Config File"));
    QCOMPARE(dialog.directory, QDir(confDir()).absolutePath());
    QCOMPARE(dialog.nameFilters, QStringList({ "Orvex Config File (*.conf)", "XML file (*.xml)" }));

    QVERIFY(_manager->getConfigPath().isNull());
    QVERIFY(!_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
    QCOMPARE(_files(confDir()), before);
}

void TestManagerSave::saveAsTakesNewPathAndSelectsFirstSection()
{
    const QString path = _openAndEdit(_dir->path());
    QVERIFY(!path.isEmpty());
    const QByteArray original = readAll(path);
    QVERIFY(_window->selectRow(QStringLiteral("Network")));
    QTest::keyClicks(_window->filter, QStringLiteral("ho"));
    QCOMPARE(_window->headingText(), QStringLiteral("Search results"));

    // A name without the suffix is taken as the dialog gives it.
    const QString newPath = _dir->filePath(QStringLiteral("saved-as"));
    Modals modals;
    modals.choose(newPath);
    _window->actSaveAs->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);

    QCOMPARE(_manager->getConfigPath(), newPath);
    QCOMPARE(_manager->windowTitle(), caption(newPath, false));
    QVERIFY(_manager->isSaved());
    QCOMPARE(valueInFile(newPath, QStringLiteral("Station/Enabled")), QStringLiteral("true"));
    QCOMPARE(readAll(path), original);
    QCOMPARE(_window->tree->getCurrentIndex(), _window->tree->getFirstIndexItem());
    QCOMPARE(_window->headingText(), QStringLiteral("Station"));
    QCOMPARE(_window->currentPage()->getAreaName(), QStringLiteral("Station"));
    QCOMPARE(_window->filter->text(), QString());
    QCOMPARE(_window->infoText(), QStringLiteral("Config version: 2.0\tService: ALPHA"));
}

void TestManagerSave::saveAsToUnwritablePlaceKeepsOldPath_data()
{
    QTest::addColumn<bool>("edited");
    QTest::newRow("with edits") << true;
    QTest::newRow("without edits") << false;
}

void TestManagerSave::saveAsToUnwritablePlaceKeepsOldPath()
{
    QFETCH(bool, edited);

    const QString path = _openAndEdit(_dir->path());
    QVERIFY(!path.isEmpty());
    if (!edited)
        _window->actSave->trigger();
    QCOMPARE(_manager->isSaved(), !edited);

    // Nobody creates files in /proc, not even root.
    const QString unwritable
        = QStringLiteral("/proc/orvex-test-%1.conf").arg(QCoreApplication::applicationPid());
    Modals modals;
    modals.choose(unwritable);
    modals.ok();
    _window->actSaveAs->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(modals.seen().at(1).text, QStringLiteral("XML is not created\n"));

    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->isSaved(), !edited);
    QCOMPARE(_manager->windowTitle(), caption(path, edited));
}

void TestManagerSave::unsavedEditsAreAskedAbout_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("followedBy"); // the dialog of the command, cancelled
    QTest::addColumn<bool>("fileHoldsEdit");
    QTest::addColumn<bool>("isSaved");
    QTest::addColumn<bool>("isOpened");
    QTest::addColumn<bool>("quits");
    QTest::addColumn<bool>("windowCloses");

    const int yes = QMessageBox::Yes, no = QMessageBox::No, cancel = QMessageBox::Cancel;
    const QString fileDialog = QStringLiteral("QFileDialog"),
                  dialogNew = QStringLiteral("DialogNew");
    // Yes saves and goes on; No goes on without saving; Cancel stops the command.
    QTest::newRow("Open, Yes") << Open << yes << fileDialog << true << true << true << false
                               << false;
    QTest::newRow("Open, No") << Open << no << fileDialog << false << false << true << false
                              << false;
    QTest::newRow("Open, Cancel") << Open << cancel << QString() << false << false << true << false
                                  << false;
    QTest::newRow("New, Yes") << New << yes << dialogNew << true << true << true << false << false;
    QTest::newRow("New, No") << New << no << dialogNew << false << false << true << false << false;
    QTest::newRow("New, Cancel") << New << cancel << QString() << false << false << true << false
                                 << false;
    QTest::newRow("Close, Yes") << Close << yes << QString() << true << true << false << false
                                << false;
    QTest::newRow("Close, No") << Close << no << QString() << false << true << false << false
                               << false;
    QTest::newRow("Close, Cancel")
        << Close << cancel << QString() << false << false << true << false << false;
    QTest::newRow("Quit, Yes") << Quit << yes << QString() << true << true << true << true << false;
    QTest::newRow("Quit, No") << Quit << no << QString() << false << false << true << true << false;
    QTest::newRow("Quit, Cancel") << Quit << cancel << QString() << false << false << true << false
                                  << false;
    QTest::newRow("window closed, Yes")
        << CloseWindow << yes << QString() << true << true << true << false << true;
    QTest::newRow("window closed, No")
        << CloseWindow << no << QString() << false << false << true << false << true;
    QTest::newRow("window closed, Cancel")
        << CloseWindow << cancel << QString() << false << false << true << false << false;
}

void TestManagerSave::unsavedEditsAreAskedAbout()
{
    QFETCH(Command, command);
    QFETCH(int, answer);
    QFETCH(QString, followedBy);
    QFETCH(bool, fileHoldsEdit);
    QFETCH(bool, isSaved);
    QFETCH(bool, isOpened);
    QFETCH(bool, quits);
    QFETCH(bool, windowCloses);

    const QString path = _openAndEdit(_dir->path());
    QVERIFY(!path.isEmpty());

    Modals modals;
    modals.pressButton(QMessageBox::StandardButton(answer));
    if (!followedBy.isEmpty())
        modals.cancel();
    bool quitObserved = false;
    bool windowClosed = false;
    switch (command) {
    case Open:
        _window->actOpen->trigger();
        break;
    case New:
        _window->actNew->trigger();
        break;
    case Close:
        _window->actClose->trigger();
        break;
    case Quit:
        quitObserved = quitsApplication([this] { _window->actQuit->trigger(); });
        break;
    case CloseWindow:
        windowClosed = _manager->close();
        break;
    }

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), followedBy.isEmpty() ? 1 : 2);
    const ModalAnswerer::Seen question = modals.seen().at(0);
    QCOMPARE(question.title, QStringLiteral("Warning!"));
    QCOMPARE(question.text, kQuestion);
    QCOMPARE(question.icon, QMessageBox::Warning);
    QCOMPARE(question.buttons, int(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel));
    QCOMPARE(question.defaultButton, int(QMessageBox::Yes));
    if (!followedBy.isEmpty())
        QCOMPARE(modals.seen().at(1).className, followedBy);

    QCOMPARE(quitObserved, quits);
    QCOMPARE(windowClosed, windowCloses);
    QCOMPARE(_manager->isVisible(), !windowCloses);
    QCOMPARE(valueInFile(path, QStringLiteral("Station/Enabled")),
        QLatin1String(fileHoldsEdit ? "true" : "false"));
    // Whatever the answer, the edit stays in the tree.
    QCOMPARE(
        _window->parameter(QStringLiteral("Station/Enabled"))->getValue(), std::string("true"));
    QCOMPARE(_manager->isSaved(), isSaved);
    QCOMPARE(
        _manager->windowTitle(), isOpened ? caption(path, !isSaved) : QString::fromLatin1(kTitle));
    const QString wrong = _window->wrongEnabledState(isOpened);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestManagerSave::quitFromNewConfigurationWithSaveAsCancelledLosesEdits()
{
    _newAndEdit();
    QVERIFY(!_manager->isSaved());
    const QStringList before = _files(confDir());

    Modals modals;
    modals.pressButton(QMessageBox::Yes);
    modals.cancel();
    QVERIFY(quitsApplication([this] { _window->actQuit->trigger(); }));
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(0).text, kQuestion);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Save Config File"));
    QCOMPARE(_files(confDir()), before);
}

void TestManagerSave::quitAfterSaveAsksNothing()
{
    QVERIFY(!_openAndEdit(_dir->path()).isEmpty());
    _window->actSave->trigger();
    QVERIFY(_manager->isSaved());
    Modals modals;
    QVERIFY(quitsApplication([this] { _window->actQuit->trigger(); }));
    VERIFY_MODALS_DONE(modals);
    QVERIFY(modals.seen().isEmpty());
}

void TestManagerSave::closeKeepsServiceVersionAndValues()
{
    const QString path = copyInto(fixture(QStringLiteral("beta-current.conf")), _dir->path());
    {
        Modals modals;
        modals.choose(path);
        _window->actOpen->trigger();
        VERIFY_MODALS_DONE(modals);
    }
    Modals modals;
    _window->actClose->trigger();
    VERIFY_MODALS_DONE(modals);
    QVERIFY(modals.seen().isEmpty());
    QVERIFY(_manager->getConfigPath().isNull());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
    QCOMPARE(_manager->getService(), QStringLiteral("BETA"));
    QCOMPARE(_manager->getConfigVersion().getString(), std::string("2.0"));
    QCOMPARE(_window->parameter(QStringLiteral("Station/StationTitle"))->getValue(),
        std::string("Beta current"));
}

MANAGER_TEST_MAIN(TestManagerSave)
#include "tst_manager_save.moc"
