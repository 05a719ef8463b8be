// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/configvalidator.h"
#include "engine/readablefile.h"
#include "engine/textconv.h"

#include <QAbstractMessageHandler>
#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QSourceLocation>
#include <QUrl>
#include <QXmlSchemaValidator>

#include <algorithm>

// Keeps every message of one validation, where the engine's handler keeps only
// the last location.
class _CollectingHandler : public QAbstractMessageHandler
{
public:
    std::vector<Finding> findings;

protected:
    void handleMessage(QtMsgType, QString const &description, QUrl const &,
        QSourceLocation const &location) override
    {
        findings.push_back({ int(location.line()), int(location.column()), _plain(description) });
    }

private:
    // Qt words its messages as a small XHTML document.
    static std::string _plain(QString const &description)
    {
        QDomDocument document;
        QString const text = document.setContent(description, false)
            ? document.documentElement().text()
            : description;
        return _utf8(text.simplified());
    }
};

namespace {

QString _qpath(std::string const &path)
{
    return _toQString(path);
}

} // namespace

ConfigValidator::ConfigValidator() : _handler(new _CollectingHandler)
{ }

ConfigValidator::~ConfigValidator() = default;

bool ConfigValidator::loadSchema(std::string const &schemaPath)
{
    QFile file(_qpath(schemaPath));
    if (!_openForReading(file))
        return false;
    _schema.setMessageHandler(_handler.get());
    if (!_schema.load(&file, QUrl::fromLocalFile(file.fileName())) || !_schema.isValid())
        return false;
    _validator.reset(new QXmlSchemaValidator(_schema));
    _validator->setMessageHandler(_handler.get());
    return true;
}

FileVerdict ConfigValidator::validate(std::string const &path) const
{
    FileVerdict verdict;
    verdict.file = path;
    QFile file(_qpath(path));
    if (!_openForReading(file)) {
        QFileInfo const info(file);
        QString const reason = info.isDir() ? QStringLiteral("is a folder")
            : info.exists() && !info.isFile() ? QStringLiteral("is no regular file")
                                              : file.errorString();
        verdict.findings.push_back({ 0, 0, "cannot be read: " + _utf8(reason) });
        return verdict;
    }
    verdict.opened = true;
    _handler->findings.clear();
    verdict.valid = _validator->validate(&file, QUrl::fromLocalFile(file.fileName()));
    if (!verdict.valid)
        verdict.findings = std::move(_handler->findings);
    if (!verdict.valid && verdict.findings.empty())
        verdict.findings.push_back({ 0, 0, "not valid against the schema" });
    return verdict;
}

std::vector<std::string> configFilesOf(std::vector<std::string> const &paths)
{
    std::vector<std::string> files;
    for (std::string const &path : paths) {
        QString const given = _qpath(path);
        if (!QFileInfo(given).isDir()) {
            files.push_back(path);
            continue;
        }
        QString const base = QDir::cleanPath(given);
        std::vector<QString> found;
        // QDir::System brings the links that lead nowhere, which are then told
        // as unreadable; sockets, pipes and devices are left out.
        QDirIterator it(base, { QStringLiteral("*.conf"), QStringLiteral("*.xml") },
            QDir::Files | QDir::System, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QString const file = it.next();
            QFileInfo const info = it.fileInfo();
            if (info.isFile() || (info.isSymLink() && !info.exists()))
                found.push_back(file);
        }
        std::sort(found.begin(), found.end());
        for (QString const &file : found)
            files.push_back(_utf8(file));
    }
    return files;
}
