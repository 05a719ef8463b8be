// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

// One option that a command understands: "--schema" with "" as short name, or
// "--output" with "-o". Options that take a value take the next argument.
struct OptionInfo
{
    std::string name;
    std::string shortName;
    bool takesValue;
};

// The arguments of one command, split into options and positional arguments.
// Parsed by hand and kept as bytes, so that values reach the configuration
// file exactly as the shell gave them, whatever the locale says.
class Arguments
{
public:
    // False, with the reason in `error`, for an unknown option or an option
    // without its value. "--" ends the options; a negative number is positional.
    bool parse(std::vector<std::string> const &args, std::vector<OptionInfo> const &known,
        std::string &error);

    bool isSet(std::string const &name) const;
    // The value of an option; empty when it was not given.
    std::string value(std::string const &name) const;
    std::vector<std::string> const &positional() const { return _positional; }

private:
    std::vector<std::pair<std::string, std::string>> _options;
    std::vector<std::string> _positional;
};
