// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "app/manager.h"

#include "app/control.h"
#include "editors/dialognew.h"
#include "engine/orvexconfiglib.h"
#include "engine/textconv.h"
#include "model/parameter.h"
#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "navigation/paramtitle.h"

#include <orvex_version.h>

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

QString _toText(std::vector<std::string> const &lines)
{
    QString text;
    for (std::string const &line : lines)
        text += _toQString(line) + QLatin1String("\n");
    return text;
}

// Gathers the leaves and lists that search looks through, depth first in
// schema order; TLE lists are never searched.
static void _rec_selectSimpleParams(QList<ParameterSimple *> &list, const QString &service,
                                    const ParameterComplex *parent)
{
    for (ParameterSimple *leaf : parent->getVisibleLeaves(_utf8(service)))
        list.append(leaf);
}

// ------------------------------------------------------------- construction

Manager::Manager() : QMainWindow(nullptr)
{
    _setup();
    _init();
    _connect();
    _start();
}

Manager::~Manager()
{
    // The parameter tree lives until the process ends; nothing is freed by hand.
    _destroy();
}

void Manager::_destroy() {}

void Manager::_setup()
{
    _title = QString();
    _version = Version();
    _schemaPath = QString();
    _configPath = QString();
    _defaultDir = QString();
    _confDir = QString();
    _modifiedMark = QString();
    _isSaved = true;
    _configVersion = Version();
    _newestVersion = Version();
    _suppVersions.clear();
    _service = QString();
    _serviceList.clear();
    _rootParameter = nullptr;
    _simpleParamsList.clear();
    _minSize = QSize(900, 500);
    _actQuit = _actClose = _actNew = _actOpen = _actSave = _actSaveAs = _actAbout = nullptr;
    _centralWidget = nullptr;
    _filter = nullptr;
    _paramsTree = nullptr;
    _paramTitle = nullptr;
    _paramsWidget = nullptr;
    _control = nullptr;
    _infoLabel = nullptr;
}

void Manager::_init()
{
    _title = QStringLiteral("Orvex Config Manager");
    _version.init(ORVEX_VERSION);

    setWindowIcon(QIcon(QStringLiteral(":/graphics/icon.ico")));
    setWindowTitle(_title);
    setMinimumSize(_minSize);
    resize(_minSize);

    _actQuit = new QAction(tr("&Quit"), this);
    _actQuit->setShortcut(QKeySequence::Quit);
    _actClose = new QAction(tr("&Close"), this);
    _actClose->setShortcut(QKeySequence::Close);
    _actNew = new QAction(tr("&New"), this);
    _actNew->setShortcut(QKeySequence::New);
    _actOpen = new QAction(tr("&Open"), this);
    _actOpen->setShortcut(QKeySequence::Open);
    _actSave = new QAction(tr("&Save"), this);
    _actSave->setShortcut(QKeySequence::Save);
    _actSaveAs = new QAction(tr("S&ave As.."), this);
    _actSaveAs->setShortcut(QKeySequence::SaveAs);
    _actAbout = new QAction(tr("&About"), this);

    _centralWidget = new QWidget(this);
    auto *leftPane = new QWidget();
    auto *rightPane = new QWidget();
    _filter = new Filter(leftPane);
    _paramsTree = new ParamsTree(leftPane);
    _paramTitle = new ParamTitle(rightPane);
    _paramsWidget = new ParamsWidget(rightPane);
    _control = new Control(rightPane);
    _infoLabel = new QLabel(this);

    auto *leftLayout = new QVBoxLayout(leftPane);
    leftLayout->addWidget(_filter, 0);
    leftLayout->addWidget(_paramsTree, 1);
    auto *rightLayout = new QVBoxLayout(rightPane);
    rightLayout->addWidget(_paramTitle, 0);
    rightLayout->addWidget(_paramsWidget, 1);
    rightLayout->addWidget(_control, 0);

    auto *grid = new QGridLayout(_centralWidget);
    auto *splitter = new QSplitter(Qt::Horizontal);
    splitter->setParent(_centralWidget);
    splitter->addWidget(leftPane);
    splitter->addWidget(rightPane);
    grid->addWidget(splitter, 0, 0);
    setCentralWidget(_centralWidget);

    QMenu *fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(_actNew);
    fileMenu->addAction(_actOpen);
    fileMenu->addAction(_actClose);
    fileMenu->addSeparator();
    fileMenu->addAction(_actSave);
    fileMenu->addAction(_actSaveAs);
    fileMenu->addSeparator();
    fileMenu->addAction(_actQuit);
    QMenu *helpMenu = menuBar()->addMenu(tr("&Help"));
    helpMenu->addAction(_actAbout);

    statusBar()->addWidget(_infoLabel, 0);
}

