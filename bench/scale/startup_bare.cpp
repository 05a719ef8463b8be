// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The floor of start-up: an empty main window of the same size and title,
// shown the same way, in a program that links Qt Widgets only.

#include "floorwindow.h"

#include <QApplication>

#include <clocale>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    return showFloorWindow();
}
