// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/ommreader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>

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

// The line of `text` that begins at `at`, without its line end; `at` moves to
// the next one, past the end of `text` after the last.
std::string_view _nextLine(std::string_view text, std::size_t &at)
{
    std::size_t const feed = std::min(text.find('\n', at), text.size());
    std::string_view line = text.substr(at, feed - at);
    at = feed + 1;
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

bool _isBlank(std::string_view line)
{
    return line.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
}

// Hands the cells of a row without quotes to `cell`, split at its commas;
// false at the first quote, when some cells may have been handed already.
template <typename Cell> bool _eachPlainCell(std::string_view line, Cell &&cell)
{
    std::size_t from = 0;
    std::size_t at = 0;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    // Eight bytes at a time where the machine reads a word so: a row of a
    // catalog is hundreds of bytes, its cells a few each.
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t lows = 0x7F7F7F7F7F7F7F7Fu;
    // The high bit of each byte of `x` that is zero, and no other bit.
    auto const zeros = [](std::uint64_t x) { return ~(((x & lows) + lows) | x | lows); };
    for (; at + 8 <= line.size(); at += 8) {
        std::uint64_t word;
        std::memcpy(&word, line.data() + at, 8);
        if (zeros(word ^ (ones * '"')) != 0)
            return false;
        std::uint64_t commas = zeros(word ^ (ones * ','));
        for (; commas != 0; commas &= commas - 1) {
            std::size_t const comma = at + std::size_t(__builtin_ctzll(commas) / 8);
            cell(line.substr(from, comma - from));
            from = comma + 1;
        }
    }
#endif
    for (; at < line.size(); ++at) {
        if (line[at] == '"')
            return false;
        if (line[at] == ',') {
            cell(line.substr(from, at - from));
            from = at + 1;
        }
    }
    cell(line.substr(from));
    return true;
}

// One row, with double quotes around a cell that holds a comma. The cells are
// views into the row or, where quotes had to go, into `unquoted`.
void _cells(std::string_view line, std::vector<std::string_view> &cells, std::string &unquoted)
{
    cells.clear();
    if (_eachPlainCell(line, [&](std::string_view cell) { cells.push_back(cell); }))
        return;
    cells.clear();
    // Never longer than the row: the views stay valid while it fills.
    unquoted.clear();
    unquoted.reserve(line.size());
    std::size_t cell = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        char const c = line[i];
        if (c == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"') {
            unquoted += line[++i];
        } else if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            cells.emplace_back(unquoted.data() + cell, unquoted.size() - cell);
            cell = unquoted.size();
        } else {
            unquoted += c;
        }
    }
    cells.emplace_back(unquoted.data() + cell, unquoted.size() - cell);
}

// Hands the header's cells to `header` and then each row, blank lines
// skipped, to `row`, which gives back its number of cells; false when a row
// has not as many cells as the header.
template <typename Header, typename Row>
bool _eachCsvRow(QByteArray const &content, Header &&header, Row &&row, std::string &error)
{
    int const start = _start(content);
    std::string_view const text(content.constData() + start, std::size_t(content.size() - start));
    std::vector<std::string_view> cells;
    std::string unquoted;
    std::size_t at = 0;
    _cells(_nextLine(text, at), cells, unquoted);
    std::size_t const columns = cells.size();
    header(cells);
    for (std::size_t number = 2; at <= text.size(); ++number) {
        std::string_view const line = _nextLine(text, at);
        if (_isBlank(line))
            continue;
        std::size_t const count = row(line);
        if (count != columns) {
            error = "malformed CSV: line " + std::to_string(number) + " has "
                + std::to_string(count) + " cells, the header " + std::to_string(columns);
            return false;
        }
    }
    return true;
}

bool _readCsv(QByteArray const &content, std::vector<Fields> &records, std::string &error)
{
    std::vector<std::string> keys;
    std::vector<std::string_view> cells;
    std::string unquoted;
    return _eachCsvRow(
        content,
        [&](std::vector<std::string_view> const &header) {
            keys.assign(header.begin(), header.end());
        },
        [&](std::string_view line) {
            _cells(line, cells, unquoted);
            if (cells.size() == keys.size()) {
                Fields record;
                record.reserve(cells.size());
                for (std::size_t i = 0; i < cells.size(); ++i)
                    record.append(keys[i], std::string(cells[i]));
                records.push_back(std::move(record));
            }
            return cells.size();
        },
        error);
}