// The order of these connections is the order of effects: every signal is a
// direct call, so sl_configOpened runs before Control's slot, and the page
// switch of sl_treeItemSelected runs before the search box is cleared.
void Manager::_connect()
{
    connect(_actQuit, SIGNAL(triggered()), this, SLOT(sl_quit()));
    connect(_actClose, SIGNAL(triggered()), this, SLOT(sl_close()));
    connect(_actNew, SIGNAL(triggered()), this, SLOT(sl_newc()));
    connect(_actOpen, SIGNAL(triggered()), this, SLOT(sl_open()));
    connect(_actSave, SIGNAL(triggered()), this, SLOT(sl_save()));
    connect(_actSaveAs, SIGNAL(triggered()), this, SLOT(sl_saveAs()));
    connect(_actAbout, SIGNAL(triggered()), this, SLOT(sl_about()));
    _control->connectAct(_actNew, _actOpen, _actSave, _actSaveAs);
    connect(this, SIGNAL(sig_configOpened(bool)), this, SLOT(sl_configOpened(bool)));
    connect(this, SIGNAL(sig_configOpened(bool)), _control, SLOT(sl_configOpened(bool)));
    connect(this, SIGNAL(sig_configOpened()), _paramsTree, SIGNAL(sig_valuesUpdate()));
    connect(_paramsTree, SIGNAL(sig_parametersChenged()), this, SLOT(sl_parametersChenged()));
    connect(_paramsTree, SIGNAL(sig_itemSelected(const QModelIndex &)), this,
            SLOT(sl_treeItemSelected(const QModelIndex &)));
    connect(_filter, SIGNAL(sig_searchQuery(const QString &)), this,
            SLOT(sl_searchAreaUpdate(const QString &)));
    connect(_filter, SIGNAL(sig_reset(bool)), this, SLOT(sl_resetWidgets(bool)));
    connect(_paramsTree, SIGNAL(sig_itemSelected(const QModelIndex &)), _filter,
            SLOT(sl_textForcedCleared()));
}

void Manager::_start()
{
    _initPaths();
    _loadXSD();
    // Without a schema there is no tree to walk; the box has been shown and
    // main ends the process before any window appears.
    if (!_rootParameter)
        return;
    _initSimpleParamsList();
    _initServiceListAndsuppVersions();
    _initAreasAndParamsWidgets(); // first build, with no service yet

    if (!_configPath.isEmpty()) {
        if (_loadXML()) {
            _initAreasAndParamsWidgets();
            emit sig_configOpened(true);
            return;
        }
        _configPath = QString();
    }
    emit sig_configOpened(false);
}

void Manager::_initPaths()
{
    const QString base = QCoreApplication::applicationDirPath();
    _defaultDir = base + QStringLiteral("/orvex/default");
    _confDir = base + QStringLiteral("/orvex/conf");
    _schemaPath = base + QStringLiteral("/orvex/default/schema-userconf.xsd");
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 1)
        _configPath = arguments.at(1); // further arguments are ignored
}

void Manager::_loadXSD()
{
    std::vector<std::string> errors;
    const int result = OrvexConfigLib::loadXSD(errors, _rootParameter, _utf8(_schemaPath));
    if (result == 2)
        QMessageBox::critical(this, QStringLiteral("Open error"), _toText(errors));
    else if (result == 1)
        QMessageBox::warning(this, QStringLiteral("Warning!"), _toText(errors));
}

// -------------------------------------------------- services and versions

