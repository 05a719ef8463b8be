// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialognew.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

DialogNew::DialogNew(const QList<QString> &services, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
{
    _setup();
    _init(services);
    _connect();
}

int DialogNew::getServiceIndex() const
{
    for (int i = 0; i < _radioButtons.size(); ++i) {
        if (_radioButtons.at(i)->isChecked())
            return i;
    }
    return -1;
}

void DialogNew::_setup()
{
    _radioButtons.clear();
    _label = nullptr;
    _buttonOk = nullptr;
    _buttonCancel = nullptr;
}

void DialogNew::_init(const QList<QString> &services)
{
    setWindowTitle("Service select");

    _label = new QLabel("Please select a service type:"); // the layout adopts it
    _buttonOk = new QPushButton("&Ok", this);
    _buttonCancel = new QPushButton("&Cancel", this);

    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(_label);
    layout->addSpacing(10);

    // Siblings under one parent: the buttons exclude each other by default.
    _radioButtons.resize(services.size());
    for (int i = 0; i < services.size(); ++i) {
        _radioButtons[i] = new QRadioButton(services.at(i), this);
        layout->addWidget(_radioButtons[i]);
    }
    // The first service is always preselected. An empty list gives a dialog
    // without choices, whose getServiceIndex() is -1.
    if (!_radioButtons.isEmpty())
        _radioButtons.first()->setChecked(true);

    QHBoxLayout *buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addWidget(_buttonOk);
    buttons->addStretch(1);
    buttons->addWidget(_buttonCancel);

    layout->addSpacing(10);
    layout->addLayout(buttons);
}

void DialogNew::_connect()
{
    connect(_buttonOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(_buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}