// The values of each row, each cell going straight to the value of its
// column's keyword, found once in the header: no record is built, as a
// catalog has tens of thousands of rows.
bool _csvValues(QByteArray const &content,
    std::function<void(TLEComposer::Values const &)> const &take, std::string &error)
{
    TLEComposer::Values values;
    // Where the cell of each column goes; columns of no keyword, and cells
    // past the header's, go to `unused`.
    std::optional<std::string_view> unused;
    std::vector<std::optional<std::string_view> *> targets;
    auto const target = [&](std::size_t column) {
        return column < targets.size() ? targets[column] : &unused;
    };
    std::vector<std::string_view> cells;
    std::string unquoted;
    return _eachCsvRow(
        content,
        [&](std::vector<std::string_view> const &header) {
            targets.assign(header.size(), &unused);
            // The first of a repeated keyword counts, as in a record.
            for (std::size_t i = header.size(); i-- > 0;)
                if (TLEComposer::Keyword const k = TLEComposer::keyword(header[i]);
                    k != TLEComposer::KeywordCount) {
                    std::replace(targets.begin(), targets.end(), &values[k], &unused);
                    targets[i] = &values[k];
                }
        },
        [&](std::string_view line) {
            std::size_t column = 0;
            if (!_eachPlainCell(line, [&](std::string_view cell) { *target(column++) = cell; })) {
                _cells(line, cells, unquoted);
                for (column = 0; column < cells.size(); ++column)
                    *target(column) = cells[column];
            }
            if (column == targets.size())
                take(values);
            return column;
        },
        error);
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

// The values of each record of `content`, handed to `take` in order.
bool _readValues(QByteArray const &content,
    std::function<void(TLEComposer::Values const &)> const &take, std::string &error)
{
    if (OmmReader::detect(content) == OmmReader::Csv)
        return _csvValues(content, take, error);
    std::vector<Fields> records;
    if (!OmmReader::read(content, records, error))
        return false;
    for (Fields const &record : records)
        take(TLEComposer::values(record));
    return true;
}

// "ISS (ZARYA) (1998-067A)"; the record's place when it has no name.
std::string _objectName(TLEComposer::Values const &values, std::size_t index)
{
    std::optional<std::string_view> const &name = values[TLEComposer::ObjectName];
    std::optional<std::string_view> const &id = values[TLEComposer::ObjectId];
    std::string const text
        = name && !name->empty() ? std::string(*name) : "record " + std::to_string(index + 1);
    return text + " (" + (id ? std::string(*id) : std::string("no OBJECT_ID")) + ")";
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

bool OmmReader::convert(QByteArray const &content, std::string &text, std::size_t &sets,
    std::vector<std::string> &refusals, std::string &error)
{
    // Kept apart until the whole content has been read: a malformed row near
    // the end of a CSV file leaves no set and no refusal behind.
    std::string converted;
    // The sets are shorter than their records in every form; room that is
    // never written costs no memory.
    converted.reserve(std::size_t(content.size()));
    std::vector<std::string> refused;
    std::size_t count = 0;
    std::size_t written = 0;
    std::string reason;
    auto const compose = [&](TLEComposer::Values const &values) {
        if (TLEComposer::appendSet(values, converted, reason))
            ++written;
        else
            refused.push_back(_objectName(values, count) + " is refused: " + reason);
        ++count;
    };
    if (!_readValues(content, compose, error))
        return false;
    if (count == 0) {
        error = "holds no OMM record";
        return false;
    }
    if (text.empty())
        text.swap(converted);
    else if (!converted.empty())
        text.append("\n\n").append(converted);
    sets += written;
    refusals.insert(refusals.end(), std::make_move_iterator(refused.begin()),
        std::make_move_iterator(refused.end()));
    return true;
}
