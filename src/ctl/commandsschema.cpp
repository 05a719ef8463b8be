// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// check-schema and validate.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/schemaoutline.h"
#include "engine/orvexconfiglib.h"

#include <QDomDocument>
#include <QFile>

#include <cstdlib>

namespace {

void _printHeading(ConfigTree const &tree, SchemaLocation const &location)
{
    Console::print("Schema: " + location.schemaPath);
    Console::print(
        "Versions: " + joined(tree.versions()) + " (newest " + tree.newestVersionText() + ")");
    Console::print("Services: " + joined(tree.services()));
}

// The line number of the validator's location line, "file is invalid at:
// line: L, column: C"; -1 without one.
int _locationLine(std::vector<std::string> const &errors)
{
    static std::string const prefix = "file is invalid at: line: ";
    for (auto it = errors.rbegin(); it != errors.rend(); ++it)
        if (it->compare(0, prefix.size(), prefix) == 0)
            return std::atoi(it->c_str() + prefix.size());
    return -1;
}

// Shows the line of the file at which the validator stopped.
void _quote(std::string const &path, int line)
{
    QFile file(QString::fromUtf8(path.c_str()));
    if (line < 1 || !file.open(QIODevice::ReadOnly))
        return;
    QByteArray text;
    for (int i = 0; i < line && !file.atEnd(); ++i)
        text = file.readLine();
    Console::lines({ "  " + std::to_string(line) + " | " + text.trimmed().toStdString() });
}

} // namespace

int runCheckSchema(Arguments const &args)
{
    SchemaLocation const location = args.positional().empty()
        ? SchemaLocation::besideExecutable()
        : SchemaLocation::ofSchema(args.positional()[0]);
    std::vector<std::string> errors;
    if (OrvexConfigLib::validateXSD(errors, location.schemaPath) != Console::Ok) {
        Console::message(location.schemaPath + " is not a valid XML Schema:");
        Console::lines(errors);
        return Console::Failure;
    }
    ConfigTree tree;
    if (openSchema(tree, location) != Console::Ok)
        return Console::Failure;

    _printHeading(tree, location);
    for (std::string const &line : schemaOutline(tree))
        Console::print(line);

    QDomDocument document;
    QFile file(QString::fromUtf8(location.schemaPath.c_str()));
    if (file.open(QIODevice::ReadOnly))
        document.setContent(&file, false);
    std::vector<std::string> const remarks = schemaRemarks(document, tree, location);
    for (std::string const &remark : remarks)
        Console::message(remark);
    return remarks.empty() ? Console::Ok : Console::Remarks;
}

int runValidate(Arguments const &args)
{
    std::string const config = args.positional()[0];
    SchemaLocation const location = locationOf(args);
    std::vector<std::string> errors;
    if (OrvexConfigLib::validateXML(errors, location.schemaPath, config) == Console::Ok) {
        Console::print(config + ": valid");
        return Console::Ok;
    }
    Console::message(config + " is not valid against " + location.schemaPath + ":");
    Console::lines(errors);
    // A refused schema is told by lines that begin with "XSD"; the location is then in it.
    bool const inSchema = !errors.empty() && errors.front().compare(0, 3, "XSD") == 0;
    _quote(inSchema ? location.schemaPath : config, _locationLine(errors));
    return Console::Failure;
}
