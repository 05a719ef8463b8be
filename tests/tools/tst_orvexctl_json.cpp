// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl --json: one document on standard output, read back with
// QJsonDocument and compared with the plain output of the same command.
#include "ctlprocess.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using namespace CtlProcess;

namespace {

QString const _tleFile = QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/catalog-a.tle");

QStringList _texts(QJsonValue const &array)
{
    QStringList texts;
    for (QJsonValue const &value : array.toArray())
        texts << value.toString();
    return texts;
}

// A parameter object turned back into the lines of the plain list.
QStringList _plainLines(QJsonObject const &parameter)
{
    QString const path = parameter.value(QLatin1String("path")).toString();
    if (parameter.contains(QLatin1String("value")))
        return { path + QStringLiteral(" = ")
            + parameter.value(QLatin1String("value")).toString() };
    QStringList lines;
    if (parameter.contains(QLatin1String("values"))) {
        QStringList const items = _texts(parameter.value(QLatin1String("values")));
        for (int i = 0; i < items.size(); ++i)
            lines << QStringLiteral("%1[%2] = %3").arg(path).arg(i).arg(items[i]);
    } else {
        QJsonArray const sets = parameter.value(QLatin1String("sets")).toArray();
        for (int i = 0; i < sets.size(); ++i)
            for (char const *line : { "line0", "line1", "line2" })
                lines << QStringLiteral("%1[%2]/Line%3 = %4")
                             .arg(path)
                             .arg(i)
                             .arg(QChar::fromLatin1(line[4]))
                             .arg(sets[i].toObject().value(QLatin1String(line)).toString());
    }
    return lines.isEmpty() ? QStringList { path + QStringLiteral(" = ") } : lines;
}

QStringList _plainLinesOf(QJsonArray const &parameters)
{
    QStringList lines;
    for (QJsonValue const &parameter : parameters)
        lines << _plainLines(parameter.toObject());
    return lines;
}

// The sets of a TLE text as get prints it: groups of three lines between empty lines.
QList<QStringList> _setGroups(QByteArray const &text)
{
    QList<QStringList> groups;
    QStringList group;
    for (QString const &line : lines(text)) {
        if (!line.isEmpty())
            group << line;
        if (group.size() == 3) {
            groups << group;
            group.clear();
        }
    }
    return groups;
}

QString _diffLine(QJsonObject const &difference)
{
    auto const text = [&difference](char const *name) {
        QJsonValue const value = difference.value(QLatin1String(name));
        return value.isNull() ? QStringLiteral("(none)") : value.toString();
    };
    return difference.value(QLatin1String("path")).toString() + QStringLiteral(" = ")
        + text("value") + QStringLiteral("  # default: ") + text("default");
}

// The keys of the outline's nodes in depth-first order, as the plain lines start.
void _rec_keys(QStringList &keys, QJsonObject const &node)
{
    keys << node.value(QLatin1String("key")).toString();
    for (QJsonValue const &child : node.value(QLatin1String("children")).toArray())
        _rec_keys(keys, child.toObject());
}

} // namespace

class TestOrvexctlJson : public QObject
{
    Q_OBJECT

private:
    // The plain run and the --json run of the same arguments.
    void _runBoth(QStringList const &args, Run &plain, QJsonObject &document);

    QScopedPointer<QTemporaryDir> _dir;

private slots:
    void init();

    void helpTellsJsonOption_data();
    void helpTellsJsonOption();
    void documentIsAloneOnStandardOutput_data();
    void documentIsAloneOnStandardOutput();
    void listTurnsBackIntoPlainLines();
    void listNamesFileVersionAndService();
    void getAgreesWithPlain_data();
    void getAgreesWithPlain();
    void diffAgreesWithPlain();
    void checkSchemaGivesOutlineAsTree();
    void updateDryRunReportAgreesWithPlain();
    void tleReportAgreesWithTable();
};

void TestOrvexctlJson::init()
{
    _dir.reset(new QTemporaryDir);
    QVERIFY(_dir->isValid());
    QVERIFY(QFile::copy(shippedExample(), _dir->filePath(QStringLiteral("example.conf"))));
}

void TestOrvexctlJson::_runBoth(QStringList const &args, Run &plain, QJsonObject &document)
{
    plain = run(_dir->path(), args);
    Run const json = run(_dir->path(), args + QStringList { QStringLiteral("--json") });
    QCOMPARE(json.status, plain.status);
    QCOMPARE(json.err, plain.err);
    document = CtlProcess::document(json);
    QVERIFY2(!document.isEmpty(), json.out.constData());
}

