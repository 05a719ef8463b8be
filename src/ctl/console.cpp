// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>

namespace Console {

namespace {

bool _json = false;
QJsonObject _document;
QJsonArray _messages;

void _keep(std::string const &text)
{
    if (_json)
        _messages.append(QString::fromUtf8(text.c_str(), int(text.size())));
}

} // namespace

int worse(int left, int right)
{
    return left > right ? left : right;
}

void print(std::string const &line)
{
    // Standard output holds the document alone.
    if (!_json)
        std::cout << line << '\n';
}

void message(std::string const &text)
{
    std::cerr << "orvexctl: " << text << '\n';
    _keep(text);
}

void lines(std::vector<std::string> const &lines, std::size_t from)
{
    for (std::size_t i = from; i < lines.size(); ++i) {
        std::cerr << lines[i] << '\n';
        _keep(lines[i]);
    }
}

void setJson(bool on)
{
    _json = on;
}

bool json()
{
    return _json;
}

void result(QJsonObject const &document)
{
    _document = document;
}

void finish()
{
    if (!_json)
        return;
    QJsonObject document = _document;
    document.insert(QStringLiteral("messages"), _messages);
    std::cout << QJsonDocument(document).toJson(QJsonDocument::Indented).toStdString();
    std::cout.flush();
}

} // namespace Console
