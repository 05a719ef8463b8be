// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// tle-import: OMM records of the public catalogs as TLE sets.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/ommreader.h"
#include "ctl/valuetext.h"
#include "model/parameter.h"
#include "engine/readablefile.h"
#include "engine/textconv.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace {

// The sets of one file, appended to `text` and counted in `sets`. 0 all
// converted, 1 some refused, 2 the file could not be read at all.
int _importFile(std::string const &path, std::string &text, std::size_t &sets)
{
    QFile file(_toQString(path));
    if (!_openForReading(file)) {
        Console::message(path + " cannot be read");
        return Console::Failure;
    }
    std::vector<std::string> refusals;
    std::string error;
    if (!OmmReader::convert(file.readAll(), text, sets, refusals, error)) {
        Console::message(path + ": " + error);
        return Console::Failure;
    }
    for (std::string const &refusal : refusals)
        Console::message(path + ": " + refusal);
    return refusals.empty() ? Console::Ok : Console::Remarks;
}

bool _writeOut(std::string const &path, std::string const &text)
{
    QSaveFile file(QString::fromUtf8(path.c_str()));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.data(), static_cast<qint64>(text.size()));
        if (file.commit())
            return true;
    }
    Console::message(path + " cannot be written");
    return false;
}

// --into takes a whole TLE list; with --append its sets stay in front.
SetPrelude _intoList(bool append)
{
    return [append](Parameter const *node, ValuePath const &path, std::vector<std::string> &values,
               std::string &refusal) {
        if (node->getGlobalType() != Parameter::GlobalType::ListTLEs) {
            refusal = "is not a TLE list";
            return false;
        }
        if (path.index >= 0) {
            refusal = "names one set; the sets go into the whole TLE list";
            return false;
        }
        std::string const present = tleListText(node);
        if (append && !present.empty())
            values[0] = present + "\n\n" + values[0];
        return true;
    };
}

} // namespace

int runTleImport(Arguments const &args)
{
    std::vector<std::string> files = args.positional();
    bool const into = args.isSet("--into");
    if (!into && (args.isSet("--append") || args.isSet("--schema"))) {
        Console::message("tle-import: --append and --schema go with --into only");
        return Console::Failure;
    }
    std::string pathText;
    if (into) {
        if (files.size() < 2) {
            Console::message("tle-import: --into CONFIG takes the PATH of a TLE list behind it");
            return Console::Failure;
        }
        pathText = files.back();
        files.pop_back();
    }
    std::string text;
    std::size_t sets = 0;
    int status = Console::Ok;
    std::size_t unreadable = 0;
    for (std::string const &file : files) {
        int const fileStatus = _importFile(file, text, sets);
        // A file that can't be read is a remark while another one could.
        unreadable += fileStatus == Console::Failure ? 1 : 0;
        status = Console::worse(status, std::min<int>(fileStatus, Console::Remarks));
    }
    if (unreadable == files.size())
        return Console::Failure;

    if (args.isSet("--output")) {
        if (!_writeOut(args.value("--output"), sets == 0 ? text : text + "\n"))
            return Console::Failure;
    } else if (!into && sets > 0) {
        Console::print(text);
    }
    if (!into)
        return status;
    std::string const &config = args.value("--into");
    if (sets == 0) {
        Console::message("tle-import: no set was converted; " + config + " is left as it was");
        return status;
    }
    return Console::worse(status,
        setValueAndWrite(
            locationOf(args), config, pathText, { text }, _intoList(args.isSet("--append"))));
}
