// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// describe and search: what the schema says of its parameters.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/description.h"
#include "ctl/filecompare.h"
#include "ctl/jsonvalues.h"
#include "model/parameter.h"
#include "engine/textconv.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

namespace {

// Whether the file holds an element for the path, matched as the loader
// matches it: the first child element of each key.
bool _holds(QDomDocument const &document, std::string const &path)
{
    QDomElement element = document.documentElement();
    QString const text = _toQString(path);
    for (QString const &key : text.split(QLatin1Char('/'))) {
        element = element.firstChildElement(key);
        if (element.isNull())
            return false;
    }
    return true;
}

// The value of each service's default configuration that holds the parameter.
void _addDefaults(Description &description, ConfigTree const &tree, SchemaLocation const &location)
{
    if (description.kind == "section" || !tree.startupFault().empty())
        return;
    for (std::string const &service : tree.services()) {
        std::string const path = location.defaultConfig(service);
        QDomDocument document;
        if (!readDocument(path, document) || !_holds(document, description.path))
            continue;
        ConfigTree defaults;
        std::vector<std::string> errors;
        if (defaults.loadSchema(errors, location.schemaPath) != Console::Ok
            || defaults.loadConfig(errors, path) == Console::Failure)
            continue;
        description.defaults.emplace_back(
            service, parameterValues(defaults.find(description.path)).front());
    }
}

// ------------------------------------------------------------------ search

struct _Match
{
    std::string path;
    std::string name;
    std::vector<std::string> services;
    std::vector<std::string> where; // "key", "name", "unit", "documentation"
};

bool _contains(std::string const &text, QString const &wanted)
{
    return _toQString(text).contains(wanted, Qt::CaseInsensitive);
}

void _rec_search(std::vector<_Match> &matches, Parameter const *node, QString const &wanted)
{
    if (!node)
        return;
    if (node->getGlobalType() == Parameter::GlobalType::Complex) {
        for (Parameter const *child :
            dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
            _rec_search(matches, child, wanted);
        return;
    }
    Parameter::VisualParams const visual = node->getVisualParams();
    std::pair<char const *, std::string const *> const fields[]
        = { { "key", nullptr }, { "name", &visual.name_en }, { "unit", &visual.dimension },
              { "documentation", &visual.documentation } };
    std::string const key = node->getParameterKey();
    _Match match { pathOf(node), visual.name_en, servicesOf(node), {} };
    for (auto const &field : fields)
        if (_contains(field.second ? *field.second : key, wanted))
            match.where.push_back(field.first);
    if (!match.where.empty())
        matches.push_back(std::move(match));
}

std::string _servicesText(std::vector<std::string> const &services)
{
    return "[" + (services.empty() ? std::string("all") : joined(services)) + "]";
}

} // namespace

int runDescribe(Arguments const &args)
{
    std::string const &path = args.positional()[0];
    SchemaLocation const location = locationOf(args);
    ConfigTree tree;
    if (openSchema(tree, location) != Console::Ok)
        return Console::Failure;
    Parameter const *node = path.empty() ? nullptr : tree.find(path);
    if (!node) {
        Console::message("the schema has no parameter " + path);
        return Console::Failure;
    }
    Description description = describeNode(node);
    _addDefaults(description, tree, location);
    if (Console::json())
        Console::result(jsonDescription(description, true));
    for (std::string const &line : descriptionLines(description))
        Console::print(line);
    return Console::Ok;
}

int runSearch(Arguments const &args)
{
    std::string const &text = args.positional()[0];
    ConfigTree tree;
    if (openSchema(tree, locationOf(args)) != Console::Ok)
        return Console::Failure;
    std::vector<_Match> matches;
    _rec_search(matches, tree.root(), _toQString(text));
    QJsonArray json;
    for (_Match const &match : matches) {
        Console::print(match.path + "  " + match.name + "  " + _servicesText(match.services));
        json.append(QJsonObject { { QStringLiteral("path"), jsonText(match.path) },
            { QStringLiteral("name"), jsonText(match.name) },
            { QStringLiteral("services"), jsonTexts(match.services) },
            { QStringLiteral("where"), jsonTexts(match.where) } });
    }
    if (Console::json())
        Console::result({ { QStringLiteral("matches"), json } });
    if (!matches.empty())
        return Console::Ok;
    Console::message("no parameter matches \"" + text + "\"");
    return Console::Remarks;
}
