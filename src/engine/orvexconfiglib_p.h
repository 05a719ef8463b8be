// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// The engine's private steps. They are declared here, not in the public
// header, so that the engine's own tests can reach the ones that the public
// functions hide (the schema reader behind its validation gate, the type
// table, the path text of the messages).

#include "model/parameter.h"

#include <string>
#include <vector>

class QByteArray;
class QSourceLocation;
class QDomDocument;
class QDomElement;
class QString;

namespace OrvexConfigLib {

// Deeper element nesting than this is refused before any parser sees the
// file: Qt's DOM and schema parsers recurse once per level and overflow the
// stack somewhere past 20,000 levels. No real schema or configuration comes
// near it.
constexpr int _maxNesting = 5000;

// Where a file first nests deeper than `limit`: true with the line and
// column (1-based line, characters on that line up to the end of the tag);
// false for a file within the limit. Linear in the size of the file, and it
// does not care whether the file is well-formed.
bool _nestsTooDeep(QByteArray const &data, int limit, int *line, int *column);

// loadXSD behind its validation gate: parses the schema and builds a new tree
// into `root`. 0 or 2; on 2 `root` is untouched.
int _readSchema(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xsdPath);

// Turns Qt's two answers about a schema into the status and lines of
// validateXSD. Qt's load already answers with the validity, so a schema that
// loads but is not valid is only reached from here.
int _schemaVerdict(std::vector<std::string> &errors, bool loaded, bool valid, QSourceLocation const &where);

// Builds the children of `parent` from the sequence of `element`.
void _rec_createParameters(ParameterComplex *parent, QDomElement const &element);

// Builds one node below `parent`, or nothing (null) for a declaration that
// is neither a leaf, a section nor a list.
Parameter *_createParameter(ParameterComplex *parent, QDomElement const &element);

// The presentation record of an xs:annotation; defaults for a null element.
Parameter::VisualParams _parseAnnotation(QDomElement const &annotation);

// The facets of an xs:restriction; defaults for a null element.
ParameterSimple::Fasets _parseRestriction(QDomElement const &restriction);

// The type table; unknown names, the empty one too, give String.
ParameterSimple::SimpleType _toSimpleType(QString const &name);

// "->root->a->b" in double quotes, the path used in the messages; a null
// node gives just the quotes.
std::string _hierarchy(Parameter const *node);

// Lays the values below `element` over the children of `node`. 0 or 1.
int _rec_loadParameters_knStruct(std::vector<std::string> &errors, ParameterComplex *node,
                                 QDomElement const &element);

// Appends an element for each child of `node` to `element`. 0 or 1 (faulty
// children left out).
int _rec_createElements(std::vector<std::string> &errors, QDomElement &element, QDomDocument &document,
                        ParameterComplex const *node);

} // namespace OrvexConfigLib
