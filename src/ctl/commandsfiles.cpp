// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// new and update: configuration files made from a service's default.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/filecompare.h"
#include "ctl/jsonvalues.h"
#include "model/parameter.h"
#include "engine/textconv.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

#include <algorithm>

namespace {

bool _contains(std::vector<std::string> const &items, std::string const &item)
{
    return std::find(items.begin(), items.end(), item) != items.end();
}

// A schema from which the desktop program can't read services and versions
// can't serve these commands either.
bool _usableSchema(ConfigTree const &tree)
{
    std::string const fault = tree.startupFault();
    if (fault.empty())
        return true;
    Console::message("the schema doesn't give the versions and the services: " + fault);
    return false;
}

// Sets the version to the newest listed one, in the schema's own text.
int _raiseVersion(ConfigTree &tree, std::string const &what)
{
    std::string const stated = tree.version();
    if (Version(stated) == tree.newestVersion())
        return Console::Ok;
    tree.versionParameter()->setValue(tree.newestVersionText());
    Console::message(
        what + " states the version " + stated + "; written as " + tree.newestVersionText());
    return Console::Remarks;
}

void _printSection(std::string const &title, std::vector<std::string> const &lines)
{
    Console::print(title);
    if (lines.empty())
        Console::print("  (none)");
    for (std::string const &line : lines)
        Console::print("  " + line);
}

std::vector<std::string> _texts(std::vector<ValueLine> const &lines)
{
    std::vector<std::string> texts;
    for (ValueLine const &line : lines)
        texts.push_back(toText(line));
    return texts;
}

void _printReport(FileComparison const &report)
{
    _printSection("Kept from the old file:", _texts(report.taken));
    _printSection("Filled from the default configuration:", _texts(report.lacking));
    _printSection("Refused by the schema, the default kept:", report.refused);
    _printSection("Dropped, not declared by the schema:", report.unknown);
}

QJsonArray _jsonLines(std::vector<ValueLine> const &lines)
{
    QJsonArray array;
    for (ValueLine const &line : lines)
        array.append(QJsonObject { { QStringLiteral("path"), jsonText(line.key) },
            { QStringLiteral("value"), jsonText(line.value) } });
    return array;
}

// What update did or would do: {"file", "service", "from", "to", "updated"},
// and for an update "output", "backup", "dry_run" and the report.
QJsonObject _jsonUpdate(ConfigTree const &old, std::string const &config, std::string const &to)
{
    return { { QStringLiteral("file"), jsonText(config) },
        { QStringLiteral("service"), jsonText(old.service()) },
        { QStringLiteral("from"), jsonText(old.version()) }, { QStringLiteral("to"), jsonText(to) },
        { QStringLiteral("updated"), false } };
}

void _addJsonReport(QJsonObject &document, FileComparison const &report)
{
    document.insert(QStringLiteral("kept"), _jsonLines(report.taken));
    document.insert(QStringLiteral("filled"), _jsonLines(report.lacking));
    document.insert(QStringLiteral("refused"), jsonTexts(report.refused));
    document.insert(QStringLiteral("dropped"), jsonTexts(report.unknown));
}

// The old file's values and what the update makes of them. The version line
// is left out: the update sets it.
FileComparison _compareOldFile(ConfigTree const &tree, std::string const &config)
{
    QDomDocument document;
    readDocument(config, document);
    FileComparison report = compareFile(tree.root(), document.documentElement());
    std::string const versionKey = pathOf(tree.versionParameter());
    report.taken.erase(std::remove_if(report.taken.begin(), report.taken.end(),
                           [&](ValueLine const &line) { return line.key == versionKey; }),
        report.taken.end());
    return report;
}

// Lines of the engine other than the parameters that the old file lacks: those
// are told in the report.
int _printLoadRemarks(std::vector<std::string> const &errors, std::string const &config)
{
    int status = Console::Ok;
    for (std::string const &line : errors) {
        if (line.compare(0, 5, "Node ") == 0 && line.size() > 17
            && line.compare(line.size() - 17, 17, " not found in XML") == 0)
            continue;
        Console::message(config + ": " + line);
        status = Console::Remarks;
    }
    return status;
}

bool _backUp(std::string const &config)
{
    QString const original = _toQString(config);
    QString const backup = original + QStringLiteral(".bak");
    QFile::remove(backup);
    if (QFile::copy(original, backup))
        return true;
    Console::message(
        "the backup " + config + ".bak cannot be written; " + config + " is left as it was");
    return false;
}

} // namespace

