// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/arguments.h"

#include <algorithm>
#include <cctype>

namespace {

bool _looksLikeOption(std::string const &arg)
{
    if (arg.size() < 2 || arg[0] != '-')
        return false;
    // "-20" and "-.5" are values for `set`, not options.
    return !(std::isdigit(static_cast<unsigned char>(arg[1])) || arg[1] == '.');
}

OptionInfo const *_findOption(std::vector<OptionInfo> const &known, std::string const &arg)
{
    auto const it = std::find_if(known.begin(), known.end(), [&arg](OptionInfo const &option) {
        return arg == option.name || (!option.shortName.empty() && arg == option.shortName);
    });
    return it == known.end() ? nullptr : &*it;
}

} // namespace

bool Arguments::parse(
    std::vector<std::string> const &args, std::vector<OptionInfo> const &known, std::string &error)
{
    _options.clear();
    _positional.clear();
    bool optionsEnded = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string const &arg = args[i];
        if (optionsEnded || !_looksLikeOption(arg)) {
            _positional.push_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
            continue;
        }
        OptionInfo const *option = _findOption(known, arg);
        if (!option) {
            error = "unknown option " + arg;
            return false;
        }
        std::string value;
        if (option->takesValue) {
            if (i + 1 >= args.size()) {
                error = "option " + arg + " needs a value";
                return false;
            }
            value = args[++i];
        }
        _options.emplace_back(option->name, value);
    }
    return true;
}

bool Arguments::isSet(std::string const &name) const
{
    return std::any_of(_options.begin(), _options.end(),
        [&name](auto const &option) { return option.first == name; });
}

std::string Arguments::value(std::string const &name) const
{
    // The last one given wins, as with most command-line tools.
    for (auto it = _options.rbegin(); it != _options.rend(); ++it)
        if (it->first == name)
            return it->second;
    return std::string();
}
