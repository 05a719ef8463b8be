// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "app/manager.h"

#include <QApplication>

#include <clocale>
#include <cstdlib>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    // QApplication adopts the desktop's locale; numbers in schema and
    // configuration text always use the decimal point.
    std::setlocale(LC_NUMERIC, "C");

    Manager manager;
    // A refused schema has been reported in its box: end before any window.
    if (!manager.hasSchema())
        return EXIT_FAILURE;
    manager.show();
    return application.exec();
}
