// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// The soak of the window: the random user, its answers to every box and
// dialog, and the checks after each of its actions.

#include "managertestkit.h"
#include "treesnapshot.h"

#include "app/manager.h"

#include <QList>
#include <QObject>
#include <QRandomGenerator>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class DialogAddItem;
class DialogNew;
class QFileDialog;
class QMessageBox;
class QWidget;

// A file whose tree must equal the window's as it was when it was written.
struct SaveCheck
{
    QString path;
    hostile::Snapshot values;
};

class TestSoak : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void windowKeepsItsStatesThroughRandomUserActions();
    void cleanupTestCase();

private:
    // ---- the generator
    int _pick(int count) { return count > 0 ? int(_rng.bounded(quint32(count))) : 0; }
    bool _chance(int percent) { return _pick(100) < percent; }
    template <typename T> T _any(const QList<T> &list) { return list.at(_pick(list.size())); }
    void _note(const QString &what) { _trail.last() += QStringLiteral(" | ") + what; }

    // ---- the pool of files
    void _makePool();
    QString _openCandidate();
    QString _tleText();

    // ---- actions
    void _act();
    void _selectTreeItem();
    void _typeIntoLineEdit();
    void _stepSpinBox();
    void _toggleCheckBox();
    void _chooseRadio();
    void _editList();
    void _editTLEs();
    void _search();
    void _showInfo();
    void _command();
    void _closeWindow();

    // ---- answers to modal widgets
    void _answer(QWidget *modal);
    void _answerBox(QMessageBox *box);
    void _answerFileDialog(QFileDialog *dialog);
    void _answerNew(DialogNew *dialog);
    void _answerAddItem(DialogAddItem *dialog);
    void _finishLater(QWidget *modal, std::function<void()> action);

    // ---- checks
    QString _stateProblem() const;
    QString _checkSaves();
    void _fail(const QString &why);

    QRandomGenerator _rng;
    QTemporaryDir _dir;
    std::unique_ptr<Manager> _manager;
    std::unique_ptr<ManagerTest::Window> _window;
    std::unique_ptr<ManagerTest::Modals> _modals;
    QStringList _pool;
    QStringList _saves;
    QStringList _tleFiles;
    QStringList _catalog;
    int _fileNumber = 0;
    QStringList _trail;
    QList<SaveCheck> _pending;
    bool _updateSeen = false;
    bool _updateWritten = false;
    QStringList _errorBoxes;
};
