// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "model/parameter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <locale.h>

namespace {

// Numbers in configuration and schema text always use the decimal point,
// whatever locale the desktop session gives the process.
locale_t _cLocale()
{
    static locale_t const c = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return c;
}

// A bound truncated toward zero; bounds beyond the range of int saturate
// instead of wrapping, and not-a-number reads as 0.
int _truncToInt(double d)
{
    if (d != d)
        return 0;
    if (d >= 2147483647.0)
        return 2147483647;
    if (d <= -2147483648.0)
        return -2147483647 - 1;
    return static_cast<int>(d);
}

// strtol narrowed to the low 32 bits, as every whole-number reading of the
// model does.
int _toInt32(std::string const &value)
{
    long const n = strtol_l(value.c_str(), nullptr, 10, _cLocale());
    return static_cast<int>(static_cast<std::uint32_t>(static_cast<unsigned long>(n)));
}

} // namespace

static bool _checkService(std::vector<std::string> const &services, std::string const &service)
{
    if (service.empty() || services.empty())
        return false;
    return std::find(services.begin(), services.end(), service) != services.end();
}

// ---------------------------------------------------------------- Parameter

Parameter::Parameter(ParameterComplex *parent, std::string const &key, VisualParams const &visual,
                     GlobalType type)
    : parantPtr(parent), parameterKey(key), level(0), visualParams(visual), globalType(type)
{
    _initLevel();
    _addThisToParent();
}

Parameter::~Parameter() = default;

ParameterComplex *Parameter::getParantPtr() const { return parantPtr; }

std::string Parameter::getParameterKey() const { return parameterKey; }

unsigned int Parameter::getLevel() const { return level; }

Parameter::GlobalType Parameter::getGlobalType() const { return globalType; }

Parameter::VisualParams Parameter::getVisualParams() const { return visualParams; }

bool Parameter::isVisible(std::string const &service) const
{
    if (!visualParams.isvisible)
        return false;
    if (visualParams.services.empty())
        return true;
    return _checkService(visualParams.services, service);
}

void Parameter::_initLevel() { level = parantPtr ? parantPtr->getLevel() + 1 : 0; }

void Parameter::_addThisToParent()
{
    if (parantPtr)
        parantPtr->addChildPtr(this); // a refusal cannot happen for a fresh node
}

// --------------------------------------------------------- ParameterComplex

ParameterComplex::ParameterComplex(ParameterComplex *parent, std::string const &key,
                                   VisualParams const &visual)
    : Parameter(parent, key, visual, GlobalType::Complex)
{
}

ParameterComplex::~ParameterComplex()
{
    for (Parameter *child : childrenPtrs)
        delete child; // null entries are tolerated: delete of null does nothing
    childrenPtrs.clear();
    childrenPtrs.shrink_to_fit();
}

bool ParameterComplex::addChildPtr(Parameter *child)
{
    if (!child)
        return false;
    if (child->getLevel() <= level)
        return false;
    if (std::find(childrenPtrs.begin(), childrenPtrs.end(), child) != childrenPtrs.end())
        return false;
    childrenPtrs.push_back(child);
    return true;
}

std::vector<Parameter *> ParameterComplex::getChildrenPtrs() const { return childrenPtrs; }

bool ParameterComplex::isVisible_rec(std::string service) const
{
    if (!isVisible(service))
        return false;
    for (Parameter const *child : childrenPtrs) {
        if (!child)
            continue;
        bool const visible = child->getGlobalType() == GlobalType::Complex
                                 ? static_cast<ParameterComplex const *>(child)->isVisible_rec(service)
                                 : child->isVisible(service);
        if (visible)
            return true;
    }
    return false; // also a section without children
}

ParameterSimple *ParameterComplex::getSimpleChild(std::size_t index, std::string const &key) const
{
    if (childrenPtrs.size() <= index || !childrenPtrs[index])
        return nullptr;
    Parameter *child = childrenPtrs[index];
    if (child->getGlobalType() != GlobalType::Simple || child->getParameterKey() != key)
        return nullptr;
    return dynamic_cast<ParameterSimple *>(child);
}

static void _rec_visibleLeaves(std::vector<ParameterSimple *> &leaves, std::string const &service,
                               ParameterComplex const *node)
{
    for (Parameter *child : node->getChildrenPtrs()) {
        if (!child || !child->isVisible(service))
            continue;
        switch (child->getGlobalType()) {
        case Parameter::GlobalType::Complex:
            if (auto const *complex = dynamic_cast<ParameterComplex const *>(child))
                _rec_visibleLeaves(leaves, service, complex);
            break;
        case Parameter::GlobalType::Simple:
        case Parameter::GlobalType::List:
            if (auto *leaf = dynamic_cast<ParameterSimple *>(child))
                leaves.push_back(leaf);
            break;
        case Parameter::GlobalType::ListTLEs:
            break;
        }
    }
}

