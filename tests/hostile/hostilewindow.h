#pragma once

// Answers and records the boxes and file dialogs of the main window, and
// rejects any modal widget that nobody expected, so that a wrong
// expectation fails the case instead of hanging it.

#include "modalanswerer.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>

namespace hostile {

class Boxes : public ModalAnswerer
{
public:
    Boxes()
    {
        _watchdog.setInterval(50);
        QObject::connect(&_watchdog, &QTimer::timeout, [this] { _watch(); });
        _watchdog.start();
    }

    // Types the whole path into the dialog's name field and accepts, so the
    // dialog returns exactly this path wherever it stands.
    void choose(QString const &path)
    {
        handleWith([path](QWidget *widget) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            auto *name
                = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
            if (!name) {
                if (auto *other = qobject_cast<QDialog *>(widget))
                    other->reject();
                return;
            }
            name->setText(path);
            // Queued, so that a box the dialog raises in accept() (the question
            // about replacing a file) finds the answerer free to answer it.
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
    }

    QList<Seen> const &unexpected() const { return _unexpected; }
    bool done() const { return allAnswered() && _unexpected.isEmpty(); }

    // Class and title of every modal widget, then its text: for messages.
    QString report() const
    {
        QStringList lines;
        for (Seen const &seen : seen())
            lines << QStringLiteral("answered %1 \"%2\": %3")
                         .arg(seen.className, seen.title, seen.text);
        for (Seen const &seen : _unexpected)
            lines << QStringLiteral("NOT EXPECTED %1 \"%2\": %3")
                         .arg(seen.className, seen.title, seen.text);
        if (pending() > 0)
            lines << QStringLiteral("%1 answer(s) never used").arg(pending());
        return lines.join(QLatin1Char('\n'));
    }

private:
    // A modal widget that stays up: with no answer left for it after two
    // seconds, or after ten whatever is left (an answer that didn't close it).
    void _watch()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible()) {
            _candidate = nullptr;
            return;
        }
        if (modal != _candidate) {
            _candidate = modal;
            _ticks = 0;
            return;
        }
        ++_ticks;
        if (_ticks < 40 || (pending() > 0 && _ticks < 200))
            return;
        _unexpected.append(describe(modal));
        _candidate = nullptr;
        if (auto *dialog = qobject_cast<QDialog *>(modal))
            dialog->reject();
        else
            modal->close();
    }

    QTimer _watchdog;
    QPointer<QWidget> _candidate;
    int _ticks = 0;
    QList<Seen> _unexpected;
};

#define HOSTILE_VERIFY_BOXES_DONE(boxes) QVERIFY2((boxes).done(), qPrintable((boxes).report()))

// The window's action with this text, such as "&Save".
inline QAction *action(QMainWindow const *window, QString const &text)
{
    for (QAction *candidate : window->findChildren<QAction *>()) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

inline QString caption(QString const &path)
{
    return path + QStringLiteral(" - Orvex Config Manager");
}

} // namespace hostile
