// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "managertestkit.h"

#include "app/control.h"
#include "app/manager.h"
#include "editors/dialognew.h"
#include "model/parameter.h"
#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "navigation/paramtitle.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStyle>
#include <QTest>

namespace ManagerTest {

namespace {

QStringList _entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::Files | QDir::NoDotAndDotDot);
}

bool _replaceDirectoryContent(
    const QString &dir, const QString &sourceDir, const QStringList &names)
{
    QDir target(dir);
    if (!target.exists() && !QDir().mkpath(dir))
        return false;
    for (const QString &old : _entries(dir)) {
        if (!target.remove(old))
            return false;
    }
    for (const QString &name : names) {
        if (!QFile::copy(sourceDir + QLatin1Char('/') + name, dir + QLatin1Char('/') + name))
            return false;
        // Copies keep the read-only bits of a read-only source tree.
        QFile::setPermissions(dir + QLatin1Char('/') + name,
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    }
    return true;
}

QDomElement _firstChild(const QDomElement &element, const QString &tag)
{
    return element.isNull() ? QDomElement() : element.firstChildElement(tag);
}

// The document must outlive the element: its nodes die with it.
QDomElement _elementAt(QDomDocument &document, const QString &path, const QString &elementPath)
{
    if (!document.setContent(readAll(path)))
        return QDomElement();
    QDomElement element = document.documentElement();
    for (const QString &key : elementPath.split(QLatin1Char('/')))
        element = _firstChild(element, key);
    return element;
}


} // namespace

// ---------------------------------------------------------------- files

QString appDir()
{
    return QCoreApplication::applicationDirPath();
}
QString defaultDir()
{
    return appDir() + QStringLiteral("/orvex/default");
}
QString confDir()
{
    return appDir() + QStringLiteral("/orvex/conf");
}
QString schemaPath()
{
    return defaultDir() + QStringLiteral("/schema-userconf.xsd");
}
QString fixture(const QString &name)
{
    return QStringLiteral(ORVEX_TEST_DATA_DIR "/app/") + name;
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        && file.write(bytes) == bytes.size();
}

QString copyInto(const QString &source, const QString &dir, const QString &name)
{
    const QString target
        = dir + QLatin1Char('/') + (name.isEmpty() ? QFileInfo(source).fileName() : name);
    QFile::remove(target);
    const QByteArray bytes = readAll(source);
    if (bytes.isEmpty() || !writeAll(target, bytes))
        return QString();
    return target;
}

bool installFixtureDefaults()
{
    return _replaceDirectoryContent(defaultDir(), QStringLiteral(ORVEX_TEST_DATA_DIR "/app"),
        { QStringLiteral("schema-userconf.xsd"), QStringLiteral("ALPHA-default.conf"),
            QStringLiteral("BETA-default.conf") });
}

bool installShippedDefaults()
{
    const QString shipped = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default");
    return _replaceDirectoryContent(defaultDir(), shipped, _entries(shipped));
}

bool installSchema(const QByteArray &schema)
{
    return writeAll(schemaPath(), schema);
}

QDomDocument fixtureSchema()
{
    QDomDocument document;
    document.setContent(readAll(fixture(QStringLiteral("schema-userconf.xsd"))));
    return document;
}

QList<QDomElement> rootDeclarations(const QDomDocument &schema)
{
    QDomElement sequence = schema.documentElement()
                               .firstChildElement(QStringLiteral("xs:element"))
                               .firstChildElement(QStringLiteral("xs:complexType"))
                               .firstChildElement(QStringLiteral("xs:sequence"));
    QList<QDomElement> declarations;
    for (QDomElement e = sequence.firstChildElement(QStringLiteral("xs:element")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("xs:element")))
        declarations.append(e);
    return declarations;
}

void setEnumeration(QDomElement declaration, const QStringList &values)
{
    QDomElement restriction = declaration.firstChildElement(QStringLiteral("xs:simpleType"))
                                  .firstChildElement(QStringLiteral("xs:restriction"));
    while (!restriction.firstChildElement().isNull())
        restriction.removeChild(restriction.firstChildElement());
    for (const QString &value : values) {
        QDomElement enumeration
            = restriction.ownerDocument().createElement(QStringLiteral("xs:enumeration"));
        enumeration.setAttribute(QStringLiteral("value"), value);
        restriction.appendChild(enumeration);
    }
}

QByteArray toBytes(const QDomDocument &document)
{
    return document.toByteArray(2);
}

QByteArray schemaWithVersions(const QStringList &versions)
{
    QDomDocument schema = fixtureSchema();
    setEnumeration(rootDeclarations(schema).at(0), versions);
    return toBytes(schema);
}