std::vector<ParameterSimple *> ParameterComplex::getVisibleLeaves(std::string const &service) const
{
    std::vector<ParameterSimple *> leaves;
    _rec_visibleLeaves(leaves, service, this);
    return leaves;
}

// ---------------------------------------------------------- ParameterSimple

ParameterSimple::ParameterSimple(ParameterComplex *parent, std::string const &key,
                                 Parameter::VisualParams const &visual, SimpleType type,
                                 Fasets const &fasets)
    : Parameter(parent, key, visual, GlobalType::Simple), simpleType(type), fasets(fasets)
{
}

ParameterSimple::SimpleType ParameterSimple::getSimpleType() const { return simpleType; }

ParameterSimple::Fasets ParameterSimple::getFasets() const { return fasets; }

std::string ParameterSimple::getValue() const { return value; }

bool ParameterSimple::hasEnumeration() const
{
    return fasets.kind == FasetEnumeration && !fasets.enumeration.empty();
}

bool ParameterSimple::setValue(std::string const &newValue)
{
    if (!checkValue(newValue, fasets, simpleType))
        return false;
    value = newValue;
    return true;
}

bool ParameterSimple::checkValue(std::string const &value, Fasets const &fasets, SimpleType type)
{
    if (!fasets.enumeration.empty())
        return std::find(fasets.enumeration.begin(), fasets.enumeration.end(), value)
               != fasets.enumeration.end();
    if (value.empty())
        return true;
    if (type == Integer) {
        int const n = value2int(value);
        // The bounds are truncated toward zero: 0.9 .. 5.9 allows 0 .. 5.
        return _truncToInt(fasets.minValue) <= n && n <= _truncToInt(fasets.maxValue);
    }
    if (type == Decimal) {
        double const d = value2double(value);
        return fasets.maxValue >= d && d >= fasets.minValue; // not-a-number fails both
    }
    return true;
}

int ParameterSimple::value2int(std::string const &value) { return _toInt32(value); }

double ParameterSimple::value2double(std::string const &value)
{
    return strtod_l(value.c_str(), nullptr, _cLocale());
}

bool ParameterSimple::value2bool(std::string const &value)
{
    if (value.empty())
        return false;
    if (value == "true")
        return true;
    return _toInt32(value) != 0;
}

// ------------------------------------------------------------ ParameterList

ParameterList::ParameterList(ParameterComplex *parent, std::string const &key,
                             std::string const &listKey, Parameter::VisualParams const &visual,
                             SimpleType type, Fasets const &fasets)
    : ParameterSimple(parent, key, visual, type, fasets), listKey(listKey)
{
    globalType = GlobalType::List;
}

std::string ParameterList::getListKey() const { return listKey; }

std::vector<std::string> ParameterList::getValues() const { return values; }

bool ParameterList::setValues(std::vector<std::string> const &newValues)
{
    if (newValues.empty()) {
        if (_truncToInt(fasets.minValue) >= 1)
            return false;
        value.clear();
        values.clear();
        return true;
    }
    if (static_cast<long long>(_truncToInt(fasets.maxValue))
        < static_cast<long long>(newValues.size()))
        return false;
    if (!checkValues(newValues, fasets, simpleType))
        return false;
    value = newValues.front(); // the mirrored value follows setValues only
    values = newValues;
    return true;
}

bool ParameterList::addValue(std::string const &item)
{
    if (!checkValue(item, fasets, simpleType))
        return false;
    values.push_back(item);
    return true;
}

bool ParameterList::removeValue(unsigned int index)
{
    if (index >= values.size())
        return false;
    values.erase(values.begin() + index);
    return true;
}

bool ParameterList::checkValues(std::vector<std::string> const &values, Fasets const &fasets,
                                SimpleType type)
{
    for (std::string const &item : values)
        if (!checkValue(item, fasets, type))
            return false;
    return true;
}

// -------------------------------------------------------- ParameterListTLEs

ParameterListTLEs::ParameterListTLEs(ParameterComplex *parent, std::string const &key,
                                     std::string const &listKey,
                                     Parameter::VisualParams const &visual)
    : ParameterSimple(parent, key, visual, ParameterSimple::SimpleType::TLE, Fasets()),
      listKey(listKey)
{
    globalType = GlobalType::ListTLEs;
}

std::string ParameterListTLEs::getListKey() const { return listKey; }

std::vector<ParameterListTLEs::TLE> ParameterListTLEs::getTLEs() const { return tles; }

void ParameterListTLEs::setTLE(TLE const &tle) { tles.push_back(tle); }

void ParameterListTLEs::setTLEs(std::vector<TLE> const &newTles) { tles = newTles; }
