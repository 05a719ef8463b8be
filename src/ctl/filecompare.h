// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctl/valuetext.h"

#include <string>
#include <vector>

class ParameterComplex;
class QDomDocument;
class QDomElement;

// What became of a file's content after it was laid over a tree: which values
// the tree took, which parameters the file lacks, which values the schema
// refused, and which elements the schema doesn't declare at all.
struct FileComparison
{
    std::vector<ValueLine> taken; // values of the file, now in the tree
    std::vector<ValueLine> lacking; // parameters without an element: the tree's values
    std::vector<std::string> refused; // "path = text  # refused (allowed); kept: value"
    std::vector<std::string> unknown; // elements that no parameter reads
};

// Compares the document element of a file with the tree into which that file
// was loaded last. Elements are matched as the loader matches them: the first
// child element with a parameter's key.
FileComparison compareFile(ParameterComplex const *root, QDomElement const &fileRoot);

// Reads a file as a document; false when it can't be read or isn't XML.
bool readDocument(std::string const &path, QDomDocument &document);