QByteArray configWith(const QString &version, const QString &service)
{
    QDomDocument document;
    document.setContent(readAll(fixture(QStringLiteral("alpha-current.conf"))));
    QDomElement root = document.documentElement();
    const QList<QPair<QString, QString>> changes
        = { { QStringLiteral("Version"), version }, { QStringLiteral("Service"), service } };
    for (const auto &change : changes) {
        QDomElement element = root.firstChildElement(change.first);
        if (change.second.isNull()) {
            root.removeChild(element);
            continue;
        }
        element.removeChild(element.firstChild());
        element.appendChild(document.createTextNode(change.second));
    }
    return document.toByteArray(1);
}

QString valueInFile(const QString &path, const QString &elementPath)
{
    QDomDocument document;
    const QDomElement element = _elementAt(document, path, elementPath);
    return element.isNull() ? QString() : element.text();
}

QStringList itemsInFile(const QString &path, const QString &elementPath)
{
    QStringList items;
    QDomDocument document;
    for (QDomElement e = _elementAt(document, path, elementPath).firstChildElement(); !e.isNull();
         e = e.nextSiblingElement())
        items.append(e.text());
    return items;
}

// ---------------------------------------------------------------- modal boxes

void Modals::chooseService(int index)
{
    handleWith([index](QWidget *widget) {
        auto *dialog = qobject_cast<DialogNew *>(widget);
        const QList<QRadioButton *> radios
            = dialog ? dialog->findChildren<QRadioButton *>() : QList<QRadioButton *>();
        if (!dialog || index >= radios.size()) {
            qWarning("Modals: no service %d in %s", index, widget->metaObject()->className());
            if (auto *other = qobject_cast<QDialog *>(widget))
                other->reject();
            return;
        }
        if (index >= 0)
            radios.at(index)->setChecked(true);
        for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
            if (button->text() == QLatin1String("&Ok"))
                button->click();
        }
    });
}

// ---------------------------------------------------------------- the window

namespace {

QAction *_action(const Manager *manager, const char *text)
{
    for (QAction *action :
        manager->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (action->text() == QLatin1String(text))
            return action;
    }
    return nullptr;
}

QPushButton *_button(const Control *control, const char *text)
{
    return control ? pushButton(control, QLatin1String(text)) : nullptr;
}

void _rec_rowTexts(const QAbstractItemModel *model, const QModelIndex &parent, QStringList &texts)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        texts << index.data().toString();
        _rec_rowTexts(model, index, texts);
    }
}

QModelIndex _rec_findRow(
    const QAbstractItemModel *model, const QModelIndex &parent, const QString &text)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (index.data().toString() == text)
            return index;
        const QModelIndex below = _rec_findRow(model, index, text);
        if (below.isValid())
            return below;
    }
    return QModelIndex();
}

} // namespace

Window::Window(Manager *m)
    : manager(m),
      actQuit(_action(m, "&Quit")),
      actClose(_action(m, "&Close")),
      actNew(_action(m, "&New")),
      actOpen(_action(m, "&Open")),
      actSave(_action(m, "&Save")),
      actSaveAs(_action(m, "S&ave As..")),
      actAbout(_action(m, "&About")),
      filter(m->findChild<Filter *>()),
      tree(m->findChild<ParamsTree *>()),
      pages(m->findChild<ParamsWidget *>()),
      heading(m->findChild<ParamTitle *>()),
      control(m->findChild<Control *>()),
      info(m->statusBar()->findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly)),
      buttonNew(_button(control, "&New")),
      buttonOpen(_button(control, "&Open")),
      buttonSave(_button(control, "&Save")),
      buttonSaveAs(_button(control, "S&ave As.."))
{ }

QList<QAction *> Window::actions() const
{
    return manager->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
}

QStringList Window::rowTexts() const
{
    QStringList texts;
    if (tree->model())
        _rec_rowTexts(tree->model(), QModelIndex(), texts);
    return texts;
}

ParamsArea *Window::currentPage() const
{
    return qobject_cast<ParamsArea *>(pages->currentWidget());
}

QString Window::headingText() const
{
    return static_cast<QLabel *>(heading)->text();
}

QString Window::infoText() const
{
    return info ? info->text() : QStringLiteral("<no label>");
}

QCheckBox *Window::checkBox(const QString &text) const
{
    if (!currentPage())
        return nullptr;
    for (QCheckBox *box : currentPage()->findChildren<QCheckBox *>()) {
        if (box->text() == text)
            return box;
    }
    return nullptr;
}

ParameterSimple *Window::parameter(const QString &keyPath) const
{
    Parameter *node = manager->getRootParameter();
    for (const QString &key : keyPath.split(QLatin1Char('/'))) {
        auto *complex = dynamic_cast<ParameterComplex *>(node);
        node = nullptr;
        if (!complex)
            return nullptr;
        for (Parameter *child : complex->getChildrenPtrs()) {
            if (child && child->getParameterKey() == key.toStdString())
                node = child;
        }
    }
    return dynamic_cast<ParameterSimple *>(node);
}

