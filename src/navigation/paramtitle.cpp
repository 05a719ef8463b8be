// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramtitle.h"

#include <QFont>

ParamTitle::ParamTitle(QWidget *parent) : QLabel(parent, Qt::WindowFlags())
{
    _setup();
    _init();
}

void ParamTitle::setEmptyText() { setText(QString("")); }

void ParamTitle::_setup() {}

void ParamTitle::_init()
{
    QFont titleFont = font();
    titleFont.setWeight(QFont::Bold);
    titleFont.setPixelSize(18);
    setFont(titleFont);
}
