// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/ommreader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

#include <charconv>
#include <cmath>

namespace {

using Fields = TLEComposer::Fields;

// The first byte that is not white space, behind a UTF-8 byte order mark.
int _start(QByteArray const &content)
{
    int i = content.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (i < content.size() && QByteArrayLiteral(" \t\r\n").contains(content.at(i)))
        ++i;
    return i;
}

std::string _text(QStringRef const &text)
{
    return text.trimmed().toUtf8().toStdString();
}

// ------------------------------------------------------------------- XML

// Every element that holds text only gives a keyword, wherever it stands in
// the <omm>: the catalogs nest them in metadata, meanElements and tleParameters.
bool _readXml(QByteArray const &content, std::vector<Fields> &records, std::string &error)
{
    QXmlStreamReader xml(content);
    Fields *record = nullptr;
    QString key;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (xml.name() == QLatin1String("omm")) {
                records.emplace_back();
                record = &records.back();
            }
            key = xml.name().toString();
            break;
        case QXmlStreamReader::Characters:
            if (record && !key.isEmpty() && !xml.isWhitespace())
                (*record)[key.toStdString()] += _text(xml.text());
            break;
        case QXmlStreamReader::EndElement:
            key.clear();
            if (xml.name() == QLatin1String("omm"))
                record = nullptr;
            break;
        default:
            break;
        }
    }
    if (xml.hasError()) {
        error = "malformed XML: " + xml.errorString().toStdString() + " at line "
            + std::to_string(xml.lineNumber());
        return false;
    }
    return true;
}

// ------------------------------------------------------------------ JSON

std::string _jsonText(QJsonValue const &value)
{
    if (value.isDouble()) {
        // The shortest text that reads back as the same number, whatever the
        // locale; whole numbers as such, or 100000 would come out as "1e+05".
        double const number = value.toDouble();
        bool const whole = std::abs(number) < 1e15 && number == std::trunc(number);
        char buffer[32];
        auto const written = whole
            ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<long long>(number))
            : std::to_chars(buffer, buffer + sizeof buffer, number);
        return std::string(buffer, written.ptr);
    }
    if (value.isString())
        return value.toString().toUtf8().toStdString();
    // null, true, an array: text that no field reads.
    return QJsonDocument(QJsonArray { value }).toJson(QJsonDocument::Compact).toStdString();
}

Fields _jsonRecord(QJsonObject const &object)
{
    Fields record;
    record.reserve(static_cast<std::size_t>(object.size()));
    for (auto it = object.begin(); it != object.end(); ++it)
        if (!it.value().isNull())
            record.append(it.key().toStdString(), _jsonText(it.value()));
    return record;
}

bool _readJson(QByteArray const &content, std::vector<Fields> &records, std::string &error)
{
    QJsonParseError parseError;
    QJsonDocument const document = QJsonDocument::fromJson(content, &parseError);
    if (document.isNull()) {
        error = "malformed JSON: " + parseError.errorString().toStdString() + " at byte "
            + std::to_string(parseError.offset);
        return false;
    }
    if (document.isObject()) {
        records.push_back(_jsonRecord(document.object()));
        return true;
    }
    for (QJsonValue const &value : document.array()) {
        if (!value.isObject()) {
            error = "malformed JSON: the array holds something other than objects";
            return false;
        }
        records.push_back(_jsonRecord(value.toObject()));
    }
    return true;
}

// ------------------------------------------------------------- CSV, KVN

QList<QByteArray> _lines(QByteArray const &content)
{
    QList<QByteArray> lines = content.mid(_start(content)).split('\n');
    for (QByteArray &line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    return lines;
}

// One row, with double quotes around a cell that holds a comma.
std::vector<std::string> _cells(QByteArray const &line)
{
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (int i = 0; i < line.size(); ++i) {
        char const c = line.at(i);
        if (c == '"' && quoted && i + 1 < line.size() && line.at(i + 1) == '"')
            cells.back() += line.at(++i);
        else if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            cells.emplace_back();
        else
            cells.back() += c;
    }
    return cells;
}

bool _readCsv(QByteArray const &content, std::vector<Fields> &records, std::string &error)
{
    QList<QByteArray> const lines = _lines(content);
    std::vector<std::string> const header = _cells(lines.first());
    for (int row = 1; row < lines.size(); ++row) {
        if (lines.at(row).trimmed().isEmpty())
            continue;
        std::vector<std::string> cells = _cells(lines.at(row));
        if (cells.size() != header.size()) {
            error = "malformed CSV: line " + std::to_string(row + 1) + " has "
                + std::to_string(cells.size()) + " cells, the header "
                + std::to_string(header.size());
            return false;
        }
        Fields record;
        record.reserve(cells.size());
        for (std::size_t i = 0; i < cells.size(); ++i)
            record.append(header[i], std::move(cells[i]));
        records.push_back(std::move(record));
    }
    return true;
}

// A new record begins at CCSDS_OMM_VERS, or where a keyword comes again.
bool _readKvn(QByteArray const &content, std::vector<Fields> &records, std::string &error)
{
    QList<QByteArray> const lines = _lines(content);
    for (int row = 0; row < lines.size(); ++row) {
        QByteArray const line = lines.at(row).trimmed();
        if (line.isEmpty() || line.startsWith("COMMENT") || line.endsWith("_START")
            || line.endsWith("_STOP"))
            continue;
        int const equals = line.indexOf('=');
        if (equals <= 0) {
            error = "malformed KVN: line " + std::to_string(row + 1) + " is not KEYWORD = value";
            return false;
        }
        std::string const key = line.left(equals).trimmed().toStdString();
        QByteArray value = line.mid(equals + 1).trimmed();
        // A unit may follow a number: "MEAN_MOTION = 15.5 [rev/day]"; names
        // such as "IRIDIUM 73 [-]" keep their brackets.
        if (key != "OBJECT_NAME" && key != "OBJECT_ID" && value.endsWith(']')
            && value.contains('['))
            value = value.left(value.lastIndexOf('[')).trimmed();
        if (records.empty() || key == "CCSDS_OMM_VERS" || records.back().contains(key))
            records.emplace_back();
        records.back()[key] = value.toStdString();
    }
    return true;
}

bool _isKvn(QByteArray const &firstLine)
{
    int const equals = firstLine.indexOf('=');
    return firstLine.startsWith("COMMENT") || (equals > 0 && !firstLine.contains(','));
}

} // namespace

OmmReader::Format OmmReader::detect(QByteArray const &content)
{
    int const start = _start(content);
    if (start >= content.size())
        return Unknown;
    char const first = content.at(start);
    if (first == '<')
        return Xml;
    if (first == '[' || first == '{')
        return Json;
    QByteArray const firstLine = content.mid(start, content.indexOf('\n', start) - start).trimmed();
    if (_isKvn(firstLine))
        return Kvn;
    // A header row of keywords names at least the catalog number or the epoch.
    if (firstLine.contains(',')
        && (firstLine.contains("NORAD_CAT_ID") || firstLine.contains("EPOCH")))
        return Csv;
    return Unknown;
}

bool OmmReader::read(
    QByteArray const &content, std::vector<TLEComposer::Fields> &records, std::string &error)
{
    switch (detect(content)) {
    case Xml:
        return _readXml(content, records, error);
    case Json:
        return _readJson(content, records, error);
    case Csv:
        return _readCsv(content, records, error);
    case Kvn:
        return _readKvn(content, records, error);
    case Unknown:
        break;
    }
    error = content.trimmed().isEmpty() ? "empty" : "not an OMM file in XML, CSV, JSON or KVN";
    return false;
}
