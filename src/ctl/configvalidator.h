// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QXmlSchema>

#include <memory>
#include <string>
#include <vector>

class QXmlSchemaValidator;
class _CollectingHandler;

// What the validator says at one place of a file. Line and column 0: the file
// as a whole, as for a file that can't be read.
struct Finding
{
    int line = 0;
    int column = 0;
    std::string message;
};

// The verdict on one file: valid, or the findings against it. `opened` is
// false when the file couldn't be read at all.
struct FileVerdict
{
    std::string file;
    bool valid = false;
    bool opened = false;
    std::vector<Finding> findings;
};

// Validates many configuration files against one schema, which is loaded and
// compiled once, unlike the engine's validateXML, which reads the schema again
// for every file. Every message of the validator is kept, with its text.
class ConfigValidator
{
public:
    ConfigValidator();
    ~ConfigValidator();
    ConfigValidator(ConfigValidator const &) = delete;
    ConfigValidator &operator=(ConfigValidator const &) = delete;

    // Loads and compiles the schema; false when it can't be read or isn't a
    // valid schema, and then no file can be validated.
    bool loadSchema(std::string const &schemaPath);
    // The verdict on one file; the schema must have loaded.
    FileVerdict validate(std::string const &path) const;

private:
    QXmlSchema _schema;
    std::unique_ptr<_CollectingHandler> _handler;
    std::unique_ptr<QXmlSchemaValidator> _validator;
};

// The files that PATHS name: a file as given, a folder as every *.conf and
// *.xml file below it (a link that leads nowhere too), sorted by path. A path
// that is neither stays in the list, so that its verdict tells it can't be read.
std::vector<std::string> configFilesOf(std::vector<std::string> const &paths);
