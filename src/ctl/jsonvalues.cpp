// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/jsonvalues.h"

QJsonValue jsonText(std::string const &text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

QJsonArray jsonTexts(std::vector<std::string> const &texts)
{
    QJsonArray array;
    for (std::string const &text : texts)
        array.append(jsonText(text));
    return array;
}

QJsonObject jsonSet(ParameterListTLEs::TLE const &tle)
{
    return QJsonObject { { QStringLiteral("line0"), jsonText(tle.line0) },
        { QStringLiteral("line1"), jsonText(tle.line1) },
        { QStringLiteral("line2"), jsonText(tle.line2) } };
}

QJsonValue jsonValueOf(ParameterValue const &value)
{
    switch (value.kind) {
    case ParameterValue::Simple:
        break;
    case ParameterValue::List:
        return jsonTexts(value.values);
    case ParameterValue::TLEs: {
        QJsonArray sets;
        for (ParameterListTLEs::TLE const &tle : value.sets)
            sets.append(jsonSet(tle));
        return sets;
    }
    }
    return jsonText(value.value);
}

QJsonObject jsonParameter(ParameterValue const &value)
{
    static QString const names[]
        = { QStringLiteral("value"), QStringLiteral("values"), QStringLiteral("sets") };
    return QJsonObject { { QStringLiteral("path"), jsonText(value.path) },
        { QStringLiteral("type"), jsonText(value.type) },
        { names[value.kind], jsonValueOf(value) } };
}