bool Window::selectRow(const QString &text) const
{
    if (!tree->model())
        return false;
    const QModelIndex index = _rec_findRow(tree->model(), QModelIndex(), text);
    if (!index.isValid())
        return false;
    tree->selectItem(index);
    return true;
}

QList<ParamsArea *> Window::searchPages() const
{
    QList<ParamsArea *> found;
    for (ParamsArea *page : pages->findChildren<ParamsArea *>()) {
        if (page->getAreaName() == QLatin1String("Search results"))
            found.append(page);
    }
    return found;
}

QString Window::wrongEnabledState(bool isOpened) const
{
    const QList<QPair<const char *, bool>> expected = {
        { "search box", filter->isEnabled() == isOpened },
        { "pages", pages->isEnabled() == isOpened },
        { "section tree", tree->isEnabled() == isOpened },
        { "action Save", actSave->isEnabled() == isOpened },
        { "action Save As", actSaveAs->isEnabled() == isOpened },
        { "action Close", actClose->isEnabled() == isOpened },
        { "button Save", buttonSave->isEnabled() == isOpened },
        { "button Save As", buttonSaveAs->isEnabled() == isOpened },
        { "action New", actNew->isEnabled() },
        { "action Open", actOpen->isEnabled() },
        { "action Quit", actQuit->isEnabled() },
        { "action About", actAbout->isEnabled() },
        { "button New", buttonNew->isEnabled() },
        { "button Open", buttonOpen->isEnabled() },
        { "button row", control->isEnabled() },
    };
    for (const auto &check : expected) {
        if (!check.second)
            return QStringLiteral("%1 has the wrong enabled state with the configuration %2")
                .arg(QLatin1String(check.first), QLatin1String(isOpened ? "open" : "closed"));
    }
    return QString();
}

std::unique_ptr<Manager> makeManager()
{
    return std::make_unique<Manager>();
}

bool showActive(QWidget *window)
{
    window->show();
    QApplication::setActiveWindow(window);
    return QTest::qWaitForWindowActive(window);
}

namespace {

void _clickIndicator(QAbstractButton *button, QStyle::PixelMetric metric)
{
    const int indicator = button->style()->pixelMetric(metric, nullptr, button);
    QTest::mouseClick(
        button, Qt::LeftButton, Qt::NoModifier, QPoint(indicator / 2 + 1, button->height() / 2));
}

} // namespace

void clickCheckBox(QCheckBox *box)
{
    _clickIndicator(box, QStyle::PM_IndicatorWidth);
}

void clickRadioButton(QRadioButton *button)
{
    _clickIndicator(button, QStyle::PM_ExclusiveIndicatorWidth);
}

QPushButton *pushButton(const QWidget *parent, const QString &text)
{
    for (QPushButton *button : parent->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

bool quitsApplication(const std::function<void()> &action)
{
    QSignalSpy aboutToQuit(qApp, &QCoreApplication::aboutToQuit);
    bool quitRequested = false;
    QTimer::singleShot(0, qApp, [&] {
        action();
        // Once the application has been told to quit, a nested loop returns at once.
        QEventLoop probe;
        QTimer::singleShot(0, &probe, [&probe] { probe.exit(1); });
        quitRequested = probe.exec() != 1;
        if (!quitRequested)
            QCoreApplication::exit(2);
    });
    const int result = QCoreApplication::exec();
    return quitRequested && result == 0 && aboutToQuit.count() == 1;
}

QString caption(const QString &path, bool modified)
{
    return path + QLatin1String(modified ? "*" : "") + QStringLiteral(" - ")
        + QLatin1String(kTitle);
}

// ---------------------------------------------------------------- fixture

ManagerFixture::ManagerFixture(bool showWindow) : _showWindow(showWindow) {}

ManagerFixture::~ManagerFixture() = default;

void ManagerFixture::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(installFixtureDefaults());
}

void ManagerFixture::init()
{
    _dir = new QTemporaryDir;
    QVERIFY(_dir->isValid());
    Modals modals;
    _manager = makeManager();
    _window = std::make_unique<Window>(_manager.get());
    VERIFY_MODALS_DONE(modals);
    if (_showWindow)
        QVERIFY(showActive(_manager.get()));
}

void ManagerFixture::cleanup()
{
    _window.reset();
    _manager.reset();
    delete _dir;
    _dir = nullptr;
}

void ManagerFixture::cleanupTestCase()
{
    QVERIFY(installShippedDefaults());
}

} // namespace ManagerTest
