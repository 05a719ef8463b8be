// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string>
#include <vector>

// Schemas, configurations and TLE catalogues of any size, made for the
// benchmarks at run time. Everything written here is valid: the schema passes
// Qt's schema validator, the configuration passes it against the schema, and
// every element set passes the TLE checker.
namespace ScaleGen {

// One element set as it stands in a catalogue file.
struct Set
{
    std::string name;
    std::string line1;
    std::string line2;
};

// The sets of a catalogue file: groups of a name line and two data lines, or
// of two data lines, between empty lines. Empty when the file can't be read.
std::vector<Set> readSets(const QString &fileName);

// `count` sets cycled from `source`, numbered 00001 upwards in both data
// lines, with the check digits worked out anew.
std::vector<Set> catalogue(const std::vector<Set> &source, int count);

// A catalogue as text in the layout of the source file: name line, two data
// lines, an empty line between sets, a line feed after the last line.
std::string catalogueText(const std::vector<Set> &sets);

// The modulo-10 check digit of the first 68 columns of a data line.
char checkDigit(const std::string &line);

// What makeConfiguration wrote, and what a search for `searchWord` finds.
struct Configuration
{
    QString schemaPath;
    QString configPath;
    int parameters = 0; // leaves: simple values, lists and the TLE list
    int sections = 0;
    int maxDepth = 0;
    QString service;    // the service the configuration names
    QString searchWord; // a word in the display name of 35 % of the leaves
};

// Writes `schema-userconf.xsd` and `config.conf` into `dir`: `parameters`
// leaves (at least 8) with "Version" and "Service" first, then sections nested
// three to five deep holding leaves of every type, lists of several item
// types and one TLE list holding `tleSets` sets of `tleSource`.
bool makeConfiguration(const QString &dir, int parameters, const std::vector<Set> &tleSource,
                       int tleSets, Configuration *made);

} // namespace ScaleGen