void TestOrvexctlJson::helpTellsJsonOption_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("takesJson");
    for (char const *command : { "check-schema", "validate", "describe", "search", "list", "get",
             "update", "diff", "tle-check" })
        QTest::newRow(command) << QString::fromLatin1(command) << true;
    QTest::newRow("set") << "set" << false;
    QTest::newRow("new") << "new" << false;
}

void TestOrvexctlJson::helpTellsJsonOption()
{
    QFETCH(QString, command);
    QFETCH(bool, takesJson);
    Run const help = run(_dir->path(), { command, QStringLiteral("--help") });
    QCOMPARE(help.status, 0);
    QVERIFY(help.out.startsWith("Usage: orvexctl " + command.toUtf8() + ' '));
    QVERIFY(help.out.contains("Exit status: 0 success, 1 done with remarks, 2 failure."));
    QCOMPARE(help.out.contains("\n  --json "), takesJson);
    // A command without it refuses the option rather than print plain text.
    if (!takesJson)
        QCOMPARE(run(_dir->path(), { command, QStringLiteral("--json") }).status, 2);
}

void TestOrvexctlJson::documentIsAloneOnStandardOutput_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("status");
    QTest::newRow("list") << QStringList { "list", "example.conf" } << 1;
    QTest::newRow("get") << QStringList { "get", "example.conf", "Camera/Gain" } << 1;
    QTest::newRow("diff") << QStringList { "diff", "example.conf" } << 1;
    QTest::newRow("validate") << QStringList { "validate", "example.conf" } << 0;
    QTest::newRow("describe") << QStringList { "describe", "Camera/Gain" } << 0;
    QTest::newRow("search") << QStringList { "search", "gain" } << 0;
    QTest::newRow("search nothing") << QStringList { "search", "no-such-word" } << 1;
    QTest::newRow("check-schema") << QStringList { "check-schema" } << 0;
    QTest::newRow("update dry run") << QStringList { "update", "example.conf", "--dry-run" } << 0;
    QTest::newRow("tle-check") << QStringList { "tle-check", _tleFile, "--report", "--at",
        "2018-02-01" } << 0;
    QTest::newRow("missing file") << QStringList { "list", "nothing.conf" } << 2;
    QTest::newRow("unknown path") << QStringList { "get", "example.conf", "Camera/Nothing" } << 2;
    QTest::newRow("wrong count") << QStringList { "describe" } << 2;
}

void TestOrvexctlJson::documentIsAloneOnStandardOutput()
{
    QFETCH(QStringList, args);
    QFETCH(int, status);
    Run plain;
    QJsonObject document;
    _runBoth(args, plain, document);
    QCOMPARE(plain.status, status);
    QVERIFY(document.value(QLatin1String("messages")).isArray());
    // The usage line after a wrong count is help for a person, not a message.
    QStringList expected = messagesOf(plain.err);
    expected.erase(
        std::remove_if(expected.begin(), expected.end(),
            [](QString const &line) { return line.startsWith(QLatin1String("Usage:")); }),
        expected.end());
    QCOMPARE(_texts(document.value(QLatin1String("messages"))), expected);
}

void TestOrvexctlJson::listTurnsBackIntoPlainLines()
{
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("list"), QStringLiteral("example.conf") }, plain, document);
    QJsonArray const parameters = document.value(QLatin1String("parameters")).toArray();
    QVERIFY(parameters.size() > 20);
    QCOMPARE(_plainLinesOf(parameters), lines(plain.out));
    // Each parameter has exactly one of the three value fields.
    for (QJsonValue const &parameter : parameters) {
        QJsonObject const object = parameter.toObject();
        QCOMPARE(object.keys().size(), 3);
        QVERIFY(object.contains(QLatin1String("type")));
    }
}

void TestOrvexctlJson::listNamesFileVersionAndService()
{
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("list"), QStringLiteral("example.conf") }, plain, document);
    QCOMPARE(document.value(QLatin1String("file")).toString(), QStringLiteral("example.conf"));
    QCOMPARE(document.value(QLatin1String("version")).toString(), QStringLiteral("1.1"));
    QCOMPARE(document.value(QLatin1String("service")).toString(), QStringLiteral("tracking"));
}

