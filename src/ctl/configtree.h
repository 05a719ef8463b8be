// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/version.h"

#include <string>
#include <vector>

class Parameter;
class ParameterComplex;
class ParameterSimple;

// Where a command finds the schema and the default configurations: beside the
// executable, as the desktop program does, or beside a schema named with --schema.
struct SchemaLocation
{
    std::string schemaPath;
    std::string defaultDir;

    // The default configuration of a service: <defaultDir>/<service>-default.conf.
    std::string defaultConfig(std::string const &service) const;

    static SchemaLocation besideExecutable();
    static SchemaLocation ofSchema(std::string const &schemaPath);
};

// A parameter tree built from a schema, owned, with what the desktop program
// reads from its first two children: the supported versions and the services.
class ConfigTree
{
public:
    ConfigTree() = default;
    ~ConfigTree();
    ConfigTree(ConfigTree const &) = delete;
    ConfigTree &operator=(ConfigTree const &) = delete;

    // Builds the tree from the schema. The engine's status; on 2 there is no tree.
    int loadSchema(std::vector<std::string> &errors, std::string const &schemaPath);
    // Lays a configuration file over the tree. The engine's status.
    int loadConfig(std::vector<std::string> &errors, std::string const &configPath);
    // Writes the tree to a file beside `configPath` and renames it over it, so
    // that a failed write leaves the old file whole. The engine's status.
    int writeReplacing(std::vector<std::string> &errors, std::string const &configPath) const;

    ParameterComplex *root() const { return _root; }

    // The desktop program's verdict on the first children at start-up: empty
    // when it can read versions and services, else the text of its refusal.
    std::string startupFault() const;
    // The first child when it is the leaf "Version", else null; likewise "Service".
    ParameterSimple *versionParameter() const;
    ParameterSimple *serviceParameter() const;
    // The enumerations of those two leaves, in schema order; empty when absent.
    std::vector<std::string> versions() const;
    std::vector<std::string> services() const;
    // The greatest of the versions, the first of equal ones; "0" for none.
    Version newestVersion() const;
    // The text with which the schema lists the newest version; empty for none.
    std::string newestVersionText() const;

    // Whether the tree's values state a listed version and service, tested as
    // the desktop program tests a file just loaded.
    bool hasSupportedVersion() const;
    bool hasListedService() const;
    std::string version() const;
    std::string service() const;

    // The node at a path of keys below the root ("Camera/Cooling/SetPoint");
    // the first child of a key at each step, as the loader matches elements.
    // The root for the empty path; null when a key is missing.
    Parameter *find(std::string const &path) const;

private:
    ParameterSimple *_firstChildLeaf(std::size_t index, std::string const &key) const;

    ParameterComplex *_root = nullptr;
};

// The path of a node below the root, keys joined by "/"; empty for the root.
std::string pathOf(Parameter const *node);
