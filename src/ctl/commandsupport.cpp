// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/commandsupport.h"

#include "ctl/arguments.h"
#include "ctl/console.h"

SchemaLocation locationOf(Arguments const &args)
{
    if (args.isSet("--schema"))
        return SchemaLocation::ofSchema(args.value("--schema"));
    return SchemaLocation::besideExecutable();
}

int openSchema(ConfigTree &tree, SchemaLocation const &location)
{
    std::vector<std::string> errors;
    if (tree.loadSchema(errors, location.schemaPath) == Console::Ok)
        return Console::Ok;
    Console::message("the schema " + location.schemaPath + " is refused:");
    Console::lines(errors);
    return Console::Failure;
}

int overlay(ConfigTree &tree, std::string const &path, std::string const &what)
{
    std::vector<std::string> errors;
    int const status = tree.loadConfig(errors, path);
    if (status == Console::Failure)
        Console::message(what + " " + path + " cannot be read:");
    else if (status == Console::Remarks)
        Console::message(what + " " + path + " is read with remarks:");
    Console::lines(errors);
    return status;
}

int openConfig(ConfigTree &tree, SchemaLocation const &location, std::string const &configPath)
{
    if (openSchema(tree, location) != Console::Ok)
        return Console::Failure;
    return overlay(tree, configPath, "the configuration");
}

bool checkVersionAndService(ConfigTree const &tree, std::string const &configPath)
{
    // A value that the schema doesn't list never gets into the tree, so the
    // tree shows the empty text then, not what the file says.
    if (!tree.hasSupportedVersion()) {
        Console::message(configPath + ": Fail to check config version (the schema lists "
            + joined(tree.versions()) + ")");
        return false;
    }
    if (!tree.hasListedService()) {
        Console::message(configPath + ": Fail to check config service (the schema lists "
            + joined(tree.services()) + ")");
        return false;
    }
    return true;
}

int writeTree(ConfigTree const &tree, std::string const &path)
{
    std::vector<std::string> errors;
    int const status = tree.writeReplacing(errors, path);
    if (status != Console::Ok)
        Console::message(
            path + (status == Console::Failure ? " is not written:" : " is written with remarks:"));
    Console::lines(errors);
    return status;
}

std::string joined(std::vector<std::string> const &items)
{
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i)
        text += (i ? ", " : "") + items[i];
    return text;
}
