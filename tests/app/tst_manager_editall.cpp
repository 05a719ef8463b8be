// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// One walk through the shipped schema as a user makes it: a default
// configuration is opened, one parameter of every type is changed through its
// own control, the file is saved, and the saved file holds the new values.

#include "managertestkit.h"

#include "app/manager.h"
#include "editors/dialogadditem.h"
#include "editors/paramsimple.h"
#include "navigation/paramsarea.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QDomDocument>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace ManagerTest;

namespace {

// How the user reaches the new value.
enum class Gesture {
    Type, // a line edit cleared and typed into
    TypeNumber, // digits typed over a spin box's text, then Return
    Click, // a click on a check box
    Choose, // a click on the radio button of that text
    AddItem, // "Add", the item typed into the add dialog, Ok
    BrowseFile, // "...", the file picked in the file dialog
    BrowseDir, // "...", the directory picked in the directory dialog
    AddFile, // "Add" of a path list, the file picked in the file dialog
    PasteTLEs, // select all in the TLE field, paste from the clipboard
};

struct UserEdit
{
    QString section; // row of the section tree
    QString name; // display name: the tool tip of the editor's frame
    Gesture gesture;
    QString input; // what is typed, clicked or picked
    QString dialogTitle; // of the dialog the gesture opens; empty for none
    QString elementPath; // below the document element of the saved file
    QStringList saved; // the value text, the items, or the TLE lines
};

} // namespace

Q_DECLARE_METATYPE(UserEdit)
Q_DECLARE_METATYPE(QList<UserEdit>)

