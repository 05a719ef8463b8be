// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/alpha5.h"

#include <cstring>

namespace {

// The letters in the order of their values, 10 first.
char const _letters[] = "ABCDEFGHJKLMNPQRSTUVWXYZ";

bool _isDigit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

bool Alpha5::encode(long number, std::string &field)
{
    char text[5];
    if (!encode(number, text))
        return false;
    field.assign(text, sizeof text);
    return true;
}

bool Alpha5::encode(long number, char *field)
{
    if (number < 0 || number > highest)
        return false;
    long const head = number / 10000;
    field[0] = head < 10 ? char('0' + head) : _letters[head - 10];
    long rest = number % 10000;
    for (int i = 4; i >= 1; --i, rest /= 10)
        field[i] = char('0' + rest % 10);
    return true;
}

long Alpha5::decode(std::string const &field)
{
    if (field.size() != 5)
        return -1;
    long head = 0;
    if (_isDigit(field[0])) {
        head = field[0] - '0';
    } else {
        char const *letter = field[0] ? std::strchr(_letters, field[0]) : nullptr;
        if (!letter)
            return -1;
        head = 10 + (letter - _letters);
    }
    long number = head;
    for (int i = 1; i < 5; ++i) {
        if (!_isDigit(field[i]))
            return -1;
        number = number * 10 + (field[i] - '0');
    }
    return number;
}

bool Alpha5::isLetterForm(std::string const &field)
{
    return decode(field) >= 100000;
}