void TestOrvexctlJson::getAgreesWithPlain_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("field");
    QTest::newRow("value") << "Camera/Gain"
                           << "value";
    QTest::newRow("list") << "Paths/CatalogFiles"
                          << "values";
    QTest::newRow("list item") << "Paths/CatalogFiles[1]"
                               << "value";
    QTest::newRow("TLE list") << "Tracking/Satellites"
                              << "sets";
    QTest::newRow("one set") << "Tracking/Satellites[2]"
                             << "sets";
    QTest::newRow("one line") << "Tracking/Satellites[1]/Line2"
                              << "value";
    QTest::newRow("section") << "Camera/Cooling"
                             << "parameters";
}

void TestOrvexctlJson::getAgreesWithPlain()
{
    QFETCH(QString, path);
    QFETCH(QString, field);
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("get"), QStringLiteral("example.conf"), path }, plain, document);
    QCOMPARE(plain.status, 1);
    QCOMPARE(document.value(QLatin1String("path")).toString(), path);
    QJsonValue const value = document.value(field);
    if (field == QLatin1String("value")) {
        QCOMPARE(QStringList { value.toString() }, lines(plain.out));
    } else if (field == QLatin1String("values")) {
        QCOMPARE(_texts(value), lines(plain.out));
    } else if (field == QLatin1String("parameters")) {
        QCOMPARE(_plainLinesOf(value.toArray()), lines(plain.out));
    } else {
        QList<QStringList> const groups = _setGroups(plain.out);
        QCOMPARE(value.toArray().size(), groups.size());
        QVERIFY(!groups.isEmpty());
        for (int i = 0; i < groups.size(); ++i) {
            QJsonObject const set = value.toArray().at(i).toObject();
            QCOMPARE((QStringList { set.value(QLatin1String("line0")).toString(),
                         set.value(QLatin1String("line1")).toString(),
                         set.value(QLatin1String("line2")).toString() }),
                groups[i]);
        }
    }
}

void TestOrvexctlJson::diffAgreesWithPlain()
{
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("diff"), QStringLiteral("example.conf") }, plain, document);
    QCOMPARE(document.value(QLatin1String("file")).toString(), QStringLiteral("example.conf"));
    QCOMPARE(document.value(QLatin1String("service")).toString(), QStringLiteral("tracking"));
    QStringList converted;
    int nulls = 0;
    for (QJsonValue const &difference : document.value(QLatin1String("differences")).toArray()) {
        converted << _diffLine(difference.toObject());
        nulls += difference.toObject().value(QLatin1String("value")).isNull()
            + difference.toObject().value(QLatin1String("default")).isNull();
    }
    QCOMPARE(converted, lines(plain.out));
    // The example has items on one side only, so both nulls are exercised.
    QVERIFY(nulls > 0);
    QVERIFY(plain.out.contains("= (none)  # default:"));
    QVERIFY(plain.out.contains("# default: (none)\n"));
}

void TestOrvexctlJson::checkSchemaGivesOutlineAsTree()
{
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("check-schema") }, plain, document);
    QCOMPARE(_texts(document.value(QLatin1String("services"))),
        (QStringList { "tracking", "survey", "photometry" }));
    QCOMPARE(document.value(QLatin1String("newest")).toString(), QStringLiteral("2.0"));
    QStringList keys;
    _rec_keys(keys, document.value(QLatin1String("root")).toObject());
    // The plain outline: three heading lines, then one line per node, the key first.
    QStringList outline = lines(plain.out).mid(3);
    static QRegularExpression const key(QStringLiteral("^\\s*([^:/ ]+)"));
    QStringList plainKeys;
    for (QString const &line : outline)
        plainKeys << key.match(line).captured(1);
    QCOMPARE(keys, plainKeys);
    QJsonObject const version = document.value(QLatin1String("root"))
                                    .toObject()
                                    .value(QLatin1String("children"))
                                    .toArray()
                                    .first()
                                    .toObject();
    QCOMPARE(
        _texts(version.value(QLatin1String("enumeration"))), (QStringList { "1.0", "1.1", "2.0" }));
    QCOMPARE(version.value(QLatin1String("visible")).toBool(), false);
}

