// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/configtree.h"

#include "engine/orvexconfiglib.h"
#include "engine/textconv.h"
#include "model/parameter.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

QString _qpath(std::string const &path)
{
    return _toQString(path);
}

Parameter *_childByKey(ParameterComplex const *node, std::string const &key)
{
    for (Parameter *child : node->getChildrenPtrs())
        if (child && child->getParameterKey() == key)
            return child;
    return nullptr;
}

} // namespace

// ------------------------------------------------------------- SchemaLocation

std::string SchemaLocation::defaultConfig(std::string const &service) const
{
    return defaultDir + "/" + service + "-default.conf";
}

SchemaLocation SchemaLocation::besideExecutable()
{
    // applicationDirPath follows symbolic links, so a launcher in bin/ that
    // links to the real executable still finds orvex/ beside the latter.
    std::string const base = _utf8(QCoreApplication::applicationDirPath());
    return { base + "/orvex/default/schema-userconf.xsd", base + "/orvex/default" };
}

SchemaLocation SchemaLocation::ofSchema(std::string const &schemaPath)
{
    return { schemaPath, _utf8(QFileInfo(_qpath(schemaPath)).path()) };
}

// ----------------------------------------------------------------- ConfigTree

ConfigTree::~ConfigTree()
{
    delete _root;
}

int ConfigTree::loadSchema(std::vector<std::string> &errors, std::string const &schemaPath)
{
    delete _root;
    _root = nullptr;
    return OrvexConfigLib::loadXSD(errors, _root, schemaPath);
}

int ConfigTree::loadConfig(std::vector<std::string> &errors, std::string const &configPath)
{
    return OrvexConfigLib::loadXML_knStruct(errors, _root, configPath);
}

int ConfigTree::writeReplacing(
    std::vector<std::string> &errors, std::string const &configPath) const
{
    std::string const temporary = configPath + ".orvexctl-new";
    int const status = OrvexConfigLib::writeXML(errors, _root, temporary);
    if (status == 2) {
        QFile::remove(_qpath(temporary));
        return 2;
    }
    QFile const old(_qpath(configPath));
    if (old.exists())
        QFile::setPermissions(_qpath(temporary), old.permissions());
    if (std::rename(temporary.c_str(), configPath.c_str()) != 0) {
        QFile::remove(_qpath(temporary));
        errors.push_back("The file " + configPath + " cannot be replaced");
        return 2;
    }
    return status;
}

std::string ConfigTree::startupFault() const
{
    if (!_root)
        return "Init Service lsist And Version fail";
    std::vector<Parameter *> const children = _root->getChildrenPtrs();
    // The same checks, in the same order and with the same texts, as the
    // desktop program makes at start-up.
    if (children.size() < 4)
        return "Init Service lsist And Version fail";
    if (!children[0] || children[0]->getParameterKey() != "Version"
        || children[0]->getGlobalType() != Parameter::GlobalType::Simple)
        return "Init List of config versions fail";
    if (!children[1] || children[1]->getParameterKey() != "Service"
        || children[1]->getGlobalType() != Parameter::GlobalType::Simple)
        return "Init Service List fail";
    if (!versionParameter()->hasEnumeration())
        return "Init List of config versions fail";
    if (!serviceParameter()->hasEnumeration())
        return "Init Service List fail";
    return std::string();
}

ParameterSimple *ConfigTree::_firstChildLeaf(std::size_t index, std::string const &key) const
{
    return _root ? _root->getSimpleChild(index, key) : nullptr;
}

ParameterSimple *ConfigTree::versionParameter() const
{
    return _firstChildLeaf(0, "Version");
}

ParameterSimple *ConfigTree::serviceParameter() const
{
    return _firstChildLeaf(1, "Service");
}

std::vector<std::string> ConfigTree::versions() const
{
    ParameterSimple const *leaf = versionParameter();
    return leaf ? leaf->getFasets().enumeration : std::vector<std::string>();
}

std::vector<std::string> ConfigTree::services() const
{
    ParameterSimple const *leaf = serviceParameter();
    return leaf ? leaf->getFasets().enumeration : std::vector<std::string>();
}

Version ConfigTree::newestVersion() const
{
    return Version(newestVersionText());
}

std::string ConfigTree::newestVersionText() const
{
    Version newest;
    std::string newestText;
    for (std::string const &text : versions()) {
        Version const candidate(text);
        if (newest < candidate) {
            newest = candidate;
            newestText = text;
        }
    }
    return newestText;
}

std::string ConfigTree::version() const
{
    ParameterSimple const *leaf = versionParameter();
    return leaf ? leaf->getValue() : std::string();
}

std::string ConfigTree::service() const
{
    ParameterSimple const *leaf = serviceParameter();
    return leaf ? leaf->getValue() : std::string();
}

bool ConfigTree::hasSupportedVersion() const
{
    if (!versionParameter())
        return false;
    // Compared as versions, so an empty value is version "0".
    Version const stated(version());
    for (std::string const &text : versions())
        if (Version(text) == stated)
            return true;
    return false;
}

bool ConfigTree::hasListedService() const
{
    if (!serviceParameter())
        return false;
    std::string const stated = service();
    for (std::string const &text : services())
        if (text == stated)
            return true;
    return false;
}

Parameter *ConfigTree::find(std::string const &path) const
{
    Parameter *node = _root;
    std::size_t start = 0;
    while (node && start < path.size()) {
        if (node->getGlobalType() != Parameter::GlobalType::Complex)
            return nullptr;
        std::size_t const slash = path.find('/', start);
        std::size_t const end = slash == std::string::npos ? path.size() : slash;
        node = _childByKey(dynamic_cast<ParameterComplex *>(node), path.substr(start, end - start));
        start = end + 1;
    }
    return node;
}

std::string pathOf(Parameter const *node)
{
    std::string path;
    for (; node && node->getParantPtr(); node = node->getParantPtr())
        path = path.empty() ? node->getParameterKey() : node->getParameterKey() + "/" + path;
    return path;
}
