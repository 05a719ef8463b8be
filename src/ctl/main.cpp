// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl: the command-line companion of Orvex Config Manager.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/completion.h"
#include "ctl/console.h"

#include <orvex_version.h>

#include <QCoreApplication>
#include <QTextCodec>

#include <algorithm>
#include <iostream>

namespace {

struct Command
{
    char const *name;
    char const *synopsis;
    char const *summary;
    char const *details;
    std::vector<OptionInfo> options;
    std::size_t minArgs;
    std::size_t maxArgs;
    int (*run)(Arguments const &);
};

OptionInfo const _helpOption { "--help", "-h", false };
OptionInfo const _schemaOption { "--schema", "", true };
OptionInfo const _jsonOption { "--json", "", false };

char const *const _schemaText
    = "  --schema SCHEMA  the schema to use; the default configurations are\n"
      "                   looked up beside it (default: orvex/default/\n"
      "                   schema-userconf.xsd beside this program)\n";

char const *const _jsonText
    = "  --json           print one JSON document on standard output instead, with\n"
      "                   the messages of standard error also in its \"messages\";\n"
      "                   the exit status is the same (docs/orvexctl.md tells the\n"
      "                   fields)\n";

char const *const _rewriteText
    = "The file is written from the schema's parameters, as the desktop program\n"
      "saves it: elements that the schema doesn't declare are not kept.\n";

std::vector<Command> const &_commands()
{
    static std::size_t const many = static_cast<std::size_t>(-1);
    static std::vector<Command> const commands = {
        { "check-schema", "check-schema [SCHEMA]",
            "check a schema and print its parameters as an outline",
            "Validates SCHEMA as an XML Schema, builds the parameters from it as the\n"
            "program does, and prints them as an indented outline: sections end in\n"
            "\"/\", parameters give their type, what they allow, unit, display name,\n"
            "importance, visibility and services. Remarks on standard error tell what\n"
            "the program will read otherwise than written: declarations that make no\n"
            "parameter, unknown type names, missing or incomplete default\n"
            "configurations, and the like. With --json the outline is a tree of\n"
            "objects. Remarks: any of those remarks.\n",
            { _helpOption, _jsonOption }, 0, 1, runCheckSchema },
        { "validate", "validate PATH... [--schema SCHEMA]",
            "validate configuration files against the schema",
            "Validates each file against the schema, which is read once for all of\n"
            "them. A folder stands for every *.conf and *.xml file below it, in sorted\n"
            "order. Prints \"FILE: valid\", or \"FILE:LINE:COLUMN: message\" for each\n"
            "finding (line and column 0 for a file that can't be read), then \"N valid,\n"
            "M invalid\". For an invalid file the validator's location line and the\n"
            "line of the file it points to also go to standard error.\n"
            "Exit 2 when any file is invalid or can't be read. Remarks: a folder\n"
            "without any such file, so that nothing was validated.\n",
            { _helpOption, _schemaOption, _jsonOption }, 1, many, runValidate },
        { "describe", "describe PATH [--schema SCHEMA]", "tell what the schema says of a parameter",
            "Prints what the schema says of the parameter or section at PATH: display\n"
            "name, type, what it allows (range, enumeration, list bounds), unit, the\n"
            "value of each service's default configuration that holds it,\n"
            "documentation and source, services, importance and visibility.\n"
            "A path that the schema doesn't have fails. No remarks.\n",
            { _helpOption, _schemaOption, _jsonOption }, 1, 1, runDescribe },
        { "search", "search TEXT [--schema SCHEMA]", "find parameters by key, name, unit or text",
            "Prints the parameters of every service whose key, display name, unit or\n"
            "documentation contains TEXT, whatever the case, one a line:\n"
            "\"path  display name  [services]\". Remarks: nothing matches.\n",
            { _helpOption, _schemaOption, _jsonOption }, 1, 1, runSearch },
        { "list", "list CONFIG [--schema SCHEMA]", "print every parameter as path = value",
            "Prints one line per value, \"path/to/key = value\", in schema order: a list\n"
            "one line per item, \"key[0] = item\", a TLE list one line per line of each\n"
            "set, \"key[0]/Line1 = ...\", and a list without items its bare key with an\n"
            "empty value. Parameters that CONFIG lacks are told on standard error and\n"
            "listed with an empty value. Remarks: parameters that CONFIG lacks.\n",
            { _helpOption, _schemaOption, _jsonOption }, 1, 1, runList },
        { "get", "get CONFIG PATH [--schema SCHEMA]", "print one value",
            "Prints the value at PATH, written as \"list\" writes it: a parameter, a\n"
            "section (all lines below it), a list (one item a line), \"key[N]\" for one\n"
            "item or set, \"key[N]/Line1\" for one line of a set. A TLE list prints\n"
            "its sets as text. Remarks: parameters that CONFIG lacks.\n",
            { _helpOption, _schemaOption, _jsonOption }, 2, 2, runGet },
        { "set", "set CONFIG PATH VALUE... [--from-file FILE]", "change one value",
            "Sets the value at PATH and writes CONFIG. A value that the schema\n"
            "doesn't allow is refused with what it allows, and CONFIG is left as it\n"
            "was. A list takes its items as separate VALUEs (none for an empty list);\n"
            "\"key[N]\" replaces item N, and N equal to the count appends one. A TLE\n"
            "list takes the text of its sets as one VALUE, \"key[N]/Line1\" one line.\n"
            "Put \"--\" in front of values that begin with \"-\" and aren't numbers.\n"
            "--from-file FILE takes the value from FILE instead, \"-\" for standard\n"
            "input: a list one item a line, anything else the whole text without its\n"
            "last line end (the text of the sets for a TLE list).\n"
            "Remarks: parameters that CONFIG lacks, or a write with remarks.\n",
            { _helpOption, _schemaOption, { "--from-file", "", true } }, 2, many, runSet },
        { "new", "new SERVICE OUT [--force] [--schema SCHEMA]",
            "create a configuration from a service's default",
            "Writes OUT as a new configuration of SERVICE, made from the service's\n"
            "default configuration <service>-default.conf, as the desktop program's\n"
            "New followed by Save As. An existing OUT is only replaced with --force.\n",
            { _helpOption, _schemaOption, { "--force", "-f", false } }, 2, 2, runNew },
        { "update", "update CONFIG [-o OUT] [--dry-run]",
            "bring a configuration up to the newest version",
            "Brings a configuration of an older supported version up to the newest:\n"
            "the default configuration of its service is read, CONFIG laid over it,\n"
            "and the version set to the newest listed one. The result is written to\n"
            "OUT, or over CONFIG with a copy of the old file kept as CONFIG.bak. A\n"
            "report tells the values kept from the old file, the parameters filled\n"
            "from the default, the values that the schema refuses now (the default\n"
            "stays), and the elements that the schema no longer declares (dropped).\n"
            "A file at the newest version is left alone. --dry-run prints the whole\n"
            "report and writes nothing, not even the backup.\n"
            "Remarks: values that the schema refuses now, lines of the engine other\n"
            "than the parameters the old file lacks, or a write with remarks.\n",
            { _helpOption, _schemaOption, { "--output", "-o", true }, { "--dry-run", "", false },
                _jsonOption },
            1, 1, runUpdate },
        { "diff", "diff CONFIG [--schema SCHEMA]",
            "print the values that differ from the service's default",
            "Prints the values of CONFIG that differ from the default configuration of\n"
            "its service, \"path = value  # default: value\"; an item or a line that\n"
            "one side lacks stands against \"(none)\".\n"
            "Remarks: parameters that CONFIG or the default lacks.\n",
            { _helpOption, _schemaOption, _jsonOption }, 1, 1, runDiff },
        { "tle-check", "tle-check FILE [--report [--at DATE] [--max-age DAYS]]",
            "check a file of TLE sets",
            "Reads the element sets of FILE as the TLE editor does. Its messages go to\n"
            "standard error, the good sets in their normal form to standard output.\n"
            "With --report a table of the sets instead: catalog number (an Alpha-5\n"
            "number with its value, \"A0000 (100000)\"), epoch, its age in days,\n"
            "inclination and mean motion, and under a set \"!\" lines for what is odd:\n"
            "a catalog number met before, an epoch older than --max-age DAYS (default\n"
            "14) or in the future, and for a set the checker refused the likely cause\n"
            "(a non-breaking space, tab or other byte, a line of the wrong length, the\n"
            "check digit against the one expected, a \"0 NAME\" line, lines 1 and 2\n"
            "swapped or of different satellites). --at DATE counts the ages at DATE\n"
            "(UTC) instead of now. --json gives the report as JSON.\n"
            "Remarks: sets that the checker refuses.\n",
            { _helpOption, { "--report", "", false }, { "--at", "", true },
                { "--max-age", "", true }, _jsonOption },
            1, 1, runTleCheck },
        { "tle-import",
            "tle-import FILE... [-o OUT] [--into CONFIG PATH [--append] [--schema SCHEMA]]",
            "convert OMM records to TLE sets",
            "Converts the OMM records of the FILEs (CCSDS Orbit Mean-Elements Messages\n"
            "as XML, CSV with a header row, JSON or KVN, told by content) into TLE sets,\n"
            "name line and two data lines each, in input order, on standard output or\n"
            "into OUT. Catalog numbers from 100000 to 339999 take the Alpha-5 form, a\n"
            "letter for the first two digits (A = 10 ... Z = 33 without I and O), so\n"
            "100000 is \"A0000\". A record with a number above 339999, a missing or\n"
            "unreadable keyword, or a value that doesn't fit its columns is refused by\n"
            "name on standard error; the others are still converted.\n"
            "--into CONFIG PATH puts the sets into the TLE list at PATH instead of\n"
            "printing them, replacing its sets or, with --append, behind them, and\n"
            "writes CONFIG as \"set\" does; CONFIG stays untouched when PATH is not a\n"
            "TLE list. PATH comes last. Exit status 1 when a record was refused, 2 when\n"
            "no file could be read.\n",
            { _helpOption, _schemaOption, { "--output", "-o", true }, { "--into", "", true },
                { "--append", "", false } },
            1, many, runTleImport },
        { "completion", "completion bash", "print the bash completion script",
            "Prints a bash completion script, to be sourced or installed as\n"
            "/usr/share/bash-completion/completions/orvexctl. It asks orvexctl itself\n"
            "for commands, options, services and the parameter paths of the schema\n"
            "in force (--schema on the line, else the default one).\n",
            { _helpOption }, 1, 1, runCompletion },
    };
    return commands;
}

std::string _usage()
{
    std::string text
        = "Usage: orvexctl COMMAND [ARGUMENTS]\n"
          "\n"
          "The command-line companion of Orvex Config Manager: checks schemas, reads,\n"
          "changes, creates and updates configuration files, and checks TLE files.\n"
          "\n"
          "Commands:\n";
    for (Command const &command : _commands()) {
        std::string synopsis = command.synopsis;
        synopsis.resize(std::max<std::size_t>(synopsis.size(), 44), ' ');
        text += "  " + synopsis + "  " + command.summary + "\n";
    }
    text += "\n"
            "The schema and the default configurations are those in orvex/default\n"
            "beside this program unless --schema names another schema.\n"
            "Reading commands take --json for one JSON document on standard output.\n"
            "Exit status: 0 success, 1 done with remarks, 2 failure.\n"
            "\"orvexctl COMMAND --help\" tells more of one command.\n";
    return text;
}

std::string _help(Command const &command)
{
    std::string text
        = std::string("Usage: orvexctl ") + command.synopsis + "\n\n" + command.details;
    bool const takesSchema = command.options.size() > 1 && command.options[1].name == "--schema";
    if (takesSchema)
        text += "\n" + std::string(_schemaText);
    if (command.run == runSet || command.run == runTleImport)
        text += "\n" + std::string(_rewriteText);
    bool const takesJson = std::any_of(command.options.begin(), command.options.end(),
        [](OptionInfo const &option) { return option.name == _jsonOption.name; });
    if (takesJson)
        text += "\n" + std::string(_jsonText);
    text += "\nExit status: 0 success, 1 done with remarks, 2 failure.\n";
    return text;
}

std::vector<CompletionCommand> _completionTable()
{
    std::vector<CompletionCommand> table;
    for (Command const &command : _commands())
        table.push_back({ command.name, command.synopsis, command.options });
    return table;
}

Command const *_find(std::string const &name)
{
    for (Command const &command : _commands())
        if (name == command.name)
            return &command;
    return nullptr;
}

int _run(Command const &command, std::vector<std::string> const &rest)
{
    Arguments args;
    std::string error;
    if (!args.parse(rest, command.options, error)) {
        Console::message(std::string(command.name) + ": " + error);
        std::cerr << "Usage: orvexctl " << command.synopsis << '\n';
        return Console::Failure;
    }
    if (args.isSet("--help")) {
        std::cout << _help(command);
        return Console::Ok;
    }
    Console::setJson(args.isSet("--json"));
    int status = Console::Failure;
    std::size_t const count = args.positional().size();
    if (count < command.minArgs || count > command.maxArgs) {
        Console::message(std::string(command.name) + ": wrong number of arguments");
        std::cerr << "Usage: orvexctl " << command.synopsis << '\n';
    } else {
        status = command.run(args);
    }
    Console::finish();
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // The writer prints through the locale's codec while the file declares
    // UTF-8; under a locale of another charset that would garble non-ASCII values.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    // The bytes of argv, not QCoreApplication::arguments(): values reach the
    // files as the shell gave them.
    std::vector<std::string> const args(argv + 1, argv + argc);
    if (args.empty()) {
        std::cerr << _usage();
        return Console::Failure;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        std::cout << _usage();
        return Console::Ok;
    }
    if (args[0] == "--version") {
        std::cout << "orvexctl " << ORVEX_VERSION << '\n';
        return Console::Ok;
    }
    if (args[0] == completionHelper) // hidden: the completion script's questions
        return answerCompletion(
            _completionTable(), std::vector<std::string>(args.begin() + 1, args.end()));
    Command const *command = _find(args[0]);
    if (!command) {
        Console::message("unknown command " + args[0]);
        std::cerr << _usage();
        return Console::Failure;
    }
    return _run(*command, std::vector<std::string>(args.begin() + 1, args.end()));
}
