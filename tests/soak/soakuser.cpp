// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The random user of the soak: what it does, and how it answers.

#include "soak.h"

#include "hostilefiles.h"
#include "typing.h"

#include "app/manager.h"
#include "editors/dialogadditem.h"
#include "editors/dialognew.h"
#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

#include <sys/stat.h>

#include <algorithm>

using namespace ManagerTest;

namespace {

// ------------------------------------------------------------------ texts

// What users type into line editors: good values of each kind, and bad ones
// that the validators must refuse or show in red.
const QStringList _typed = {
    QStringLiteral("night.shift@orvex.org"),
    QStringLiteral("ops@observatory.example"),
    QStringLiteral("not an address"),
    QStringLiteral("/var/lib/orvex/data"),
    QStringLiteral("relative/path.conf"),
    QStringLiteral("12.5"),
    QStringLiteral("-3"),
    QStringLiteral("1e5"),
    QStringLiteral("0"),
    QStringLiteral("99999999999999999999"),
    QStringLiteral("OBJECT"),
    QStringLiteral("exptime"),
    QStringLiteral("TOO_LONG_KEYWORD"),
    QStringLiteral("Rc"),
    QStringLiteral("g-band_2"),
    QStringLiteral("s3cret!Pass"),
    QStringLiteral("<root>&amp;\"'"),
    QStringLiteral("Ærøskøbing – Ñuñoa €"),
    QStringLiteral("   "),
    QStringLiteral(" padded "),
    QString(300, QLatin1Char('x')),
    QString(),
};

// ------------------------------------------------------------------ widgets

template <typename T> QList<T *> _usable(QWidget *page)
{
    QList<T *> found;
    if (!page)
        return found;
    for (T *widget : page->findChildren<T *>()) {
        if (widget->isVisibleTo(page) && widget->isEnabled())
            found << widget;
    }
    return found;
}

void _rec_indexes(const QAbstractItemModel *model, const QModelIndex &parent, QModelIndexList &all)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        all << index;
        _rec_indexes(model, index, all);
    }
}

} // namespace

