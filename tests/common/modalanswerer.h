// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QMessageBox>

#include <functional>

class QFileDialog;

// Answers the modal boxes and dialogs that a call under test opens.
// Arm it with one answer per expected modal widget *before* the call; a timer
// finds QApplication::activeModalWidget(), records what it shows and gives
// the next answer. After the call the test asserts on seen(), or on done().
// A modal widget that stays up unanswered (none armed for two seconds, or an
// answer that did not close it within ten) is recorded as unexpected and
// rejected, so that a wrong expectation fails the test instead of hanging it.
class ModalAnswerer : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ModalAnswerer)

public:
    struct Seen
    {
        QString className;  // e.g. "QMessageBox", "QFileDialog", "DialogNew"
        QString title;      // window title
        QString text;       // message text of a box; empty for other dialogs
        QString directory;  // start directory of a file dialog
        QStringList nameFilters; // filters of a file dialog
        int buttons = 0;    // standard buttons of a box
        int defaultButton = 0;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
    };
    using Handler = std::function<void(QWidget *)>;

    explicit ModalAnswerer(QObject *parent = nullptr);
    ~ModalAnswerer() override;

    // Presses a standard button of the next message box.
    void pressButton(QMessageBox::StandardButton button);
    // Accepts the next file dialog with this file name (a path).
    void chooseFile(const QString &path);
    // Goes to `directory` and puts the names into the dialog's name field, quoted
    // when there are several; false for a dialog without a name field.
    static bool enterFileNames(QFileDialog *dialog, const QString &directory, const QStringList &names);
    // Rejects the next dialog of any kind (Escape on a box, Cancel on a dialog).
    void cancel();
    // Hands the next modal widget to a function of the test.
    void handleWith(Handler handler);
    // Hands every modal widget for which no answer is armed to this function,
    // for tests that can't tell in advance which boxes will come up.
    void handleAllWith(Handler handler) { _standing = std::move(handler); }

    const QList<Seen> &seen() const { return _seen; }
    int pending() const { return _handlers.size(); }
    // Answers still queued when the test ends are a test bug.
    bool allAnswered() const { return _handlers.isEmpty(); }
    // Modal widgets that came up and stayed with no answer for them.
    const QList<Seen> &unexpected() const { return _unexpected; }
    bool done() const { return allAnswered() && _unexpected.isEmpty(); }
    // Everything seen, unanswered and left over, for failure messages.
    QString report() const;

    static Seen describe(QWidget *modal);
    // Types the whole path into a file dialog's name field and accepts it
    // from the event loop, so that a box the dialog raises in accept() (the
    // question about replacing a file) finds the answerer free to answer it.
    // False, and the widget rejected, when it is no file dialog.
    static bool acceptFileDialog(QWidget *modal, const QString &path);
    // Accepts a directory dialog on this directory. A directory dialog takes
    // its current directory when no name is typed; the name field may still
    // hold the last part of a start directory that does not exist, so it is
    // emptied. False, and the widget rejected, when it is no file dialog.
    static bool acceptDirectoryDialog(QWidget *modal, const QString &dir);

private:
    void _poll();
    void _watch();

    QTimer _timer;
    QList<Handler> _handlers;
    Handler _standing;
    QList<Seen> _seen;
    QPointer<QWidget> _last;

    QTimer _watchdog;
    QPointer<QWidget> _candidate;
    int _ticks = 0;
    QList<Seen> _unexpected;
};

#define VERIFY_MODALS_DONE(modals) QVERIFY2((modals).done(), qPrintable((modals).report()))
