// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctlprocess.h"
#include "golden.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

// orvexctl as a user runs it: the built executable is started with arguments,
// and its standard output, standard error, exit status and files are checked.
namespace ctlfixture {

using CtlProcess::Run;

inline QString const _fixtureDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/fixture");
inline QString const _pitfallsDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/pitfalls");
inline QString const _expectedDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/expected");
inline QString const _shippedExample = CtlProcess::shippedExample();
inline QString const _shippedSchema = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/schema-userconf.xsd");

inline void _writeFile(QString const &path, QByteArray const &bytes)
{
    QVERIFY(CtlProcess::writeFile(path, bytes));
}

inline void _copyDir(QString const &from, QString const &to)
{
    QDir const source(from);
    for (QString const &name : source.entryList(QDir::Files))
        QVERIFY(QFile::copy(source.filePath(name), to + QLatin1Char('/') + name));
}

inline QDomElement _documentElement(QString const &path)
{
    QDomDocument document;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        document.setContent(&file, false);
    return document.documentElement();
}

// The element that a key of "orvexctl list" names, walked in a file:
// "a/b[1]/Line0" is the second child element of <b> in <a>, then its <Line0>.
inline QDomElement _elementAt(QDomElement element, QString const &key)
{
    static QRegularExpression const item(QStringLiteral("^(.+)\\[(\\d+)\\]$"));
    for (QString const &segment : key.split(QLatin1Char('/'))) {
        QRegularExpressionMatch const match = item.match(segment);
        element = element.firstChildElement(match.hasMatch() ? match.captured(1) : segment);
        if (match.hasMatch()) {
            element = element.firstChildElement();
            for (int i = match.captured(2).toInt(); i > 0 && !element.isNull(); --i)
                element = element.nextSiblingElement();
        }
    }
    return element;
}

// The xs:element names of a schema, in document order.
inline QStringList _declaredNames(QString const &schemaPath)
{
    QDomDocument document;
    QFile file(schemaPath);
    if (file.open(QIODevice::ReadOnly))
        document.setContent(&file, false);
    QStringList names;
    QDomNodeList const elements = document.elementsByTagName(QStringLiteral("xs:element"));
    for (int i = 0; i < elements.size(); ++i)
        names << elements.at(i).toElement().attribute(QStringLiteral("name"));
    return names;
}

// Runs the built orvexctl in a temporary directory that holds copies of the
// fixture files, one directory per test function.
class OrvexctlHarness
{
protected:
    // In the test's own directory, which holds copies of the fixture files.
    Run _run(QStringList const &args) const { return CtlProcess::run(_dir->path(), args); }
    // The same, with the fixture's schema.
    Run _runFixture(QStringList args) const
    {
        args << QStringLiteral("--schema") << QStringLiteral("schema-userconf.xsd");
        return _run(args);
    }
    QString _path(QString const &name) const { return _dir->filePath(name); }
    QByteArray _file(QString const &name) const { return CtlProcess::readFile(_path(name)); }
    void _checkGolden(QByteArray const &actual, QString const &name) const
    {
        QString failure;
        QVERIFY2(matchesGolden(actual, _expectedDir + QLatin1Char('/') + name, &failure),
            qPrintable(failure));
    }

    // For init(): a fresh directory with the fixture files.
    void _setUpDir()
    {
        _dir.reset(new QTemporaryDir);
        QVERIFY(_dir->isValid());
        _copyDir(_fixtureDir, _dir->path());
    }

    QScopedPointer<QTemporaryDir> _dir;
};

} // namespace ctlfixture
