// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// check-schema and validate.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/configvalidator.h"
#include "ctl/console.h"
#include "ctl/description.h"
#include "ctl/jsonvalues.h"
#include "ctl/schemaoutline.h"
#include "engine/orvexconfiglib.h"
#include "model/parameter.h"
#include "engine/textconv.h"

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
    QFile file(_toQString(path));
    if (line < 1 || !file.open(QIODevice::ReadOnly))
        return;
    QByteArray text;
    for (int i = 0; i < line && !file.atEnd(); ++i)
        text = file.readLine();
    Console::lines({ "  " + std::to_string(line) + " | " + text.trimmed().toStdString() });
}

// The outline as a tree: each node's description, and a section's children.
QJsonObject _rec_jsonOutline(Parameter const *node)
{
    Description description = describeNode(node);
    QJsonObject object = jsonDescription(description, false);
    object.insert(QStringLiteral("key"), jsonText(node->getParameterKey()));
    if (node->getGlobalType() != Parameter::GlobalType::Complex)
        return object;
    QJsonArray children;
    for (Parameter const *child : dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
        if (child)
            children.append(_rec_jsonOutline(child));
    object.insert(QStringLiteral("children"), children);
    return object;
}

QJsonObject _jsonSchema(ConfigTree const &tree, SchemaLocation const &location)
{
    return { { QStringLiteral("schema"), jsonText(location.schemaPath) },
        { QStringLiteral("versions"), jsonTexts(tree.versions()) },
        { QStringLiteral("newest"), jsonText(tree.newestVersionText()) },
        { QStringLiteral("services"), jsonTexts(tree.services()) },
        { QStringLiteral("root"), _rec_jsonOutline(tree.root()) } };
}

// ----------------------------------------------------------------- validate

std::string _findingText(std::string const &file, Finding const &finding)
{
    return file + ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column) + ": "
        + finding.message;
}

// The verdict in the words of the engine's validateXML, on standard error,
// with the line of the file at which the validator stopped.
void _tellInvalid(FileVerdict const &verdict, std::string const &schemaPath)
{
    Finding const last = verdict.opened ? verdict.findings.back() : Finding { -1, -1, {} };
    Console::message(verdict.file + " is not valid against " + schemaPath + ":");
    Console::lines({ verdict.opened ? "XML is not valid" : "XML is not opened",
        "file is invalid at: line: " + std::to_string(last.line)
            + ", column: " + std::to_string(last.column) });
    _quote(verdict.file, last.line);
}

QJsonObject _jsonVerdict(FileVerdict const &verdict)
{
    QJsonArray findings;
    for (Finding const &finding : verdict.findings)
        findings.append(QJsonObject { { QStringLiteral("line"), finding.line },
            { QStringLiteral("column"), finding.column },
            { QStringLiteral("message"), jsonText(finding.message) } });
    return { { QStringLiteral("file"), jsonText(verdict.file) },
        { QStringLiteral("valid"), verdict.valid }, { QStringLiteral("messages"), findings } };
}

// A refused schema, in the engine's words, and where in it.
void _tellRefusedSchema(SchemaLocation const &location)
{
    std::vector<std::string> errors;
    OrvexConfigLib::validateXSD(errors, location.schemaPath);
    Console::message("the schema " + location.schemaPath + " is refused; no file is validated:");
    Console::lines(errors);
    _quote(location.schemaPath, _locationLine(errors));
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

    if (Console::json())
        Console::result(_jsonSchema(tree, location));
    else
        _printHeading(tree, location);
    for (std::string const &line : schemaOutline(tree))
        Console::print(line);

    QDomDocument document;
    QFile file(_toQString(location.schemaPath));
    if (file.open(QIODevice::ReadOnly))
        document.setContent(&file, false);
    std::vector<std::string> const remarks = schemaRemarks(document, tree, location);
    for (std::string const &remark : remarks)
        Console::message(remark);
    return remarks.empty() ? Console::Ok : Console::Remarks;
}

int runValidate(Arguments const &args)
{
    SchemaLocation const location = locationOf(args);
    ConfigValidator validator;
    if (!validator.loadSchema(location.schemaPath)) {
        _tellRefusedSchema(location);
        return Console::Failure;
    }
    std::vector<std::string> const files = configFilesOf(args.positional());
    QJsonArray verdicts;
    int valid = 0;
    for (std::string const &file : files) {
        FileVerdict const verdict = validator.validate(file);
        if (verdict.valid) {
            ++valid;
            Console::print(file + ": valid");
        } else {
            for (Finding const &finding : verdict.findings)
                Console::print(_findingText(file, finding));
            _tellInvalid(verdict, location.schemaPath);
        }
        verdicts.append(_jsonVerdict(verdict));
    }
    int const invalid = int(files.size()) - valid;
    Console::print(std::to_string(valid) + " valid, " + std::to_string(invalid) + " invalid");
    if (Console::json())
        Console::result({ { QStringLiteral("files"), verdicts }, { QStringLiteral("valid"), valid },
            { QStringLiteral("invalid"), invalid } });
    if (invalid > 0)
        return Console::Failure;
    if (files.empty()) {
        Console::message("no *.conf or *.xml file to validate");
        return Console::Remarks;
    }
    return Console::Ok;
}
