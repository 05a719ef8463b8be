// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Text crossing between Qt and the parameter tree, which keeps UTF-8. For the
// engine and the programs built on it; the model and the TLE checker stay
// free of Qt.

#include <QString>

#include <string>

// The text as UTF-8, in one allocation when it is ASCII, as keys, values and
// paths mostly are.
inline std::string _utf8(QString const &text)
{
    int const size = text.size();
    QChar const *chars = text.constData();
    for (int i = 0; i < size; ++i) {
        if (chars[i].unicode() >= 0x80)
            return text.toStdString();
    }
    std::string ascii(std::size_t(size), '\0');
    for (int i = 0; i < size; ++i)
        ascii[std::size_t(i)] = char(chars[i].unicode());
    return ascii;
}

// UTF-8 text as a QString, up to the first NUL byte; ASCII needs no decoding.
inline QString _toQString(std::string const &text)
{
    char const *const bytes = text.c_str();
    int size = 0;
    for (; bytes[size] != '\0'; ++size) {
        if (static_cast<unsigned char>(bytes[size]) >= 0x80)
            return QString::fromUtf8(bytes);
    }
    return QString::fromLatin1(bytes, size);
}
