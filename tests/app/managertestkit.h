// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// What the tests of the main window share: the files beside the program,
// answering and watching modal boxes, and a view of the window's widgets.

#include "modalanswerer.h"

#include <QByteArray>
#include <QDomDocument>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

class Control;
class Filter;
class Manager;
class ParamsArea;
class ParamsTree;
class ParamsWidget;
class ParamTitle;
class ParameterSimple;
class QAction;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QRadioButton;

namespace ManagerTest {

constexpr const char *kTitle = "Orvex Config Manager";

// ---------------------------------------------------------------- files

// The directory of the test program; Manager looks for orvex/ there.
QString appDir();
QString defaultDir();
QString confDir();
QString schemaPath();
// A file of tests/data/app.
QString fixture(const QString &name);

QByteArray readAll(const QString &path);
bool writeAll(const QString &path, const QByteArray &bytes);
// Copies a file into dir under name (the source's own name when empty);
// returns the new path, or a null string on failure.
QString copyInto(const QString &source, const QString &dir, const QString &name = QString());

// Empties orvex/default beside the program and fills it with the schema and
// the ALPHA and BETA defaults of tests/data/app (there is no GAMMA default).
bool installFixtureDefaults();
// Puts the shipped orvex/default back, from the source tree.
bool installShippedDefaults();
// Writes a schema over the installed one.
bool installSchema(const QByteArray &schema);

// The fixture schema as a DOM tree, the base of the schema variants.
QDomDocument fixtureSchema();
// The declarations directly under the root declaration, in schema order.
QList<QDomElement> rootDeclarations(const QDomDocument &schema);
// Replaces the enumeration of a leaf declaration by these values.
void setEnumeration(QDomElement declaration, const QStringList &values);
QByteArray toBytes(const QDomDocument &document);
// The fixture schema with another list of supported versions.
QByteArray schemaWithVersions(const QStringList &versions);

// alpha-current.conf with another Version and Service text; a null text
// leaves the element out altogether.
QByteArray configWith(const QString &version, const QString &service);

// The text of the element at a path such as "Station/Enabled" below the
// document element of a configuration file; null when there is none.
QString valueInFile(const QString &path, const QString &elementPath);
// The texts of the children of the element at that path.
QStringList itemsInFile(const QString &path, const QString &elementPath);

// ---------------------------------------------------------------- modal boxes

// The answerer with the answers of the main window's own dialogs.
class Modals : public ModalAnswerer
{
    Q_OBJECT
    Q_DISABLE_COPY(Modals)

public:
    Modals() = default;

    void ok() { pressButton(QMessageBox::Ok); }
    // Types the name into the file dialog's own name field and accepts.
    void choose(const QString &path) { chooseFile(path); }
    // Checks the radio button of the service at index in the dialog of a
    // new configuration, then presses its Ok button.
    void chooseService(int index);
};

// The window under test, made anew for each test function over the fixture
// schema and default configurations, with a temporary directory of its own.
// The shipped defaults are put back when the test case ends.
class ManagerFixture : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ManagerFixture)

public:
    explicit ManagerFixture(bool showWindow);
    ~ManagerFixture() override;

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    QTemporaryDir *_dir = nullptr;
    std::unique_ptr<Manager> _manager;
    std::unique_ptr<struct Window> _window;

private:
    const bool _showWindow;
};

// The window's widgets as found through the parent tree.
struct Window
{
    explicit Window(Manager *manager);

    Manager *manager;
    QAction *actQuit, *actClose, *actNew, *actOpen, *actSave, *actSaveAs, *actAbout;
    Filter *filter;
    ParamsTree *tree;
    ParamsWidget *pages;
    ParamTitle *heading;
    Control *control;
    QLabel *info;
    QPushButton *buttonNew, *buttonOpen, *buttonSave, *buttonSaveAs;

    // The seven actions, in the order in which the window made them.
    QList<QAction *> actions() const;
    // The texts of the tree's rows, depth first.
    QStringList rowTexts() const;
    ParamsArea *currentPage() const;
    QString headingText() const;
    QString infoText() const;
    // A check box of that text on the current page; null when there is none.
    QCheckBox *checkBox(const QString &text) const;
    // The parameter at a key path such as "Station/Enabled".
    ParameterSimple *parameter(const QString &keyPath) const;
    // Selects the row with this text through the tree, as a click would.
    bool selectRow(const QString &text) const;
    // The pages with the name "Search results" that the stack holds as children.
    QList<ParamsArea *> searchPages() const;
    // Whether the widgets of an open configuration are enabled, and those
    // that are always enabled are too; names the first wrong one otherwise.
    QString wrongEnabledState(bool isOpened) const;
};

// Constructs a Manager; the boxes of start-up go to modals.
std::unique_ptr<Manager> makeManager();
// Shows the window and waits until it is the active one.
bool showActive(QWidget *window);
// A mouse click on the box's indicator, where a user clicks; the window
// must be shown.
void clickCheckBox(QCheckBox *box);
// The same on a radio button's indicator.
void clickRadioButton(QRadioButton *button);
// The push button of that text among the children of parent; null when
// there is none.
QPushButton *pushButton(const QWidget *parent, const QString &text);

// Runs action inside the application's event loop and tells whether it made
// the application quit: QCoreApplication::exec() returned 0 and aboutToQuit
// was emitted once. A loop that was not told to quit ends with another code.
bool quitsApplication(const std::function<void()> &action);

// The caption of an open configuration.
QString caption(const QString &path, bool modified);

} // namespace ManagerTest

// Like QTEST_MAIN, but the application is built without the test's own
// options: Manager takes the first argument of the application for a
// configuration file to open.
#define MANAGER_TEST_MAIN(TestObject)                                                              \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        int applicationArgc = 1;                                                                   \
        QApplication application(applicationArgc, argv);                                           \
        application.setAttribute(Qt::AA_Use96Dpi, true);                                           \
        TestObject test;                                                                           \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
