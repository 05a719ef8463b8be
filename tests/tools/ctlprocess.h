// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// The built orvexctl run as a script runs it, for the test programs that
// check its output for programs: JSON documents, many files at once, dry runs.
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace CtlProcess {

struct Run
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

inline QString shippedExample()
{
    return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/conf/example.conf");
}

inline QString shippedDefault(QString const &service)
{
    return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/") + service
        + QStringLiteral("-default.conf");
}

// Runs orvexctl in `dir` with `args`, `input` on its standard input.
inline Run run(QString const &dir, QStringList const &args, QByteArray const &input = {})
{
    QProcess process;
    process.setWorkingDirectory(dir);
    process.start(QStringLiteral(ORVEXCTL_PATH), args);
    Run result;
    if (!process.waitForStarted(60000))
        return result;
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000))
        return result;
    result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

inline Run run(QStringList const &args, QByteArray const &input = {})
{
    return run(QDir::currentPath(), args, input);
}

// The lines of a text, without the empty string after the last line end.
inline QStringList lines(QByteArray const &bytes)
{
    QStringList result = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (!result.isEmpty() && result.last().isEmpty())
        result.removeLast();
    return result;
}

// Standard output as one JSON object; a null object when it is anything else.
inline QJsonObject document(Run const &run)
{
    QJsonParseError error;
    QJsonDocument const parsed = QJsonDocument::fromJson(run.out, &error);
    return error.error == QJsonParseError::NoError && parsed.isObject() ? parsed.object()
                                                                        : QJsonObject();
}

// What orvexctl wrote to standard error, as the document's "messages" hold it:
// its own messages without "orvexctl: " in front.
inline QStringList messagesOf(QByteArray const &err)
{
    QStringList result;
    for (QString line : lines(err))
        result << (line.startsWith(QLatin1String("orvexctl: ")) ? line.mid(10) : line);
    return result;
}

inline QByteArray readFile(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeFile(QString const &path, QByteArray const &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace CtlProcess