void Manager::_initServiceListAndsuppVersions()
{
    const std::vector<Parameter *> children = _rootParameter->getChildrenPtrs();
    auto fail = [this](const char *text) {
        QMessageBox::critical(this, QStringLiteral("Open error"), QString::fromLatin1(text));
    };
    const char *versionsFail = "Init List of config versions fail";
    const char *servicesFail = "Init Service List fail";

    if (children.size() < 4)
        return fail("Init Service lsist And Version fail");
    if (!children[0] || children[0]->getParameterKey() != "Version")
        return fail(versionsFail);
    if (children[0]->getGlobalType() != Parameter::GlobalType::Simple)
        return fail(versionsFail);
    if (!children[1] || children[1]->getParameterKey() != "Service")
        return fail(servicesFail);
    if (children[1]->getGlobalType() != Parameter::GlobalType::Simple)
        return fail(servicesFail);

    auto *versionParam = dynamic_cast<ParameterSimple *>(children[0]);
    auto *serviceParam = dynamic_cast<ParameterSimple *>(children[1]);
    if (!versionParam || !versionParam->hasEnumeration())
        return fail(versionsFail);

    _suppVersions.clear();
    for (std::string const &text : versionParam->getFasets().enumeration) {
        const Version version(text);
        // Equal versions: the first keeps its text (pinned by equalVersionsKeepFirstText).
        if (_newestVersion < version)
            _newestVersion = version;
        _suppVersions.append(version);
    }

    if (!serviceParam || !serviceParam->hasEnumeration())
        return fail(servicesFail);

    _serviceList.clear();
    for (std::string const &text : serviceParam->getFasets().enumeration)
        _serviceList.append(_toQString(text));
}

// The leaf that the checks after a load test: null without a tree, with fewer
// than three children at the root, or when the child is not that leaf.
static ParameterSimple *_checkedRootLeaf(const ParameterComplex *root, std::size_t index,
                                         const std::string &key)
{
    if (!root || root->getChildrenPtrs().size() < 3)
        return nullptr;
    return root->getSimpleChild(index, key);
}

// The version and service are read from the tree, not from the file: a text
// that the enumeration refused never got into the tree, so after a good file
// the previous values are tested again and pass. That is how it is meant
// (pinned by unlistedValuesPassAfterGoodFile).
bool Manager::_checkAndInitVersion()
{
    ParameterSimple *versionParam = _checkedRootLeaf(_rootParameter, 0, "Version");
    if (!versionParam)
        return false;
    const Version version(versionParam->getValue());
    for (Version const &supported : _suppVersions) {
        if (supported == version) {
            _configVersion = version;
            return true;
        }
    }
    return false;
}

bool Manager::_checkAndInitService()
{
    ParameterSimple *serviceParam = _checkedRootLeaf(_rootParameter, 1, "Service");
    if (!serviceParam)
        return false;
    const QString service = _toQString(serviceParam->getValue());
    for (QString const &listed : _serviceList) {
        if (QString::compare(listed, service, Qt::CaseSensitive) == 0) {
            _service = service;
            return true;
        }
    }
    return false;
}

// ------------------------------------------------------- opening, creating

bool Manager::_loadXML()
{
    if (_configPath.isEmpty())
        return false;

    // The values go into the tree at once, before any test; nothing is reset.
    std::vector<std::string> errors;
    if (OrvexConfigLib::loadXML_knStruct(errors, _rootParameter, _utf8(_configPath)) == 2) {
        QMessageBox::warning(this, QStringLiteral("Error!"), _toText(errors));
        return false;
    }
    // Remarks of a partial load (nodes not found) are dropped unseen.

    if (!_checkAndInitVersion()) {
        QMessageBox::critical(this, QStringLiteral("Error!"),
                              QStringLiteral("Fail to check config version"));
        return false;
    }
    if (!_checkAndInitService()) {
        QMessageBox::critical(this, QStringLiteral("Error!"),
                              QStringLiteral("Fail to check config service"));
        return false;
    }

    if (_configVersion != _newestVersion) {
        // The user is told, not asked: the box has only Ok.
        QMessageBox::warning(this, QStringLiteral("Warning!"),
                             QStringLiteral("The current working version of the user config is ")
                                 + _toQString(_newestVersion.getString())
                                 + QStringLiteral(".\nYou are loaading an oldest version ")
                                 + _toQString(_configVersion.getString())
                                 + QStringLiteral(".\nThe manager try to update your config file."));
        _updateConfigVersion();
    }
    return true;
}