namespace {

QString _defaultFile(const QString &service)
{
    return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/") + service
        + QStringLiteral("-default.conf");
}

// The first two element sets of the catalog, as a user copies them.
QStringList _catalogHead()
{
    QFile file(QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/catalog-a.tle"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QStringList();
    return QString::fromLatin1(file.readAll()).split(QLatin1Char('\n')).mid(0, 8);
}

QStringList _tleRecords(const QStringList &lines)
{
    QStringList records;
    int field = 0;
    for (const QString &line : lines) {
        if (line.isEmpty())
            continue;
        records << QStringLiteral("Line%1 %2").arg(field).arg(line);
        field = (field + 1) % 3;
    }
    return records;
}

// Each record's children as "Line0 <text>" and so on, in file order.
QStringList _tleRecordsInFile(const QString &path, const QString &elementPath)
{
    QDomDocument document;
    if (!document.setContent(readAll(path)))
        return { QStringLiteral("<unreadable>") };
    QDomElement list = document.documentElement();
    for (const QString &key : elementPath.split(QLatin1Char('/')))
        list = list.firstChildElement(key);
    QStringList records;
    for (QDomElement tle = list.firstChildElement(); !tle.isNull();
         tle = tle.nextSiblingElement()) {
        for (QDomElement line = tle.firstChildElement(); !line.isNull();
             line = line.nextSiblingElement())
            records << line.tagName() + QLatin1Char(' ') + line.text();
    }
    return records;
}

QStringList _savedValue(const QString &path, const UserEdit &edit)
{
    switch (edit.gesture) {
    case Gesture::AddItem:
    case Gesture::AddFile:
        return itemsInFile(path, edit.elementPath);
    case Gesture::PasteTLEs:
        return _tleRecordsInFile(path, edit.elementPath);
    default:
        return { valueInFile(path, edit.elementPath) };
    }
}

ParamSimple *_frame(ParamsArea *page, const QString &name)
{
    if (!page)
        return nullptr;
    for (ParamSimple *frame : page->findChildren<ParamSimple *>()) {
        if (frame->toolTip() == name)
            return frame;
    }
    return nullptr;
}

QRadioButton *_radio(QWidget *frame, const QString &text)
{
    for (QRadioButton *button : frame->findChildren<QRadioButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

void _selectAll(QWidget *widget)
{
    QTest::keySequence(widget, QKeySequence::SelectAll);
}

void _retype(QLineEdit *edit, const QString &text)
{
    _selectAll(edit);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

void _rejectUnexpected(QWidget *widget, const char *expected)
{
    qWarning("expected %s, got %s", expected, widget->metaObject()->className());
    if (auto *dialog = qobject_cast<QDialog *>(widget))
        dialog->reject();
}

// Types the item into the add dialog and presses its Ok.
void _answerAddItem(Modals &modals, const QString &item)
{
    modals.handleWith([item](QWidget *widget) {
        auto *dialog = qobject_cast<DialogAddItem *>(widget);
        QLineEdit *field = dialog ? dialog->findChild<QLineEdit *>() : nullptr;
        QPushButton *ok = dialog ? pushButton(dialog, QStringLiteral("&Ok")) : nullptr;
        if (!field || !ok)
            return _rejectUnexpected(widget, "the add dialog");
        QTest::keyClicks(field, item);
        QTest::mouseClick(ok, Qt::LeftButton);
    });
}

void _answerDirectory(Modals &modals, const QString &dir)
{
    modals.handleWith([dir](QWidget *widget) { ModalAnswerer::acceptDirectoryDialog(widget, dir); });
}

// The control of the frame that the gesture uses; null when the frame has none.
QWidget *_perform(ParamSimple *frame, const UserEdit &edit, Modals &modals)
{
    switch (edit.gesture) {
    case Gesture::Type: {
        auto *field = frame->findChild<QLineEdit *>();
        if (field)
            _retype(field, edit.input);
        return field;
    }
    case Gesture::TypeNumber: {
        auto *box = frame->findChild<QAbstractSpinBox *>();
        if (!box)
            return nullptr;
        QString digits = edit.input;
        digits.replace(QLatin1Char('.'), box->locale().decimalPoint());
        _selectAll(box);
        QTest::keyClicks(box, digits);
        QTest::keyClick(box, Qt::Key_Return);
        return box;
    }
    case Gesture::Click: {
        auto *box = frame->findChild<QCheckBox *>();
        if (box)
            clickCheckBox(box);
        return box;
    }
    case Gesture::Choose: {
        QRadioButton *button = _radio(frame, edit.input);
        if (button)
            clickRadioButton(button);
        return button;
    }
    case Gesture::AddItem:
    case Gesture::AddFile:
    case Gesture::BrowseFile:
    case Gesture::BrowseDir: {
        const bool adds = edit.gesture == Gesture::AddItem || edit.gesture == Gesture::AddFile;
        QPushButton *button = pushButton(frame, adds ? QStringLiteral("Add") : QStringLiteral("..."));
        if (!button)
            return nullptr;
        if (edit.gesture == Gesture::AddItem)
            _answerAddItem(modals, edit.input);
        else if (edit.gesture == Gesture::BrowseDir)
            _answerDirectory(modals, edit.input);
        else
            modals.choose(edit.input);
        QTest::mouseClick(button, Qt::LeftButton);
        return button;
    }
    case Gesture::PasteTLEs: {
        auto *field = frame->findChild<QPlainTextEdit *>();
        if (!field)
            return nullptr;
        QApplication::clipboard()->setText(edit.input);
        _selectAll(field);
        QTest::keySequence(field, QKeySequence::Paste);
        return field;
    }
    }
    return nullptr;
}

} // namespace

class TestManagerEditAll : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void editOfEveryControlIsSavedToFile_data();
    void editOfEveryControlIsSavedToFile();
    void cleanupTestCase();

private:
    // Opens the file through File → Open; false with a warning on failure.
    bool _open(Window &window, const QString &path);
    void _edit(Window &window, const UserEdit &edit);

    QTemporaryDir _picks; // what the file and directory dialogs pick
};

void TestManagerEditAll::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    // The copy beside the program may hold another test's schema.
    QVERIFY(installShippedDefaults());
    QVERIFY(_picks.isValid());
    QVERIFY(QDir(_picks.path()).mkpath(QStringLiteral("frames")));
    QVERIFY(writeAll(_picks.filePath(QStringLiteral("horizon.mask")), "0 10\n180 12\n"));
    QVERIFY(writeAll(_picks.filePath(QStringLiteral("faint-stars.csv")), "id,ra,dec\n"));
}

void TestManagerEditAll::cleanupTestCase()
{
    QApplication::clipboard()->clear();
}

void TestManagerEditAll::editOfEveryControlIsSavedToFile_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QList<UserEdit>>("edits");
    QTest::addColumn<QString>("untouchedPath");
    QTest::addColumn<QString>("untouchedValue");

    const QString frames = _picks.filePath(QStringLiteral("frames"));
    const QString mask = _picks.filePath(QStringLiteral("horizon.mask"));
    const QString catalog = _picks.filePath(QStringLiteral("faint-stars.csv"));
    const QStringList tles = _catalogHead();
    QCOMPARE(tles.size(), 8);

    // The TLEs first, while nothing else has marked the configuration; the
    // rest in the order of the tree, as a user walks it.
    const QList<UserEdit> tracking = {
        // Pasted over the whole field: the sets replace the one of the defaults;
        // an edit of TLEs leaves the caption unmarked.
        { "Satellites", "Satellites", Gesture::PasteTLEs, tles.join(QLatin1Char('\n')), "",
            "Tracking/Satellites", _tleRecords(tles) },
        { "Observatory", "Site name", Gesture::Type, "Orvex North Station", "",
            "Observatory/SiteName", { "Orvex North Station" } },
        { "Horizon", "Horizon mask file", Gesture::BrowseFile, mask, "Horizon mask file",
            "Observatory/Site/Horizon/HorizonMaskFile", { mask } },
        { "Contact", "Operator e-mail", Gesture::Type, "night.shift@orvex.org", "",
            "Observatory/Contact/OperatorEmail", { "night.shift@orvex.org" } },
        { "Contact", "Notify on failure", Gesture::Click, "", "",
            "Observatory/Contact/NotifyOnFailure", { "false" } },
        { "Directories and files", "Data directory", Gesture::BrowseDir, frames, "Data directory",
            "Paths/DataDir", { frames } },
        { "Directories and files", "Catalogue files", Gesture::AddFile, catalog, "Catalogue files",
            "Paths/CatalogFiles", { "/var/lib/orvex/catalogs/gaia-dr3-bright.csv", catalog } },
        { "Camera", "Camera model", Gesture::Choose, "ZWO ASI6200MM Pro", "", "Camera/Model",
            { "ZWO ASI6200MM Pro" } },
        { "Camera", "Gain", Gesture::TypeNumber, "250", "", "Camera/Gain", { "250" } },
        { "Camera", "Exposure time", Gesture::TypeNumber, "12.5", "", "Camera/ExposureTime",
            { "12.5" } },
        { "FITS header", "Object keyword", Gesture::Type, "TARGET", "",
            "Camera/FitsHeader/ObjectKey", { "TARGET" } },
        // Header keys are stored in capitals whatever the case typed.
        { "FITS header", "Extra keywords", Gesture::AddItem, "filter", "Item select",
            "Camera/FitsHeader/ExtraHeaderKeys", { "OBSERVER", "TELESCOP", "INSTRUME", "FILTER" } },
        { "Satellite tracking", "Priority catalogue numbers", Gesture::AddItem, "43013",
            "Item select", "Tracking/PriorityNoradIds", { "25544", "43013" } },
        { "Archive upload", "Upload enabled", Gesture::Click, "", "", "Archive/UploadEnabled",
            { "true" } },
        { "Archive upload", "Password", Gesture::Type, "s3cret!Pass", "", "Archive/Password",
            { "s3cret!Pass" } },
    };
    QTest::newRow("tracking") << "tracking" << tracking << "Paths/LogDir"
                              << "/var/log/orvex";

    const QList<UserEdit> survey = {
        { "Sky survey", "Filter sequence", Gesture::AddItem, "z", "Item select", "Survey/Filters",
            { "g", "r", "i", "z" } },
    };
    QTest::newRow("survey") << "survey" << survey << "Survey/VisitsPerField"
                            << "2";

    const QList<UserEdit> photometry = {
        { "Photometry", "Filter", Gesture::Type, "Rc", "", "Photometry/FilterKey", { "Rc" } },
    };
    QTest::newRow("photometry") << "photometry" << photometry << "Photometry/ZeroPoint"
                                << "21.35";
}

bool TestManagerEditAll::_open(Window &window, const QString &path)
{
    Modals modals;
    modals.choose(path);
    window.actOpen->trigger();
    if (!modals.done() || modals.seen().size() != 1
        || modals.seen().at(0).title != QLatin1String("Open Config File")) {
        qWarning("%s", qPrintable(modals.report()));
        return false;
    }
    return true;
}

void TestManagerEditAll::_edit(Window &window, const UserEdit &edit)
{
    QVERIFY2(window.selectRow(edit.section), qPrintable(edit.section));
    ParamsArea *page = window.currentPage();
    ParamSimple *frame = _frame(page, edit.name);
    QVERIFY2(frame, qPrintable(edit.section + QStringLiteral(" has no ") + edit.name));
    page->ensureWidgetVisible(frame);

    Modals modals;
    QWidget *control = _perform(frame, edit, modals);
    QVERIFY2(control, qPrintable(edit.name + QStringLiteral(" has no control for the gesture")));
    VERIFY_MODALS_DONE(modals);
    QStringList titles;
    for (const ModalAnswerer::Seen &seen : modals.seen())
        titles << seen.title;
    QCOMPARE(titles, edit.dialogTitle.isEmpty() ? QStringList() : QStringList(edit.dialogTitle));
}

void TestManagerEditAll::editOfEveryControlIsSavedToFile()
{
    QFETCH(QString, service);
    QFETCH(QList<UserEdit>, edits);
    QFETCH(QString, untouchedPath);
    QFETCH(QString, untouchedValue);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = copyInto(_defaultFile(service), dir.path(), service + ".conf");
    QVERIFY(!path.isEmpty());

    std::unique_ptr<Manager> manager;
    {
        Modals modals;
        manager = makeManager();
        VERIFY_MODALS_DONE(modals);
    }
    Window window(manager.get());
    QVERIFY(showActive(manager.get()));
    QVERIFY(_open(window, path));
    QCOMPARE(manager->windowTitle(), caption(path, false));

    bool marked = false;
    for (const UserEdit &edit : qAsConst(edits)) {
        _edit(window, edit);
        if (QTest::currentTestFailed())
            return;
        marked = marked || edit.gesture != Gesture::PasteTLEs;
        QCOMPARE(manager->windowTitle(), caption(path, marked));
    }
    QCOMPARE(manager->windowTitle(), caption(path, true));

    {
        Modals modals;
        window.actSave->trigger();
        VERIFY_MODALS_DONE(modals);
        QVERIFY(modals.seen().isEmpty());
    }
    QCOMPARE(manager->windowTitle(), caption(path, false));

    // Prefixed by the element, so that a failure names the edit.
    for (const UserEdit &edit : qAsConst(edits)) {
        const QString element = edit.elementPath + QStringLiteral(": ");
        QCOMPARE(element + _savedValue(path, edit).join(QLatin1Char('\n')),
            element + edit.saved.join(QLatin1Char('\n')));
    }
    QCOMPARE(valueInFile(path, untouchedPath), untouchedValue);
}

MANAGER_TEST_MAIN(TestManagerEditAll)
#include "tst_manager_editall.moc"
