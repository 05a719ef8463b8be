// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "app/control.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>

Control::Control(QWidget *parent) : QWidget(parent)
{
    _setup();
    _init();
}

void Control::_setup()
{
    _buttonNew = nullptr;
    _buttonOpen = nullptr;
    _buttonSave = nullptr;
    _buttonSaveAs = nullptr;
}

void Control::_init()
{
    _buttonNew = new QPushButton(tr("&New"), this);
    _buttonOpen = new QPushButton(tr("&Open"), this);
    _buttonSave = new QPushButton(tr("&Save"), this);
    _buttonSaveAs = new QPushButton(tr("S&ave As.."), this);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addSpacing(100);
    layout->addStretch(1);
    for (QPushButton *button : {_buttonNew, _buttonOpen, _buttonSave, _buttonSaveAs})
        layout->addWidget(button, 0, Qt::AlignRight);
}

void Control::connectAct(QAction *newAct, QAction *openAct, QAction *saveAct, QAction *saveAsAct)
{
    connect(_buttonNew, SIGNAL(clicked()), newAct, SIGNAL(triggered()));
    connect(_buttonOpen, SIGNAL(clicked()), openAct, SIGNAL(triggered()));
    connect(_buttonSave, SIGNAL(clicked()), saveAct, SIGNAL(triggered()));
    connect(_buttonSaveAs, SIGNAL(clicked()), saveAsAct, SIGNAL(triggered()));
}

void Control::sl_configOpened(bool isOpened)
{
    _buttonSave->setEnabled(isOpened);
    _buttonSaveAs->setEnabled(isOpened);
}
