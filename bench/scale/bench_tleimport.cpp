// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// tle-import's work on 20,000 OMM records in XML, CSV and JSON: reading the
// records, writing the TLE lines and the text of the sets, against reading the
// same bytes with Qt's parser alone (QXmlStreamReader to the end,
// QJsonDocument::fromJson) or, for CSV, a plain split into lines. The records
// are made here with varied values; times are medians in milliseconds of the
// process's CPU time (or wall time with --clock wall).
#include "benchkit.h"

#include "ctl/ommreader.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QXmlStreamReader>

#include <cstdio>
#include <cstring>

namespace {

using Record = std::vector<std::pair<std::string, std::string>>;

std::string _number(const char *format, double value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

// Record `i` of the catalogue, its numbers spread as a real catalogue's are.
Record _record(int i)
{
    const double x = double((i * 7919) % 10007) / 10007.0;
    char epoch[40];
    std::snprintf(epoch, sizeof epoch, "2026-%02d-%02dT%02d:%02d:%02d.%06d", 1 + i % 12, 1 + i % 28,
        i % 24, i % 60, (i * 7) % 60, (i * 7919) % 1000000);
    char id[16];
    std::snprintf(id, sizeof id, "%04d-%03d%c", 1960 + i % 66, 1 + i % 999, 'A' + i % 26);
    return { { "OBJECT_NAME", "OBJECT " + std::to_string(i) }, { "OBJECT_ID", id },
        { "CENTER_NAME", "EARTH" }, { "REF_FRAME", "TEME" }, { "TIME_SYSTEM", "UTC" },
        { "MEAN_ELEMENT_THEORY", "SGP4" }, { "EPOCH", epoch },
        { "MEAN_MOTION", _number("%.8f", 1.0 + 15.5 * x) },
        { "ECCENTRICITY", _number("%.7f", 0.7 * x * x) },
        { "INCLINATION", _number("%.4f", 180.0 * x) },
        { "RA_OF_ASC_NODE", _number("%.4f", 360.0 * (1.0 - x)) },
        { "ARG_OF_PERICENTER", _number("%.4f", 359.9 * x) },
        { "MEAN_ANOMALY", _number("%.4f", 123.4567 + 200.0 * x) }, { "EPHEMERIS_TYPE", "0" },
        { "CLASSIFICATION_TYPE", "U" }, { "NORAD_CAT_ID", std::to_string(1 + i * 16) },
        { "ELEMENT_SET_NO", std::to_string(999) }, { "REV_AT_EPOCH", std::to_string(i % 99999) },
        { "BSTAR", _number("%.6g", (x - 0.3) * 1e-3) },
        { "MEAN_MOTION_DOT", _number("%.8f", (x - 0.5) * 1e-4) }, { "MEAN_MOTION_DDOT", "0" } };
}

QByteArray _xml(const std::vector<Record> &records)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ndm>\n";
    for (const Record &record : records) {
        text += "<omm id=\"CCSDS_OMM_VERS\" version=\"2.0\"><header><CREATION_DATE/>"
                "<ORIGINATOR/></header><body><segment><metadata>";
        for (std::size_t k = 0; k < record.size(); ++k) {
            if (k == 6)
                text += "</metadata><data><meanElements>";
            if (k == 13)
                text += "</meanElements><tleParameters>";
            text += "<" + record[k].first + ">" + record[k].second + "</" + record[k].first + ">";
        }
        text += "</tleParameters></data></segment></body></omm>\n";
    }
    return QByteArray::fromStdString(text + "</ndm>\n");
}

QByteArray _csv(const std::vector<Record> &records)
{
    std::string text;
    for (std::size_t k = 0; k < records[0].size(); ++k)
        text += (k ? "," : "") + records[0][k].first;
    text += "\r\n";
    for (const Record &record : records) {
        for (std::size_t k = 0; k < record.size(); ++k)
            text += (k ? "," : "") + record[k].second;
        text += "\r\n";
    }
    return QByteArray::fromStdString(text);
}

QByteArray _json(const std::vector<Record> &records)
{
    std::string text = "[";
    for (std::size_t i = 0; i < records.size(); ++i) {
        text += i ? ",\n{" : "\n{";
        for (std::size_t k = 0; k < records[i].size(); ++k) {
            const bool quoted = k < 7 || k == 14;
            text += (k ? ", \"" : "\"") + records[i][k].first + "\": " + (quoted ? "\"" : "")
                + records[i][k].second + (quoted ? "\"" : "");
        }
        text += "}";
    }
    return QByteArray::fromStdString(text + "\n]\n");
}

// What tle-import does with the bytes of a file: the records, their sets,
// the text of the sets. The number of sets.
std::size_t _import(const QByteArray &content)
{
    std::string text;
    std::size_t sets = 0;
    std::vector<std::string> refusals;
    std::string error;
    OmmReader::convert(content, text, sets, refusals, error);
    return sets;
}

std::size_t _xmlFloor(const QByteArray &content)
{
    QXmlStreamReader xml(content);
    std::size_t tokens = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        ++tokens;
    }
    return tokens;
}