void Manager::sl_open()
{
    if (!_isSaved && !_askToSave())
        return;

    const QString fileName = QFileDialog::getOpenFileName(
        this, tr("Open Config File"), _confDir,
        tr("Orvex Config File (*.conf);; XML file (*.xml);; All files (*)"));
    if (fileName.isNull())
        return;

    const QString oldPath = _configPath;
    _configPath = QDir::toNativeSeparators(fileName);
    if (!_loadXML()) {
        // A failed open closes what was open, and the old path stays in the
        // title (pinned by refusedFileLeavesOldPathInTitleWithWidgetsDisabled).
        _configPath = oldPath;
        emit sig_configOpened(false);
        return;
    }
    _initAreasAndParamsWidgets();
    emit sig_configOpened(true);
}

void Manager::sl_newc()
{
    if (!_isSaved && !_askToSave())
        return;

    // Kept as a hidden child of the window after use.
    auto *dialog = new DialogNew(_serviceList, this);
    if (dialog->exec() != QDialog::Accepted)
        return;
    const int index = dialog->getServiceIndex();

    const QString oldPath = _configPath;
    _configPath = _defaultDir + QStringLiteral("/") + _serviceList.value(index)
                  + QStringLiteral("-default.conf");
    if (!_loadXML()) {
        _configPath = oldPath;
        emit sig_configOpened(false);
        return;
    }
    // The service is the one the default file states, not the dialog's choice.
    _configPath = QString();
    _initAreasAndParamsWidgets();
    emit sig_configOpened(true);
}

// ------------------------------------------------------------ version update

// The default configuration supplies the values of the current schema, the
// user's file is laid over it, and the result is written back over the file.
// No backup is kept and no line of the loads is shown.
void Manager::_updateConfigVersion()
{
    std::vector<std::string> errors;
    const QString defaultPath = _defaultDir + QStringLiteral("/") + _service
                                + QStringLiteral("-default.conf");
    OrvexConfigLib::loadXML_knStruct(errors, _rootParameter, _utf8(defaultPath));
    OrvexConfigLib::loadXML_knStruct(errors, _rootParameter, _utf8(_configPath));
    _configVersion = _newestVersion;
    // A version text that the schema writes in another form than the
    // normalised one is refused here without a word.
    if (auto *versionParam = dynamic_cast<ParameterSimple *>(_rootParameter->getChildrenPtrs().front()))
        versionParam->setValue(_configVersion.getString());
    sl_save();
}

// ---------------------------------------------------------- saving, closing

bool Manager::_writeXML()
{
    std::vector<std::string> errors;
    const int result = OrvexConfigLib::writeXML(errors, _rootParameter, _utf8(_configPath));
    if (result == 2) {
        QMessageBox::warning(this, QStringLiteral("Error!"), _toText(errors));
        return false;
    }
    if (result == 1)
        QMessageBox::warning(this, QStringLiteral("Warning!"), _toText(errors));
    return true;
}

void Manager::sl_save()
{
    if (_configPath.isNull()) {
        sl_saveAs();
        return;
    }
    if (_writeXML())
        sl_configSaved(true);
}

void Manager::sl_saveAs()
{
    const QString fileName =
        QFileDialog::getSaveFileName(this, tr("Save Config File"), _confDir,
                                     tr("Orvex Config File (*.conf);; XML file (*.xml)"));
    if (fileName.isNull())
        return;

    // Unlike Open, the name is taken as the dialog gives it.
    const QString oldPath = _configPath;
    _configPath = fileName;
    if (_writeXML())
        sl_configOpened(true); // called directly: refresh, saved, first section
    else
        _configPath = oldPath;
}

