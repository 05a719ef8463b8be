// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The floor of start-up plus the one piece of the program's start that no
// faster program could leave out: the check of the shipped schema, which
// the program makes at every start before it reads a parameter.

#include "floorwindow.h"

#include "engine/orvexconfiglib.h"

#include <QApplication>

#include <clocale>
#include <cstdlib>
#include <string>
#include <vector>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");

    std::vector<std::string> errors;
    const std::string schema =
        (QCoreApplication::applicationDirPath() + QStringLiteral("/orvex/default/schema-userconf.xsd")).toStdString();
    if (OrvexConfigLib::validateXSD(errors, schema) != 0)
        return EXIT_FAILURE;

    return showFloorWindow();
}
