// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/completion.h"

#include "ctl/configtree.h"
#include "ctl/console.h"
#include "model/parameter.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <map>

char const *const completionHelper = "__complete";

namespace {

char const *const _filesAnswer = ":files";

// Every script asks the helper, so that it never lags behind the program; the
// helper's answers are read a line each and never globbed.
char const *const _bashScript
    = R"(# bash completion for orvexctl, printed by "orvexctl completion bash".
# Commands, options, services and parameter paths are asked of orvexctl itself.
_orvexctl()
{
    local cur=${COMP_WORDS[COMP_CWORD]}
    local -a answer
    mapfile -t answer < <("${COMP_WORDS[0]}" __complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    if [[ ${answer[0]-} == :files ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    else
        local IFS=$'\n'
        mapfile -t COMPREPLY < <(compgen -W "${answer[*]}" -- "$cur")
    fi
}
complete -F _orvexctl orvexctl
)";

// What the words of a synopsis say of one command's arguments.
struct Synopsis
{
    std::vector<std::string> positionals; // "CONFIG", "PATH", "VALUE..."
    std::map<std::string, std::string> optionValues; // "--output" -> "OUT"
};

OptionInfo const *_option(CompletionCommand const &command, std::string const &word)
{
    for (OptionInfo const &option : command.options)
        if (word == option.name || (!option.shortName.empty() && word == option.shortName))
            return &option;
    return nullptr;
}

std::vector<std::string> _words(std::string const &text)
{
    std::vector<std::string> words;
    std::string word;
    for (char const c : text + ' ') {
        if (c == ' ' || c == '[' || c == ']') {
            if (!word.empty())
                words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    return words;
}

Synopsis _synopsis(CompletionCommand const &command)
{
    Synopsis synopsis;
    std::vector<std::string> const words = _words(command.synopsis);
    for (std::size_t i = 1; i < words.size(); ++i) { // words[0] is the command's name
        OptionInfo const *option = _option(command, words[i]);
        if (!option) {
            synopsis.positionals.push_back(words[i]);
        } else if (option->takesValue && i + 1 < words.size()) {
            synopsis.optionValues[option->name] = words[++i]; // "-o OUT" names --output's value
        }
    }
    return synopsis;
}

bool _isLiteral(std::string const &placeholder)
{
    return std::all_of(placeholder.begin(), placeholder.end(),
        [](unsigned char c) { return std::islower(c) || c == '-'; });
}

bool _namesFile(std::string const &placeholder)
{
    return placeholder == "CONFIG" || placeholder == "SCHEMA" || placeholder == "OUT"
        || placeholder.find("FILE") != std::string::npos;
}

void _rec_collectPaths(std::vector<std::string> &paths, Parameter const *node)
{
    if (node->getParantPtr())
        paths.push_back(pathOf(node));
    if (node->getGlobalType() != Parameter::GlobalType::Complex)
        return;
    for (Parameter const *child : dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
        _rec_collectPaths(paths, child);
}

// The services or the parameter paths of the schema in force.
std::vector<std::string> _fromSchema(std::string const &schema, bool services)
{
    SchemaLocation const location
        = schema.empty() ? SchemaLocation::besideExecutable() : SchemaLocation::ofSchema(schema);
    ConfigTree tree;
    std::vector<std::string> unused;
    if (tree.loadSchema(unused, location.schemaPath) != Console::Ok)
        return {};
    if (services)
        return tree.services();
    std::vector<std::string> paths;
    _rec_collectPaths(paths, tree.root());
    return paths;
}

// "VALUE..." stands for any number of values.
bool _repeats(std::string const &placeholder)
{
    return placeholder.size() > 3 && placeholder.compare(placeholder.size() - 3, 3, "...") == 0;
}

std::vector<std::string> _offer(std::string placeholder, std::string const &schema)
{
    // "PATH..." of validate is files and folders: a command takes one parameter path.
    if (placeholder == "PATH...")
        return { _filesAnswer };
    if (_repeats(placeholder))
        placeholder.resize(placeholder.size() - 3);
    if (placeholder.empty())
        return {};
    if (placeholder == "SERVICE")
        return _fromSchema(schema, true);
    if (placeholder == "PATH")
        return _fromSchema(schema, false);
    if (_isLiteral(placeholder))
        return { placeholder };
    if (_namesFile(placeholder))
        return { _filesAnswer };
    return {}; // a value, a date, a number: nothing to offer
}

std::vector<std::string> _commandNames(std::vector<CompletionCommand> const &commands)
{
    std::vector<std::string> names;
    for (CompletionCommand const &command : commands)
        names.push_back(command.name);
    names.insert(names.end(), { "help", "--help", "--version" });
    return names;
}

std::vector<std::string> _optionNames(CompletionCommand const &command)
{
    std::vector<std::string> names;
    for (OptionInfo const &option : command.options) {
        names.push_back(option.name);
        if (!option.shortName.empty())
            names.push_back(option.shortName);
    }
    return names;
}

// The placeholder of argument `index`; the last one repeats when it ends in "...".
std::string _positional(Synopsis const &synopsis, std::size_t index)
{
    std::vector<std::string> const &all = synopsis.positionals;
    if (index < all.size())
        return all[index];
    if (!all.empty() && _repeats(all.back()))
        return all.back();
    return {};
}

} // namespace

std::vector<std::string> completionCandidates(
    std::vector<CompletionCommand> const &commands, std::vector<std::string> const &words)
{
    if (words.size() <= 1)
        return _commandNames(commands);
    auto const found = std::find_if(commands.begin(), commands.end(),
        [&](CompletionCommand const &command) { return command.name == words[0]; });
    if (found == commands.end())
        return {};
    CompletionCommand const &command = *found;
    Synopsis const synopsis = _synopsis(command);

    // The words already complete, read as the command's parser reads them.
    std::string schema;
    OptionInfo const *pending = nullptr;
    bool optionsEnded = false;
    std::size_t positionals = 0;
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        std::string const &word = words[i];
        if (pending) {
            if (pending->name == "--schema")
                schema = word;
            pending = nullptr;
        } else if (!optionsEnded && word == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && _option(command, word)) {
            OptionInfo const *option = _option(command, word);
            pending = option->takesValue ? option : nullptr;
        } else {
            ++positionals;
        }
    }

    std::string const &current = words.back();
    if (pending) {
        auto const value = synopsis.optionValues.find(pending->name);
        return _offer(
            value == synopsis.optionValues.end() ? std::string("FILE") : value->second, schema);
    }
    if (!optionsEnded && !current.empty() && current[0] == '-')
        return _optionNames(command);
    return _offer(_positional(synopsis, positionals), schema);
}

int answerCompletion(
    std::vector<CompletionCommand> const &commands, std::vector<std::string> const &words)
{
    for (std::string const &candidate : completionCandidates(commands, words))
        Console::print(candidate);
    return Console::Ok;
}

std::string bashCompletionScript()
{
    return _bashScript;
}

int runCompletion(Arguments const &args)
{
    std::string const shell = args.positional().front();
    if (shell != "bash") {
        Console::message("completion: no completion for " + shell + "; bash is known");
        return Console::Failure;
    }
    std::cout << bashCompletionScript();
    return Console::Ok;
}
