// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The program's own start, up to the main window shown and one pass of the
// event loop; then it reports and ends instead of entering the loop.

#include "shownreport.h"

#include "app/manager.h"

#include <QApplication>

#include <clocale>
#include <cstdlib>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");

    Manager manager;
    if (!manager.hasSchema())
        return EXIT_FAILURE;
    manager.show();
    QCoreApplication::processEvents();
    reportShown();
    return 0;
}