// Yes returns true whatever became of the save; callers go on regardless.
bool Manager::_askToSave()
{
    const QMessageBox::StandardButton answer = QMessageBox::warning(
        this, QStringLiteral("Warning!"),
        tr("Some changes were not saved.\nDo you want to save the config file?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes) {
        sl_save();
        return true;
    }
    return answer == QMessageBox::No;
}

void Manager::sl_close()
{
    if (!_isSaved && !_askToSave())
        return;
    emit sig_configOpened(false);
    _configPath = QString();
    sl_captionUpdate();
}

void Manager::sl_quit()
{
    if (!_isSaved && !_askToSave())
        return;
    QCoreApplication::quit();
}

void Manager::closeEvent(QCloseEvent *event)
{
    if (_isSaved)
        return;
    if (_askToSave())
        event->accept();
    else
        event->ignore();
}

// --------------------------------------------------------- search and about

void Manager::_initSimpleParamsList()
{
    // Built once with no service: only parameters outside every service
    // restriction can be found by search, whichever service is open later.
    _rec_selectSimpleParams(_simpleParamsList, _service, _rootParameter);
}

// The results page is connected to nothing: no refresh reaches it, and an
// edit on it does not mark the configuration as modified.
void Manager::sl_searchAreaUpdate(const QString &filter)
{
    _paramsTree->unselectItems();
    auto *area = new ParamsArea(_simpleParamsList, filter, QStringLiteral("Search results"), nullptr);
    _paramsWidget->setNewSearchArea(area);
    _paramsWidget->activeteSearchArea();
    _paramTitle->setText(QStringLiteral("Search results"));
}

void Manager::sl_about()
{
    QMessageBox::about(this, QStringLiteral("About"),
                       _title + QStringLiteral("\nVersion: ") + _toQString(_version.getString())
                           + QStringLiteral("\n\nDeveloped using the Qt5 C++ library"));
}

// ------------------------------------------------------------- window state

void Manager::_initAreasAndParamsWidgets()
{
    _paramsWidget->setAreas(_paramsTree->createAreas(_rootParameter, _service));
}

void Manager::sl_configOpened(bool isOpened)
{
    if (isOpened)
        emit sig_configOpened(); // every page reloads its editors from the tree
    _filter->setEnabled(isOpened);
    _paramsWidget->setEnabled(isOpened);
    _paramsTree->setEnabled(isOpened);
    _actSave->setEnabled(isOpened);
    _actSaveAs->setEnabled(isOpened);
    _actClose->setEnabled(isOpened);
    // After the refresh, which may itself have marked edits: the state is saved.
    sl_configSaved(true);
    sl_infoUpdate(isOpened);
    sl_resetWidgets(isOpened);
}

void Manager::sl_treeItemSelected(const QModelIndex &index)
{
    _paramsWidget->activeteArea(index);
    if (ParamsArea *area = _paramsWidget->getAreaPtr(index))
        _paramTitle->setText(area->getAreaName());
    else
        _paramTitle->setText(QString());
    emit _paramsTree->sig_valuesUpdate();
}

void Manager::sl_parametersChenged() { sl_configSaved(false); }

void Manager::sl_configSaved(bool isSaved)
{
    _isSaved = isSaved;
    _modifiedMark = isSaved ? QString(QLatin1String("")) : QStringLiteral("*");
    sl_captionUpdate();
}

void Manager::sl_captionUpdate()
{
    if (!_configPath.isEmpty())
        setWindowTitle(_configPath + _modifiedMark + QStringLiteral(" - ") + _title);
    else
        setWindowTitle(_title);
}

void Manager::sl_infoUpdate(bool isOpened)
{
    if (!isOpened) {
        _infoLabel->setText(QString());
        return;
    }
    QString text;
    if (_configVersion != Version())
        text += QStringLiteral("Config version: ") + _toQString(_configVersion.getString())
                + QLatin1Char('\t');
    if (!_service.isEmpty())
        text += QStringLiteral("Service: ") + _service;
    _infoLabel->setText(text);
}

void Manager::sl_resetWidgets(bool isOpened)
{
    if (isOpened) {
        _paramsTree->selectItem(_paramsTree->getFirstIndexItem());
        return;
    }
    _paramsTree->unselectItems();
    _paramTitle->setEmptyText();
    _paramsWidget->activeteEmptyArea();
}
