// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/version.h"

#include <QList>
#include <QMainWindow>
#include <QModelIndex>
#include <QSize>
#include <QString>

#include <string>
#include <vector>

class QAction;
class QCloseEvent;
class QLabel;
class Control;
class Filter;
class ParamsTree;
class ParamsWidget;
class ParamTitle;
class ParameterComplex;
class ParameterSimple;

// The one main window, and the controller of a configuration's life: it
// finds the files, has the engine build the parameter tree once, and runs
// new, open, save, close, search and about.
class Manager : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY(Manager)

public:
    Manager();
    ~Manager() override;

    // False when the schema was refused at start: the window must not be shown.
    bool hasSchema() const { return _rootParameter != nullptr; }

    // Read-only views for the tests of start-up and loading.
    ParameterComplex *getRootParameter() const { return _rootParameter; }
    QString getConfigPath() const { return _configPath; }
    QString getService() const { return _service; }
    Version getConfigVersion() const { return _configVersion; }
    Version getNewestVersion() const { return _newestVersion; }
    QList<Version> getSuppVersions() const { return _suppVersions; }
    QList<QString> getServiceList() const { return _serviceList; }
    bool isSaved() const { return _isSaved; }
    QList<ParameterSimple *> getSimpleParamsList() const { return _simpleParamsList; }

signals:
    void sig_configOpened();
    void sig_configOpened(bool);

public slots:
    void sl_quit();
    void sl_close();
    void sl_newc();
    void sl_open();
    void sl_save();
    void sl_saveAs();
    void sl_about();
    void sl_parametersChenged();
    void sl_configSaved(bool isSaved);
    void sl_configOpened(bool isOpened);
    void sl_treeItemSelected(const QModelIndex &index);
    void sl_captionUpdate();
    void sl_resetWidgets(bool isOpened);
    void sl_infoUpdate(bool isOpened);
    void sl_searchAreaUpdate(const QString &filter);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void _setup();
    void _init();
    void _connect();
    void _start();
    void _destroy();
    void _initPaths();
    void _loadXSD();
    void _initSimpleParamsList();
    void _initServiceListAndsuppVersions();
    void _initAreasAndParamsWidgets();
    bool _checkAndInitVersion();
    bool _checkAndInitService();
    void _updateConfigVersion();
    bool _loadXML();
    bool _writeXML();
    bool _askToSave();

    QString _title;
    Version _version;
    QString _schemaPath;
    QString _configPath;
    QString _defaultDir;
    QString _confDir;
    QString _modifiedMark;
    bool _isSaved;
    Version _configVersion;
    Version _newestVersion;
    QList<Version> _suppVersions;
    QString _service;
    QList<QString> _serviceList;
    ParameterComplex *_rootParameter;
    QList<ParameterSimple *> _simpleParamsList;
    QSize _minSize;
    QAction *_actQuit;
    QAction *_actClose;
    QAction *_actNew;
    QAction *_actOpen;
    QAction *_actSave;
    QAction *_actSaveAs;
    QAction *_actAbout;
    QWidget *_centralWidget;
    Filter *_filter;
    ParamsTree *_paramsTree;
    ParamTitle *_paramTitle;
    ParamsWidget *_paramsWidget;
    Control *_control;
    QLabel *_infoLabel;
};

// Joins the engine's lines into one text, a line break behind each.
QString _toText(std::vector<std::string> const &lines);
