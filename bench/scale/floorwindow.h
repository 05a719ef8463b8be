// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "shownreport.h"

#include <QCoreApplication>
#include <QMainWindow>

// The floor of start-up: an empty main window of the program's size and
// title, shown as the program shows its own, then reported.
inline int showFloorWindow()
{
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Orvex Config Manager"));
    window.setMinimumSize(900, 500);
    window.resize(900, 500);
    window.show();
    QCoreApplication::processEvents();
    reportShown();
    return 0;
}