void TestOrvexctlJson::updateDryRunReportAgreesWithPlain()
{
    Run plain;
    QJsonObject document;
    _runBoth(
        { QStringLiteral("update"), QStringLiteral("example.conf"), QStringLiteral("--dry-run") },
        plain, document);
    QCOMPARE(document.value(QLatin1String("from")).toString(), QStringLiteral("1.1"));
    QCOMPARE(document.value(QLatin1String("to")).toString(), QStringLiteral("2.0"));
    QCOMPARE(document.value(QLatin1String("dry_run")).toBool(), true);
    QCOMPARE(document.value(QLatin1String("updated")).toBool(), false);
    QVERIFY(document.value(QLatin1String("backup")).isNull());
    QStringList const plainLines = lines(plain.out);
    int const kept = plainLines.indexOf(QStringLiteral("Kept from the old file:"));
    int const filled = plainLines.indexOf(QStringLiteral("Filled from the default configuration:"));
    int const refused
        = plainLines.indexOf(QStringLiteral("Refused by the schema, the default kept:"));
    QVERIFY(kept > 0 && filled > kept && refused > filled);
    auto const section = [&plainLines](int from, int to) {
        QStringList items;
        for (QString const &line : plainLines.mid(from + 1, to - from - 1))
            if (line != QLatin1String("  (none)"))
                items << line.mid(2);
        return items;
    };
    auto const reported = [&document](char const *name) {
        QStringList items;
        for (QJsonValue const &line : document.value(QLatin1String(name)).toArray())
            items << line.toObject().value(QLatin1String("path")).toString() + QStringLiteral(" = ")
                    + line.toObject().value(QLatin1String("value")).toString();
        return items;
    };
    QCOMPARE(reported("kept"), section(kept, filled));
    QCOMPARE(reported("filled"), section(filled, refused));
    QVERIFY(!reported("filled").isEmpty());
}

void TestOrvexctlJson::tleReportAgreesWithTable()
{
    Run plain;
    QJsonObject document;
    _runBoth({ QStringLiteral("tle-check"), _tleFile, QStringLiteral("--report"),
                 QStringLiteral("--at"), QStringLiteral("2018-02-01") },
        plain, document);
    QJsonArray const sets = document.value(QLatin1String("sets")).toArray();
    // A set's row, then its flags, each on a line of its own behind a "!".
    QStringList rows;
    QList<QStringList> flags;
    for (QString const &line : lines(plain.out).mid(1)) {
        if (line.trimmed().startsWith(QLatin1Char('!'))) {
            flags.last() << line.trimmed().mid(2);
        } else {
            rows << line;
            flags << QStringList();
        }
    }
    QCOMPARE(sets.size(), rows.size());
    QVERIFY(!rows.isEmpty());
    for (int i = 0; i < rows.size(); ++i) {
        QJsonObject const set = sets[i].toObject();
        QStringList jsonFlags;
        for (QJsonValue const flag : set.value(QLatin1String("flags")).toArray())
            jsonFlags << flag.toString();
        QCOMPARE(jsonFlags, flags[i]);
        QCOMPARE(set.value(QLatin1String("accepted")).toBool(), true);
        QStringList const cells = rows[i].split(QLatin1Char(' '), Qt::SkipEmptyParts);
        QCOMPARE(QString::number(set.value(QLatin1String("catalog")).toInt()), cells[0]);
        QDateTime const epoch = QDateTime::fromString(
            set.value(QLatin1String("epoch")).toString(), Qt::ISODateWithMs);
        QCOMPARE(epoch.timeSpec(), Qt::UTC);
        QCOMPARE(epoch.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), cells[1] + ' ' + cells[2]);
        QCOMPARE(
            QString::number(set.value(QLatin1String("age_days")).toDouble(), 'f', 2), cells[3]);
        QCOMPARE(
            QString::number(set.value(QLatin1String("inclination")).toDouble(), 'f', 4), cells[4]);
        QCOMPARE(
            QString::number(set.value(QLatin1String("mean_motion")).toDouble(), 'f', 8), cells[5]);
        // Names may hold runs of blanks; the name ends the row after two blanks.
        QString const name = set.value(QLatin1String("name")).toString();
        QCOMPARE(rows[i].mid(rows[i].indexOf(cells[5]) + cells[5].size() + 2), name);
        QVERIFY(set.value(QLatin1String("line1")).toString().startsWith(QLatin1String("1 ")));
        QVERIFY(set.value(QLatin1String("line2")).toString().startsWith(QLatin1String("2 ")));
    }
}

QTEST_GUILESS_MAIN(TestOrvexctlJson)
#include "tst_orvexctl_json.moc"
