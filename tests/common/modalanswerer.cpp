// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "modalanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QStringList>
#include <QPushButton>

ModalAnswerer::ModalAnswerer(QObject *parent) : QObject(parent)
{
    _timer.setInterval(5);
    connect(&_timer, &QTimer::timeout, this, &ModalAnswerer::_poll);
    _timer.start();
    _watchdog.setInterval(50);
    connect(&_watchdog, &QTimer::timeout, this, &ModalAnswerer::_watch);
    _watchdog.start();
}

ModalAnswerer::~ModalAnswerer() = default;

ModalAnswerer::Seen ModalAnswerer::describe(QWidget *modal)
{
    Seen s;
    s.className = QString::fromLatin1(modal->metaObject()->className());
    s.title = modal->windowTitle();
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        s.text = box->text();
        s.buttons = int(box->standardButtons());
        if (box->defaultButton())
            s.defaultButton = int(box->standardButton(box->defaultButton()));
        s.icon = box->icon();
    } else if (auto *fd = qobject_cast<QFileDialog *>(modal)) {
        s.directory = fd->directory().absolutePath();
        s.nameFilters = fd->nameFilters();
    }
    return s;
}

namespace {

QLineEdit *_fileNameEdit(QWidget *modal)
{
    auto *dialog = qobject_cast<QFileDialog *>(modal);
    auto *name = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
    if (!name) {
        qWarning("ModalAnswerer: expected a file dialog, got %s", modal->metaObject()->className());
        if (auto *other = qobject_cast<QDialog *>(modal))
            other->reject();
    }
    return name;
}

} // namespace

bool ModalAnswerer::acceptFileDialog(QWidget *modal, const QString &path)
{
    QLineEdit *name = _fileNameEdit(modal);
    if (!name)
        return false;
    name->setText(path);
    QMetaObject::invokeMethod(modal, "accept", Qt::QueuedConnection);
    return true;
}

bool ModalAnswerer::acceptDirectoryDialog(QWidget *modal, const QString &dir)
{
    QLineEdit *name = _fileNameEdit(modal);
    if (!name)
        return false;
    static_cast<QFileDialog *>(modal)->setDirectory(dir);
    name->clear();
    static_cast<QDialog *>(modal)->accept(); // QFileDialog::accept is protected
    return true;
}

void ModalAnswerer::pressButton(QMessageBox::StandardButton button)
{
    handleWith([button](QWidget *w) {
        auto *box = qobject_cast<QMessageBox *>(w);
        if (!box) {
            qWarning("ModalAnswerer: expected a message box, got %s", w->metaObject()->className());
            if (auto *d = qobject_cast<QDialog *>(w))
                d->reject();
            return;
        }
        if (QAbstractButton *b = box->button(button))
            b->click();
        else
            box->done(button);
    });
}

void ModalAnswerer::chooseFile(const QString &path)
{
    handleWith([path](QWidget *w) {
        auto *fd = qobject_cast<QFileDialog *>(w);
        const QFileInfo info(path);
        if (!fd || !enterFileNames(fd, info.absolutePath(), {info.fileName()})) {
            qWarning("ModalAnswerer: expected a file dialog, got %s", w->metaObject()->className());
            if (auto *d = qobject_cast<QDialog *>(w))
                d->reject();
            return;
        }
        // accept() of a save dialog may ask about overwriting; the test
        // chooses paths where that question does not arise.
        static_cast<QDialog *>(fd)->accept(); // QFileDialog::accept is protected
    });
}

bool ModalAnswerer::enterFileNames(QFileDialog *dialog, const QString &directory, const QStringList &names)
{
    // selectFile() leaves the name field alone once it has focus, and when the
    // window gets it depends on the window system; so the names go into the
    // field itself, whenever the answer comes.
    auto *nameEdit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!nameEdit)
        return false;
    dialog->setDirectory(directory);
    QStringList typed = names;
    if (typed.size() > 1) {
        for (QString &name : typed)
            name = QLatin1Char('"') + name + QLatin1Char('"');
    }
    nameEdit->setText(typed.join(QLatin1Char(' ')));
    return true;
}

void ModalAnswerer::cancel()
{
    handleWith([](QWidget *w) {
        if (auto *box = qobject_cast<QMessageBox *>(w)) {
            if (QAbstractButton *b = box->button(QMessageBox::Cancel))
                b->click();
            else
                box->reject();
        } else if (auto *d = qobject_cast<QDialog *>(w)) {
            d->reject();
        }
    });
}

void ModalAnswerer::handleWith(Handler handler)
{
    _handlers.append(std::move(handler));
}

void ModalAnswerer::_poll()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible() || modal == _last || (_handlers.isEmpty() && !_standing))
        return;
    _last = modal;
    _seen.append(describe(modal));
    Handler h = _handlers.isEmpty() ? _standing : _handlers.takeFirst();
    h(modal);
}

static QString _describe(const ModalAnswerer::Seen &seen)
{
    return QStringLiteral("%1 \"%2\" \"%3\"").arg(seen.className, seen.title, seen.text);
}

QString ModalAnswerer::report() const
{
    QStringList lines;
    for (const Seen &seen : _seen)
        lines << QStringLiteral("answered: ") + _describe(seen);
    for (const Seen &seen : _unexpected)
        lines << QStringLiteral("NOT ANSWERED: ") + _describe(seen);
    if (pending() > 0)
        lines << QStringLiteral("%1 armed answer(s) never used").arg(pending());
    return lines.join(QLatin1Char('\n'));
}

void ModalAnswerer::_watch()
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
    const int waitedMs = ++_ticks * _watchdog.interval();
    if (waitedMs < 2000 || (pending() > 0 && waitedMs < 10000))
        return;
    _unexpected.append(describe(modal));
    _candidate = nullptr;
    if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->reject();
    else
        modal->close();
}