void TestSoak::_makePool()
{
    const QString pool = _dir.filePath(QStringLiteral("pool"));
    QVERIFY(QDir().mkpath(pool));
    QVERIFY(QDir().mkpath(_dir.filePath(QStringLiteral("saves"))));
    QVERIFY(QDir().mkpath(_dir.filePath(QStringLiteral("opened"))));
    const QString shipped = QStringLiteral(ORVEX_SOURCE_DATA_DIR);
    for (const QString &name :
        { QStringLiteral("conf/example.conf"), QStringLiteral("conf/photometry-example.conf"),
            QStringLiteral("default/tracking-default.conf"),
            QStringLiteral("default/survey-default.conf"),
            QStringLiteral("default/photometry-default.conf") }) {
        _pool << copyInto(shipped + QLatin1Char('/') + name, pool);
    }
    const QList<QPair<QString, QByteArray>> hostileFiles = {
        { QStringLiteral("garbage.bin"),
            hostile::readFile(hostile::fixture(QStringLiteral("garbage.bin"))) },
        { QStringLiteral("renamed.conf"), hostile::renamedConfig() },
        { QStringLiteral("deep.conf"), hostile::deepConfig(100000) },
        { QStringLiteral("laughs.conf"),
            hostile::configWithDoctype(hostile::billionLaughsDoctype("root"), "&lol9;") },
        { QStringLiteral("large.conf"), hostile::largeConfig(2 * 1024 * 1024) },
        { QStringLiteral("wrong-root.conf"), "<?xml version=\"1.0\"?>\n<config/>\n" },
        { QStringLiteral("empty.conf"), QByteArray() },
        { QStringLiteral("schema.xsd"), hostile::shippedSchema() },
    };
    for (const auto &file : hostileFiles) {
        const QString path
            = hostile::writeFile(_dir, QStringLiteral("pool/") + file.first, file.second);
        QVERIFY2(!path.isNull(), qPrintable(file.first));
        _pool << path;
    }
    // A named pipe that nobody writes: opening it must not block.
    const QString pipe = _dir.filePath(QStringLiteral("pool/pipe.conf"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    _pool << pipe;
    for (const QString &name : { QStringLiteral("catalog-a.tle"), QStringLiteral("iss-crlf.tle"),
             QStringLiteral("verification-sets.tle") })
        _tleFiles << QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/") + name;
    // Not element sets at all: a configuration and binary garbage.
    _tleFiles << _pool.at(0) << _pool.at(5);
}

// A copy of a file of the pool or of an earlier save, so that an update on
// opening rewrites the copy and the next open of an older file updates again;
// the pipe as it is.
QString TestSoak::_openCandidate()
{
    QString source = (!_saves.isEmpty() && _chance(35)) ? _any(_saves) : _any(_pool);
    if (!QFileInfo::exists(source)) // a Save As that wrote nothing
        source = _pool.first();
    if (!QFileInfo(source).isFile())
        return source;
    const QString copy = _dir.filePath(
        QStringLiteral("opened/%1-%2").arg(++_fileNumber).arg(QFileInfo(source).fileName()));
    QFile::copy(source, copy);
    // Copies keep the read-only bits of a read-only source tree.
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    return copy;
}

// Good, bad and mixed element sets.
QString TestSoak::_tleText()
{
    const int sets = _catalog.size() / 3;
    QStringList lines;
    const int count = 1 + _pick(4);
    for (int i = 0; i < count; ++i) {
        const int set = _pick(sets);
        QStringList record = _catalog.mid(set * 3, 3);
        switch (_pick(6)) {
        case 0: { // a wrong check digit
            const bool zero = record[1].endsWith(QLatin1Char('0'));
            record[1].chop(1);
            record[1] += QLatin1Char(zero ? '1' : '0');
            break;
        }
        case 1: // a line lost
            record.removeAt(1 + _pick(2));
            break;
        case 2: // noise
            record[_pick(3)] = QStringLiteral("1 25544U  garbage &<> \u00e9");
            break;
        default:
            break;
        }
        lines << record;
    }
    if (_chance(10))
        lines.insert(_pick(lines.size()), QString());
    return lines.join(QLatin1Char('\n'));
}

// ------------------------------------------------------------------ actions

void TestSoak::_act()
{
    const QList<std::pair<int, void (TestSoak::*)()>> actions = {
        { 14, &TestSoak::_selectTreeItem },
        { 16, &TestSoak::_typeIntoLineEdit },
        { 10, &TestSoak::_stepSpinBox },
        { 8, &TestSoak::_toggleCheckBox },
        { 6, &TestSoak::_chooseRadio },
        { 9, &TestSoak::_editList },
        { 6, &TestSoak::_editTLEs },
        // Each change of the search text leaves a results page behind for
        // good, and each modal box then walks all of them: searches come
        // less often than edits, or a long run slows with its length squared.
        { 3, &TestSoak::_search },
        { 2, &TestSoak::_showInfo },
        { 20, &TestSoak::_command },
        { 1, &TestSoak::_closeWindow },
    };
    int total = 0;
    for (const auto &action : actions)
        total += action.first;
    int roll = _pick(total);
    for (const auto &action : actions) {
        roll -= action.first;
        if (roll < 0) {
            (this->*action.second)();
            return;
        }
    }
}

void TestSoak::_selectTreeItem()
{
    QModelIndexList all;
    _rec_indexes(_window->tree->model(), QModelIndex(), all);
    if (all.isEmpty()) {
        _trail << QStringLiteral("select: the tree is empty");
        return;
    }
    const QModelIndex index = _any(all);
    _trail << QStringLiteral("select \"%1\"").arg(index.data().toString());
    _window->tree->scrollTo(index);
    const QRect rect = _window->tree->visualRect(index);
    if (rect.isValid())
        QTest::mouseClick(_window->tree->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

void TestSoak::_typeIntoLineEdit()
{
    QList<QLineEdit *> edits = _usable<QLineEdit>(_window->currentPage());
    // Spin boxes have a line edit of their own; they get steps of their own.
    edits.erase(
        std::remove_if(edits.begin(), edits.end(),
            [](QLineEdit *edit) { return qobject_cast<QAbstractSpinBox *>(edit->parentWidget()); }),
        edits.end());
    if (edits.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QLineEdit *edit = _any(edits);
    const QString text = _any(_typed);
    const bool replace = _chance(70);
    _trail << QStringLiteral("type \"%1\" into %2 \"%3\"%4")
                  .arg(text.left(40),
                      QLatin1String(edit->parentWidget()->metaObject()->className()),
                      edit->parentWidget()->toolTip(),
                      replace ? QStringLiteral(" over its text") : QString());
    _window->currentPage()->ensureWidgetVisible(edit);
    if (replace) {
        QTest::keySequence(edit, QKeySequence::SelectAll);
        QTest::keyClick(edit, Qt::Key_Backspace);
    } else {
        QTest::keyClick(edit, Qt::Key_End);
    }
    typeText(edit, text);
    if (_chance(30))
        QTest::keyClick(edit, Qt::Key_Return);
}

void TestSoak::_stepSpinBox()
{
    const QList<QAbstractSpinBox *> boxes = _usable<QAbstractSpinBox>(_window->currentPage());
    if (boxes.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QAbstractSpinBox *box = _any(boxes);
    _window->currentPage()->ensureWidgetVisible(box);
    const Qt::Key keys[] = { Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown };
    if (_chance(50)) {
        const Qt::Key key = keys[_pick(4)];
        _trail << QStringLiteral("step key %1 in \"%2\"")
                      .arg(int(key))
                      .arg(box->parentWidget()->toolTip());
        QTest::keyClick(box, key);
        return;
    }
    const QString text = _any(_typed).left(12);
    _trail << QStringLiteral("type \"%1\" into spin box \"%2\"")
                  .arg(text, box->parentWidget()->toolTip());
    QTest::keySequence(box, QKeySequence::SelectAll);
    typeText(box, text);
    QTest::keyClick(box, _chance(50) ? Qt::Key_Return : Qt::Key_Tab);
}

void TestSoak::_toggleCheckBox()
{
    const QList<QCheckBox *> boxes = _usable<QCheckBox>(_window->currentPage());
    if (boxes.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QCheckBox *box = _any(boxes);
    _trail << QStringLiteral("toggle \"%1\"").arg(box->text());
    _window->currentPage()->ensureWidgetVisible(box);
    clickCheckBox(box);
}

void TestSoak::_chooseRadio()
{
    const QList<QRadioButton *> radios = _usable<QRadioButton>(_window->currentPage());
    if (radios.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QRadioButton *radio = _any(radios);
    _trail << QStringLiteral("choose \"%1\"").arg(radio->text());
    _window->currentPage()->ensureWidgetVisible(radio);
    clickRadioButton(radio);
}

void TestSoak::_editList()
{
    const QList<QListView *> lists = _usable<QListView>(_window->currentPage());
    if (lists.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QListView *list = _any(lists);
    QWidget *frame = list->parentWidget();
    _window->currentPage()->ensureWidgetVisible(list);
    const int rows = list->model() ? list->model()->rowCount() : 0;
    switch (_pick(3)) {
    case 0: {
        _trail << QStringLiteral("list \"%1\": Add").arg(frame->toolTip());
        QPushButton *add = pushButton(frame, QStringLiteral("Add"));
        if (add)
            QTest::mouseClick(add, Qt::LeftButton);
        break;
    }
    case 1: {
        if (rows == 0) {
            _trail << QStringLiteral("list \"%1\": empty, nothing to select").arg(frame->toolTip());
            break;
        }
        const int row = _pick(rows);
        _trail << QStringLiteral("list \"%1\": select row %2").arg(frame->toolTip()).arg(row);
        const QRect rect = list->visualRect(list->model()->index(row, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        break;
    }
    default: {
        QPushButton *remove = pushButton(frame, QStringLiteral("Delete"));
        _trail << QStringLiteral("list \"%1\": Delete%2")
                      .arg(frame->toolTip(),
                          remove && remove->isEnabled() ? QString()
                                                        : QStringLiteral(" (disabled)"));
        if (remove)
            QTest::mouseClick(remove, Qt::LeftButton);
        break;
    }
    }
}

void TestSoak::_editTLEs()
{
    const QList<QPlainTextEdit *> fields = _usable<QPlainTextEdit>(_window->currentPage());
    if (fields.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QPlainTextEdit *field = _any(fields);
    QWidget *frame = field->parentWidget();
    _window->currentPage()->ensureWidgetVisible(field);
    switch (_pick(4)) {
    case 0: {
        QPushButton *clear = pushButton(frame, QStringLiteral("Clear"));
        _trail << QStringLiteral("TLEs: Clear%1")
                      .arg(clear && clear->isEnabled() ? QString() : QStringLiteral(" (disabled)"));
        if (clear)
            QTest::mouseClick(clear, Qt::LeftButton);
        break;
    }
    case 1: {
        _trail << QStringLiteral("TLEs: Load from file..");
        if (QPushButton *load = pushButton(frame, QStringLiteral("Load from file..")))
            QTest::mouseClick(load, Qt::LeftButton);
        break;
    }
    default: {
        const QString text = _tleText();
        const bool whole = _chance(60);
        _trail << QStringLiteral("TLEs: paste %1 lines%2")
                      .arg(text.count(QLatin1Char('\n')) + 1)
                      .arg(whole ? QStringLiteral(" over all") : QString());
        QApplication::clipboard()->setText(text);
        if (whole)
            QTest::keySequence(field, QKeySequence::SelectAll);
        else
            QTest::keySequence(field, QKeySequence::MoveToEndOfDocument);
        QTest::keySequence(field, QKeySequence::Paste);
        break;
    }
    }
}

void TestSoak::_search()
{
    Filter *filter = _window->filter;
    if (_chance(30)) {
        _trail << QStringLiteral("search: clear the box");
        QTest::keySequence(filter, QKeySequence::SelectAll);
        QTest::keyClick(filter, Qt::Key_Backspace);
        return;
    }
    const QStringList queries = { QStringLiteral("e"), QStringLiteral("name"),
        QStringLiteral("Gain"), QStringLiteral("dir"), QStringLiteral("xyz"),
        QStringLiteral("mail"), QStringLiteral("ti") };
    const QString query = _any(queries);
    if (_chance(50)) {
        _trail << QStringLiteral("search: type \"%1\"").arg(query);
        typeText(filter, query);
        return;
    }
    _trail << QStringLiteral("search: paste \"%1\" over the box").arg(query);
    QApplication::clipboard()->setText(query);
    QTest::keySequence(filter, QKeySequence::SelectAll);
    QTest::keySequence(filter, QKeySequence::Paste);
}

void TestSoak::_showInfo()
{
    QList<QPushButton *> infos = _usable<QPushButton>(_window->currentPage());
    infos.erase(std::remove_if(infos.begin(), infos.end(),
                    [](QPushButton *b) { return b->text() != QLatin1String("?"); }),
        infos.end());
    if (infos.isEmpty()) {
        return _selectTreeItem(); // nothing of the kind here: the user goes elsewhere
    }
    QPushButton *info = _any(infos);
    _trail << QStringLiteral("info of \"%1\"").arg(info->parentWidget()->toolTip());
    _window->currentPage()->ensureWidgetVisible(info);
    QTest::mouseClick(info, Qt::LeftButton);
}

void TestSoak::_command()
{
    const QString path = _manager->getConfigPath();
    switch (_pick(8)) {
    case 0:
        _trail << QStringLiteral("New");
        QTest::mouseClick(_window->buttonNew, Qt::LeftButton);
        break;
    case 1:
    case 2:
        _trail << QStringLiteral("Open");
        QTest::mouseClick(_window->buttonOpen, Qt::LeftButton);
        break;
    case 3:
    case 4:
        _trail << QStringLiteral("Save%1").arg(
            _window->buttonSave->isEnabled() ? QString() : QStringLiteral(" (disabled)"));
        if (_window->buttonSave->isEnabled() && !path.isEmpty())
            _pending << SaveCheck { path, hostile::snapshot(_manager->getRootParameter()) };
        QTest::mouseClick(_window->buttonSave, Qt::LeftButton);
        break;
    case 5:
        _trail << QStringLiteral("Save As%1")
                      .arg(_window->buttonSaveAs->isEnabled() ? QString()
                                                              : QStringLiteral(" (disabled)"));
        QTest::mouseClick(_window->buttonSaveAs, Qt::LeftButton);
        break;
    case 6:
        _trail << QStringLiteral("Close%1").arg(
            _window->actClose->isEnabled() ? QString() : QStringLiteral(" (disabled)"));
        // As from the menu: a disabled entry can't be chosen.
        if (_window->actClose->isEnabled())
            _window->actClose->trigger();
        break;
    default:
        _trail << QStringLiteral("About");
        _window->actAbout->trigger();
        break;
    }
}

void TestSoak::_closeWindow()
{
    _trail << QStringLiteral("close the window");
    _manager->close();
    if (!_manager->isVisible()) {
        _note(QStringLiteral("closed, shown again"));
        QVERIFY(showActive(_manager.get()));
    }
}

// ------------------------------------------------------------------ answers

// Runs the answer from the event loop, not inside the answerer's timer, so
// that a box the answer raises can be answered in turn; a dialog that the
// answer did not close (an Ok refused) is cancelled.
void TestSoak::_finishLater(QWidget *modal, std::function<void()> action)
{
    QTimer::singleShot(0, modal, [modal, action] {
        action();
        if (modal->isVisible()) {
            if (auto *dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
        }
    });
}

void TestSoak::_answer(QWidget *modal)
{
    if (auto *box = qobject_cast<QMessageBox *>(modal))
        return _answerBox(box);
    if (auto *dialog = qobject_cast<QFileDialog *>(modal))
        return _answerFileDialog(dialog);
    if (auto *dialog = qobject_cast<DialogNew *>(modal))
        return _answerNew(dialog);
    if (auto *dialog = qobject_cast<DialogAddItem *>(modal))
        return _answerAddItem(dialog);
    _note(QStringLiteral("%1: closed").arg(QLatin1String(modal->metaObject()->className())));
    _finishLater(modal, [modal] {
        if (auto *dialog = qobject_cast<QDialog *>(modal))
            dialog->accept();
        else
            modal->close();
    });
}

void TestSoak::_answerBox(QMessageBox *box)
{
    const QList<QAbstractButton *> buttons = box->buttons();
    const bool escape = buttons.isEmpty() || _chance(15);
    QAbstractButton *button = escape ? nullptr : _any(buttons);
    const QString answer = button ? button->text() : QStringLiteral("Escape");
    _note(QStringLiteral("box \"%1\" \"%2\": %3")
              .arg(box->windowTitle(), box->text().left(60), answer));
    if (box->windowTitle() == QLatin1String("Error!")
        && box->text().startsWith(QLatin1String("XML is not created")))
        _errorBoxes << box->text();
    if (box->text().startsWith(QLatin1String("The current working version")))
        _updateSeen = true;
    // The question about unsaved edits: Yes saves the tree as it is now.
    if (button && box->standardButton(button) == QMessageBox::Yes
        && box->text().startsWith(QLatin1String("Some changes were not saved"))
        && !_manager->getConfigPath().isEmpty())
        _pending << SaveCheck { _manager->getConfigPath(),
            hostile::snapshot(_manager->getRootParameter()) };
    _finishLater(box, [box, button] {
        if (button)
            button->click();
        else
            QTest::keyClick(box, Qt::Key_Escape);
    });
}

void TestSoak::_answerFileDialog(QFileDialog *dialog)
{
    const QString title = dialog->windowTitle();
    if (_chance(20)) {
        _note(QStringLiteral("dialog \"%1\": Cancel").arg(title));
        return _finishLater(dialog, [dialog] { dialog->reject(); });
    }
    if (dialog->acceptMode() == QFileDialog::AcceptSave) {
        const QString path = _dir.filePath(QStringLiteral("saves/save-%1.%2")
                                               .arg(++_fileNumber)
                                               .arg(QLatin1String(_chance(80) ? "conf" : "xml")));
        _note(QStringLiteral("dialog \"%1\": %2").arg(title, path));
        _pending << SaveCheck { path, hostile::snapshot(_manager->getRootParameter()) };
        _saves << path;
        ModalAnswerer::acceptFileDialog(dialog, path);
        return;
    }
    if (dialog->fileMode() == QFileDialog::Directory
        || dialog->testOption(QFileDialog::ShowDirsOnly)) {
        _note(QStringLiteral("dialog \"%1\": %2").arg(title, _dir.path()));
        return _finishLater(
            dialog, [dialog, this] { ModalAnswerer::acceptDirectoryDialog(dialog, _dir.path()); });
    }
    QString path;
    if (title == QLatin1String("Open Config File"))
        path = _openCandidate();
    else if (title == QLatin1String("Open TLEs File"))
        path = _any(_tleFiles);
    else
        path = _any(_pool);
    _note(QStringLiteral("dialog \"%1\": %2").arg(title, path));
    ModalAnswerer::acceptFileDialog(dialog, path);
}

void TestSoak::_answerNew(DialogNew *dialog)
{
    const QList<QRadioButton *> radios = dialog->findChildren<QRadioButton *>();
    const bool cancel = radios.isEmpty() || _chance(20);
    const int index = _pick(radios.size());
    _note(cancel ? QStringLiteral("new: Cancel")
                 : QStringLiteral("new: service %1").arg(radios.at(index)->text()));
    _finishLater(dialog, [dialog, radios, cancel, index] {
        if (cancel)
            return dialog->reject();
        radios.at(index)->setChecked(true);
        if (QPushButton *ok = pushButton(dialog, QStringLiteral("&Ok")))
            ok->click();
    });
}

void TestSoak::_answerAddItem(DialogAddItem *dialog)
{
    const QString text = _any(_typed).left(30);
    const bool ok = _chance(75);
    _note(QStringLiteral("item \"%1\": %2").arg(text, QLatin1String(ok ? "Ok" : "Cancel")));
    _finishLater(dialog, [dialog, text, ok] {
        if (auto *field = dialog->findChild<QLineEdit *>())
            typeText(field, text);
        if (QPushButton *button = pushButton(dialog, QLatin1String(ok ? "&Ok" : "&Cancel")))
            button->click();
    });
}
