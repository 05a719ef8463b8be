// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

class ParameterComplex;
class ParameterSimple;

// A node of the parameter tree. The tree is built once from the schema and
// never restructured; only the values of the leaves change. The only virtual
// operation of the family is the destructor: code that holds a Parameter*
// asks getGlobalType() and then uses dynamic_cast.
class Parameter
{
public:
    enum class GlobalType { Simple = 0, List = 1, ListTLEs = 2, Complex = 3 };

    // The presentation record of a node, a plain value.
    struct VisualParams
    {
        VisualParams() : importance(2), isvisible(true) {}

        std::string name_en;
        std::string dimension;
        std::string documentation;
        std::string source;
        std::vector<std::string> services; // empty means all services
        int importance;
        bool isvisible;
    };

    // Links itself into `parent` (when there is one) before the derived part
    // exists; that is safe because nothing calls into a child while it is built.
    Parameter(ParameterComplex *parent, std::string const &key, VisualParams const &visual,
              GlobalType type);
    virtual ~Parameter();

    Parameter(Parameter const &) = delete;
    Parameter &operator=(Parameter const &) = delete;

    // The parent; null on the root.
    ParameterComplex *getParantPtr() const;
    // A copy of the key.
    std::string getParameterKey() const;
    // 0 for the root, the parent's level plus one below it.
    unsigned int getLevel() const;
    GlobalType getGlobalType() const;
    // A full copy of the presentation record.
    VisualParams getVisualParams() const;
    // The node's own verdict only: ancestors are not consulted.
    bool isVisible(std::string const &service) const;

protected:
    void _initLevel();
    void _addThisToParent();

    ParameterComplex *parantPtr;
    std::string parameterKey;
    unsigned int level;
    VisualParams visualParams;
    GlobalType globalType;
};

// An inner node: a section, or the root.
class ParameterComplex : public Parameter
{
public:
    ParameterComplex(ParameterComplex *parent, std::string const &key, VisualParams const &visual);
    ~ParameterComplex() override;

    // Refuses null, a child not deeper than this node, and a child already
    // present; appends otherwise. The constructors ignore the answer.
    bool addChildPtr(Parameter *child);
    // A copy of the pointer vector; the children stay owned by this node.
    std::vector<Parameter *> getChildrenPtrs() const;
    // True when at least one leaf below is visible along visible sections.
    bool isVisible_rec(std::string service) const;
    // The child at `index` when it is a one-value leaf with the key `key`;
    // null otherwise.
    ParameterSimple *getSimpleChild(std::size_t index, std::string const &key) const;
    // The visible leaves and lists below this node, depth first in schema
    // order. A hidden node hides its whole subtree; TLE lists are left out.
    std::vector<ParameterSimple *> getVisibleLeaves(std::string const &service) const;

protected:
    std::vector<Parameter *> childrenPtrs;
};

// A leaf with one value, kept as text.
class ParameterSimple : public Parameter
{
public:
    enum SimpleType {
        Integer = 0,
        Decimal = 1,
        Boolean = 2,
        String = 3,
        Dirpath = 4,
        Filepath = 5,
        Email = 6,
        Password = 7,
        HeaderKeys = 8,
        FilterKeys = 9,
        TLE = 10
    };

    enum FasetKind { FasetNone = 0, FasetRange = 1, FasetEnumeration = 2 };

    // The restrictions of a leaf, a plain value. A bound that the schema did
    // not give keeps its default, and the defaults act as real limits.
    struct Fasets
    {
        Fasets() : kind(FasetNone), minValue(-9999999.9), maxValue(9999999.9) {}

        int kind;
        double minValue;
        double maxValue;
        std::vector<std::string> enumeration;
    };

    ParameterSimple(ParameterComplex *parent, std::string const &key,
                    Parameter::VisualParams const &visual, SimpleType type, Fasets const &fasets);

    SimpleType getSimpleType() const;
    // A copy of the facet record.
    Fasets getFasets() const;
    // A copy of the current value; empty until the first accepted setValue.
    std::string getValue() const;
    // Whether the facets are an enumeration with at least one entry.
    bool hasEnumeration() const;

    // Stores the text unchanged when checkValue allows it; otherwise leaves
    // the value as it was and returns false.
    bool setValue(std::string const &value);

    // Whether a value is allowed: an enumeration decides alone; the empty
    // value passes otherwise; Integer and Decimal are held against the bounds.
    static bool checkValue(std::string const &value, Fasets const &fasets, SimpleType type);

    // Text to numbers, reading as much of a number as the text starts with,
    // whatever the process locale; no error channel.
    static int value2int(std::string const &value);
    static double value2double(std::string const &value);
    // Exactly "true" is true; otherwise the text is read as a whole number.
    static bool value2bool(std::string const &value);

protected:
    SimpleType simpleType;
    Fasets fasets;
    std::string value;
};

// A leaf with a list of value texts of one type. Its facets bound the number
// of items and, for numbers, each item as well.
class ParameterList : public ParameterSimple
{
public:
    ParameterList(ParameterComplex *parent, std::string const &key, std::string const &listKey,
                  Parameter::VisualParams const &visual, SimpleType type, Fasets const &fasets);

    std::string getListKey() const;
    // A copy of the items.
    std::vector<std::string> getValues() const;
    // Replaces all items, or changes nothing and returns false. The minimum
    // is only tested against an empty list; the editor keeps the exact count.
    bool setValues(std::vector<std::string> const &values);
    // Appends one item that checkValue allows; the mirrored value stays
    // (pinned by addValueLeavesMirroredValueAlone).
    bool addValue(std::string const &value);
    // Erases one item; false for an index at or past the end.
    bool removeValue(unsigned int index);

    // True for an empty list, else whether every item passes checkValue.
    static bool checkValues(std::vector<std::string> const &values, Fasets const &fasets,
                            SimpleType type);

protected:
    std::string listKey;
    std::vector<std::string> values;
};

// A leaf with a list of TLE records; the records are checked by the TLE
// editor before they get here, not by the model.
class ParameterListTLEs : public ParameterSimple
{
public:
    struct TLE
    {
        std::string line0;
        std::string line1;
        std::string line2;
    };

    ParameterListTLEs(ParameterComplex *parent, std::string const &key, std::string const &listKey,
                      Parameter::VisualParams const &visual);

    std::string getListKey() const;
    // A copy of the records.
    std::vector<TLE> getTLEs() const;
    // Appends one record, despite its name (pinned by setTLEAppends).
    void setTLE(TLE const &tle);
    // Replaces all records.
    void setTLEs(std::vector<TLE> const &tles);

protected:
    std::string listKey;
    std::vector<TLE> tles;
};