int runNew(Arguments const &args)
{
    std::string const &service = args.positional()[0];
    std::string const &out = args.positional()[1];
    SchemaLocation const location = locationOf(args);
    ConfigTree tree;
    if (openSchema(tree, location) != Console::Ok || !_usableSchema(tree))
        return Console::Failure;
    if (!_contains(tree.services(), service)) {
        Console::message(
            "the schema has no service " + service + "; it lists " + joined(tree.services()));
        return Console::Failure;
    }
    if (QFile::exists(_toQString(out)) && !args.isSet("--force")) {
        Console::message(out + " exists; give --force to replace it");
        return Console::Failure;
    }
    std::string const defaultPath = location.defaultConfig(service);
    int status = overlay(tree, defaultPath, "the default configuration");
    if (status == Console::Failure || !checkVersionAndService(tree, defaultPath))
        return Console::Failure;
    // The service is the one that the default file states, as in the desktop program.
    if (tree.service() != service) {
        Console::message(defaultPath + " states the service " + tree.service());
        status = Console::Remarks;
    }
    status = Console::worse(status, _raiseVersion(tree, defaultPath));
    return Console::worse(status, writeTree(tree, out));
}

int runUpdate(Arguments const &args)
{
    std::string const &config = args.positional()[0];
    bool const inPlace = !args.isSet("--output");
    bool const dryRun = args.isSet("--dry-run");
    std::string const out = inPlace ? config : args.value("--output");
    SchemaLocation const location = locationOf(args);

    // The file alone first, over an empty tree, to learn its version and
    // service as the desktop program does on a first opening.
    ConfigTree old;
    std::vector<std::string> errors;
    if (openSchema(old, location) != Console::Ok || !_usableSchema(old))
        return Console::Failure;
    if (old.loadConfig(errors, config) == Console::Failure) {
        Console::message("the configuration " + config + " cannot be read:");
        Console::lines(errors);
        return Console::Failure;
    }
    if (!checkVersionAndService(old, config))
        return Console::Failure;
    QJsonObject document = _jsonUpdate(old, config, old.version());
    if (Version(old.version()) == old.newestVersion()) {
        Console::result(document);
        Console::message(
            config + " is at the newest version " + old.version() + "; nothing to update");
        return Console::Ok;
    }

    // The service's default, then the file over it: the user's values win.
    ConfigTree tree;
    if (openSchema(tree, location) != Console::Ok)
        return Console::Failure;
    int status = overlay(tree, location.defaultConfig(old.service()), "the default configuration");
    if (status == Console::Failure)
        return Console::Failure;
    errors.clear();
    if (tree.loadConfig(errors, config) == Console::Failure) {
        Console::lines(errors);
        return Console::Failure;
    }
    status = Console::worse(status, _printLoadRemarks(errors, config));
    FileComparison const report = _compareOldFile(tree, config);
    if (!report.refused.empty())
        status = Console::Remarks;
    tree.versionParameter()->setValue(tree.newestVersionText());

    std::string const backup = inPlace && !dryRun ? config + ".bak" : std::string();
    document = _jsonUpdate(old, config, tree.newestVersionText());
    document.insert(QStringLiteral("dry_run"), dryRun);
    document.insert(QStringLiteral("output"), jsonText(out));
    document.insert(QStringLiteral("backup"), backup.empty() ? QJsonValue() : jsonText(backup));
    _addJsonReport(document, report);
    Console::result(document);
    std::string const change = config + " from version " + old.version() + " to "
        + tree.newestVersionText() + " (service " + old.service() + ")";
    int written = Console::Ok;
    if (dryRun) {
        Console::print("Would update " + change + " and write it to " + out
            + "; nothing is written (dry run)");
    } else {
        if (inPlace && !_backUp(config))
            return Console::Failure;
        written = writeTree(tree, out);
        if (written == Console::Failure)
            return Console::Failure;
        document.insert(QStringLiteral("updated"), true);
        Console::result(document);
        Console::print("Updated " + change + ", written to " + out
            + (inPlace ? "; the old file is kept as " + backup : ""));
    }
    _printReport(report);
    return Console::worse(status, written);
}
