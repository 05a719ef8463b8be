#include "modalanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

ModalAnswerer::ModalAnswerer(QObject *parent) : QObject(parent)
{
    _timer.setInterval(5);
    connect(&_timer, &QTimer::timeout, this, &ModalAnswerer::_poll);
    _timer.start();
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
        // selectFile() leaves the name field alone once it has focus, so the
        // name is typed into the field itself, whenever the answer comes.
        auto *nameEdit = fd ? fd->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
        if (!nameEdit) {
            qWarning("ModalAnswerer: expected a file dialog, got %s", w->metaObject()->className());
            if (auto *d = qobject_cast<QDialog *>(w))
                d->reject();
            return;
        }
        const QFileInfo info(path);
        fd->setDirectory(info.absolutePath());
        nameEdit->setText(info.fileName());
        // accept() of a save dialog may ask about overwriting; the test
        // chooses paths where that question does not arise.
        static_cast<QDialog *>(fd)->accept(); // QFileDialog::accept is protected
    });
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
    if (!modal || !modal->isVisible() || modal == _last || _handlers.isEmpty())
        return;
    _last = modal;
    _seen.append(describe(modal));
    Handler h = _handlers.takeFirst();
    h(modal);
}
