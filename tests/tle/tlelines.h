// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Element-set lines for the TLE tests, and the check digit computed here on its
// own so that the tests don't lean on the library they test.

#include <QByteArray>
#include <QFile>
#include <QStringList>

#include <string>
#include <vector>

namespace TleLines {

// The ISS set of xplanet's sample file (CR LF taken away); both check digits right.
inline const std::string issName = "ISS (ZARYA)";
inline const std::string issLine1 =
    "1 25544U 98067A   04005.51955591  .00019728  00000-0  19085-3 0  9701";
inline const std::string issLine2 =
    "2 25544  51.6297  78.4979 0006431 344.6528 119.5204 15.66405366292649";

// A set of gpredict's catalogue; both check digits right.
inline const std::string jpssName = "JPSS-1";
inline const std::string jpssLine1 =
    "1 43013U 17073A   18020.90595486 -.00000036  00000-0  37063-5 0  9990";
inline const std::string jpssLine2 =
    "2 43013  98.7126 321.4710 0000893  65.9680 294.1589 14.19549727  9015";

// Digits count their value, a minus sign one, every other byte nothing.
inline int sumOfLine(const std::string &line)
{
    int sum = 0;
    for (std::size_t i = 0; i < 68 && i < line.size(); ++i) {
        const char c = line[i];
        if (c >= '0' && c <= '9')
            sum += c - '0';
        else if (c == '-')
            sum += 1;
    }
    return sum;
}

inline char checkDigit(const std::string &line)
{
    return static_cast<char>('0' + sumOfLine(line) % 10);
}

// The line with its byte 68 set to the right check digit.
inline std::string withCheckDigit(std::string line)
{
    line.resize(69, ' ');
    line[68] = checkDigit(line);
    return line;
}

// The line with `text` written over it from `index`, check digit set anew.
inline std::string withField(std::string line, std::size_t index, const std::string &text)
{
    line.replace(index, text.size(), text);
    return withCheckDigit(line);
}

// The line with a check digit `offset` (1..9) below the right one.
inline std::string withWrongCheckDigit(std::string line, int offset = 1)
{
    line = withCheckDigit(line);
    line[68] = static_cast<char>('0' + (line[68] - '0' + 10 - offset) % 10);
    return line;
}

inline QStringList toList(const std::vector<std::string> &lines)
{
    QStringList list;
    for (const std::string &line : lines)
        list << QString::fromStdString(line);
    return list;
}

inline QByteArray bytes(const std::string &text)
{
    return QByteArray::fromStdString(text);
}

inline QByteArray readDataFile(const QString &name)
{
    QFile file(QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

} // namespace TleLines
