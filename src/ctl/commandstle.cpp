// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// tle-check: a file of element sets.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/console.h"
#include "ctl/tlereport.h"
#include "tle/checkertle.h"
#include "engine/textconv.h"

#include <QDateTime>
#include <QJsonObject>

namespace {

// The moment at which ages are counted: now, or the UTC date given with --at.
bool _now(Arguments const &args, std::int64_t &nowMs)
{
    if (!args.isSet("--at")) {
        nowMs = QDateTime::currentMSecsSinceEpoch();
        return true;
    }
    QString const text = _toQString(args.value("--at"));
    QDateTime at = QDateTime::fromString(text, Qt::ISODate);
    if (!at.isValid()) {
        Console::message("--at takes a date such as 2024-06-01 or 2024-06-01T12:00:00, not "
            + args.value("--at"));
        return false;
    }
    // A date without a zone is a UTC date, as the epochs are.
    if (at.timeSpec() == Qt::LocalTime)
        at.setTimeSpec(Qt::UTC);
    nowMs = at.toMSecsSinceEpoch();
    return true;
}

// The age above which --report flags an epoch: --max-age DAYS, else 14.
bool _maxAge(Arguments const &args, double &days)
{
    if (!args.isSet("--max-age"))
        return true;
    bool ok = false;
    days = QByteArray::fromStdString(args.value("--max-age")).toDouble(&ok);
    if (!ok || days < 0.0) {
        Console::message("--max-age takes a number of days, not " + args.value("--max-age"));
        return false;
    }
    return true;
}

} // namespace

int runTleCheck(Arguments const &args)
{
    TleReportLimits limits;
    if (!_now(args, limits.nowMs) || !_maxAge(args, limits.maxAgeDays))
        return Console::Failure;
    std::vector<std::string> messages;
    std::string text;
    if (CheckerTLE::LoadFromFile(messages, text, args.positional()[0]) != 0) {
        Console::lines(messages);
        return Console::Failure;
    }
    std::vector<CheckerTLE::TLE> tles;
    int const status = CheckerTLE::parseTLEs(messages, tles, text);
    Console::lines(messages);
    if (status == Console::Failure)
        return Console::Failure;

    if (Console::json() || args.isSet("--report")) {
        std::vector<TleReportEntry> const entries = tleReportEntries(text, limits);
        if (Console::json())
            Console::result({ { QStringLiteral("file"), _toQString(args.positional()[0]) },
                { QStringLiteral("sets"), tleReportJson(entries) } });
        else
            for (std::string const &row : tleReportRows(entries))
                Console::print(row);
        return status;
    }
    std::vector<std::string> unused;
    std::string normal;
    CheckerTLE::TLEs2text(unused, normal, tles, false);
    if (!normal.empty())
        Console::print(normal);
    return status;
}