std::size_t _splitFloor(const QByteArray &content)
{
    std::vector<std::string> lines;
    const char *cursor = content.constData();
    const char *const end = cursor + content.size();
    while (cursor < end) {
        const char *feed = static_cast<const char *>(std::memchr(cursor, '\n', end - cursor));
        lines.emplace_back(cursor, (feed ? feed : end) - cursor);
        cursor = feed ? feed + 1 : end;
    }
    return lines.size();
}

std::size_t _jsonFloor(const QByteArray &content)
{
    return QJsonDocument::fromJson(content).array().size();
}

void _usage(const char *program)
{
    std::printf("usage: %s [--objects N] [--runs N] [--clock cpu|wall] [--csv FILE]\n"
                "  --objects N  OMM records in each file (20000)\n"
                "  --runs N     timed runs per figure; the median is reported (9)\n"
                "  --csv FILE   append rows figure,value,baseline,ratio (ms; ratio = import\n"
                "               over its floor)\n",
        program);
}

} // namespace

int main(int argc, char **argv)
{
    BenchKit::Options options;
    if (!BenchKit::parseOptions(argc, argv, { "--objects" }, &options)) {
        _usage(argv[0]);
        return 2;
    }
    const int objects = std::atoi(options.value("--objects", "20000").c_str());
    const int runs = options.runs > 0 ? options.runs : 9;
    if (objects < 1) {
        _usage(argv[0]);
        return 2;
    }
    std::vector<Record> records;
    for (int i = 0; i < objects; ++i)
        records.push_back(_record(i));

    const struct
    {
        const char *format;
        QByteArray content;
        std::size_t (*floor)(const QByteArray &);
    } files[] = { { "xml", _xml(records), _xmlFloor }, { "csv", _csv(records), _splitFloor },
        { "json", _json(records), _jsonFloor } };

    BenchKit::Table table;
    std::size_t sink = 0;
    for (const auto &file : files) {
        if (_import(file.content) != records.size()) {
            std::fprintf(stderr, "the %s file does not import as %d sets\n", file.format, objects);
            return 1;
        }
        const std::vector<double> seconds = BenchKit::medianSeconds(runs,
            { { [&] { sink += _import(file.content); }, BenchKit::releaseFreeMemory },
                { [&] { sink += file.floor(file.content); }, BenchKit::releaseFreeMemory } });
        table.add("tle_import_" + std::string(file.format) + "_" + std::to_string(objects) + "_ms",
            seconds[0] * 1e3, seconds[1] * 1e3);
    }
    std::printf("tle-import of %d OMM records against the bare parse, median of %d (%s time)\n",
        objects, runs, BenchKit::clock() == BenchKit::Clock::Wall ? "wall" : "cpu");
    table.print();
    if (!options.csv.empty() && !table.appendCsv(options.csv)) {
        std::fprintf(stderr, "cannot write %s\n", options.csv.c_str());
        return 1;
    }
    return sink == 0 ? 1 : 0;
}
