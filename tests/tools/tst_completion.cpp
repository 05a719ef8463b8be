// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The shell completion of orvexctl: what the helper answers for a command
// line, and what bash offers when the script that "orvexctl completion bash"
// prints completes a word.
#include "ctl/completion.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

namespace {

QString const _fixtureSchema
    = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/fixture/schema-userconf.xsd");
QString const _shippedSchema = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/schema-userconf.xsd");

OptionInfo const _help { "--help", "-h", false };
OptionInfo const _schema { "--schema", "", true };

// A table as orvexctl's, with a command that reads a parameter path without
// a configuration file.
std::vector<CompletionCommand> const _table = {
    { "check-schema", "check-schema [SCHEMA]", { _help } },
    { "get", "get CONFIG PATH [--schema SCHEMA]", { _help, _schema } },
    { "set", "set CONFIG PATH VALUE... [--schema SCHEMA]", { _help, _schema } },
    { "describe", "describe PATH [--schema SCHEMA]", { _help, _schema } },
    { "new", "new SERVICE OUT [--force] [--schema SCHEMA]",
        { _help, _schema, { "--force", "-f", false } } },
    { "update", "update CONFIG [-o OUT] [--schema SCHEMA]",
        { _help, _schema, { "--output", "-o", true } } },
    { "tle-check", "tle-check FILE [--report [--at DATE]]",
        { _help, { "--report", "", false }, { "--at", "", true } } },
    { "completion", "completion bash", { _help } },
};

QStringList _toList(std::vector<std::string> const &items)
{
    QStringList list;
    for (std::string const &item : items)
        list << QString::fromStdString(item);
    return list;
}

std::vector<std::string> _toVector(QStringList const &list)
{
    std::vector<std::string> items;
    for (QString const &item : list)
        items.push_back(item.toStdString());
    return items;
}

} // namespace

class TestCompletion : public QObject
{
    Q_OBJECT

private slots:
    void helperAnswersFromSynopsisAndSchema_data();
    void helperAnswersFromSynopsisAndSchema();
    void helperOffersEveryPathOfTheSchemaInForce();
    void scriptRegistersItsFunction();
    void bashOffersWhatTheCommandTakes_data();
    void bashOffersWhatTheCommandTakes();
    void bashOffersFileNamesWhereFilesAreTaken_data();
    void bashOffersFileNamesWhereFilesAreTaken();
    void unknownShellIsRefused();

private:
    QStringList _bash(QStringList const &words, QString const &workingDir = QString());
};

// words: the command line after "orvexctl", the word being completed last.
void TestCompletion::helperAnswersFromSynopsisAndSchema_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("expected");

    QStringList const commands { "check-schema", "get", "set", "describe", "new", "update",
        "tle-check", "completion", "help", "--help", "--version" };
    QStringList const fixturePaths { "Station/Name", "Station/Gain" };
    QTest::newRow("first word: commands") << QStringList { "" } << commands;
    QTest::newRow("unknown command") << QStringList { "frobnicate", "" } << QStringList();
    QTest::newRow("services of --schema")
        << QStringList { "new", "--schema", _fixtureSchema, "" } << QStringList { "alpha", "beta" };
    QTest::newRow("services after --force") << QStringList { "new", "-f", "--schema",
        _fixtureSchema, "" } << QStringList { "alpha", "beta" };
    QTest::newRow("file after the service")
        << QStringList { "new", "alpha", "" } << QStringList { ":files" };
    QTest::newRow("options") << QStringList { "new", "-" }
                             << QStringList { "--help", "-h", "--schema", "--force", "-f" };
    QTest::newRow("value of --schema")
        << QStringList { "get", "--schema", "" } << QStringList { ":files" };
    QTest::newRow("value of -o") << QStringList { "update", "a.conf", "-o", "" }
                                 << QStringList { ":files" };
    QTest::newRow("value of --at")
        << QStringList { "tle-check", "a.tle", "--report", "--at", "" } << QStringList();
    QTest::newRow("optional schema")
        << QStringList { "check-schema", "" } << QStringList { ":files" };
    QTest::newRow("literal shell") << QStringList { "completion", "" } << QStringList { "bash" };
    QTest::newRow("nothing after the last argument")
        << QStringList { "completion", "bash", "" } << QStringList();
    QTest::newRow("value of set") << QStringList { "set", "--schema", _fixtureSchema, "a.conf",
        "Station/Gain", "" } << QStringList();
    QTest::newRow("values repeat")
        << QStringList { "set", "a.conf", "Station/Gain", "1", "" } << QStringList();
    QTest::newRow("after -- a dash is an argument")
        << QStringList { "update", "--", "-" } << QStringList { ":files" };
    QTest::newRow("unreadable schema offers nothing")
        << QStringList { "describe", "--schema", "/nonexistent/schema.xsd", "" } << QStringList();
}

void TestCompletion::helperAnswersFromSynopsisAndSchema()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, expected);
    QCOMPARE(_toList(completionCandidates(_table, _toVector(words))), expected);
}

void TestCompletion::helperOffersEveryPathOfTheSchemaInForce()
{
    for (std::string const command : { "get", "set", "describe" }) {
        std::vector<std::string> words { command, "--schema", _shippedSchema.toStdString() };
        if (command != "describe")
            words.push_back("site.conf");
        words.push_back("");
        QStringList const paths = _toList(completionCandidates(_table, words));
        QVERIFY2(paths.contains("Observatory/Site/Latitude"), command.c_str());
        QVERIFY2(paths.contains("Observatory"), command.c_str());
        QVERIFY2(paths.contains("Version"), command.c_str());
        QVERIFY2(!paths.contains("Station/Gain"), command.c_str());

        words[2] = _fixtureSchema.toStdString();
        QStringList const fixture = _toList(completionCandidates(_table, words));
        QVERIFY2(fixture.contains("Station/Gain"), command.c_str());
        QVERIFY2(!fixture.contains("Observatory"), command.c_str());
    }
}

// Runs bash on the script that the built orvexctl prints, sets the words of
// a command line, calls the completion function and returns COMPREPLY.
QStringList TestCompletion::_bash(QStringList const &words, QString const &workingDir)
{
    QString const script
        = QStringLiteral("source <(\"$0\" completion bash) || exit 3\n"
                         "COMP_WORDS=(\"$0\" \"$@\"); COMP_CWORD=$#\n"
                         "COMP_LINE=\"${COMP_WORDS[*]}\"; COMP_POINT=${#COMP_LINE}\n"
                         "_orvexctl || exit 4\n"
                         "printf '%s\\n' \"${COMPREPLY[@]}\"\n");
    QProcess bash;
    if (!workingDir.isEmpty())
        bash.setWorkingDirectory(workingDir);
    bash.start(QStringLiteral("bash"),
        QStringList { "--norc", "--noprofile", "-c", script, QStringLiteral(ORVEXCTL_PATH) }
            + words);
    bool const finished = bash.waitForFinished(60000);
    QByteArray const errors = bash.readAllStandardError();
    if (!finished || bash.exitCode() != 0) {
        qWarning("bash: %s", errors.constData());
        return { QStringLiteral("<bash failed>") };
    }
    QStringList reply = QString::fromUtf8(bash.readAllStandardOutput()).split('\n');
    reply.removeAll(QString());
    return reply;
}

void TestCompletion::scriptRegistersItsFunction()
{
    QProcess bash;
    bash.start(QStringLiteral("bash"),
        { "--norc", "--noprofile", "-c", "source <(\"$0\" completion bash) && complete -p orvexctl",
            QStringLiteral(ORVEXCTL_PATH) });
    QVERIFY(bash.waitForFinished(60000));
    QCOMPARE(bash.exitCode(), 0);
    QCOMPARE(bash.readAllStandardOutput().trimmed(), QByteArray("complete -F _orvexctl orvexctl"));
}

void TestCompletion::bashOffersWhatTheCommandTakes_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("absent");

    QTest::newRow("commands") << QStringList { "" }
                              << QStringList { "check-schema", "validate", "list", "get", "set",
                                     "new", "update", "diff", "tle-check", "completion",
                                     "describe", "search" }
                              << QStringList { "__complete" };
    QTest::newRow("command by its start")
        << QStringList { "up" } << QStringList { "update" } << QStringList { "get" };
    QTest::newRow("services of the default schema")
        << QStringList { "new", "" } << QStringList { "tracking", "survey", "photometry" }
        << QStringList { "alpha" };
    QTest::newRow("services of --schema")
        << QStringList { "new", "--schema", _fixtureSchema, "" } << QStringList { "alpha", "beta" }
        << QStringList { "tracking" };
    QTest::newRow("paths of the default schema")
        << QStringList { "get", "site.conf", "Observatory/Site/L" }
        << QStringList { "Observatory/Site/Latitude", "Observatory/Site/Longitude" }
        << QStringList { "Observatory/Site/Altitude", "Observatory/SiteName" };
    QTest::newRow("paths of --schema for set")
        << QStringList { "set", "--schema", _fixtureSchema, "station.conf", "Station/" }
        << QStringList { "Station/Name", "Station/Gain" } << QStringList { "Observatory" };
    QTest::newRow("paths for describe")
        << QStringList { "describe", "Observatory/Site/L" }
        << QStringList { "Observatory/Site/Latitude", "Observatory/Site/Longitude" }
        << QStringList { "Observatory/Site/Altitude" };
    QTest::newRow("options of a command")
        << QStringList { "update", "--" } << QStringList { "--help", "--schema", "--output" }
        << QStringList { "-o", "--force" };
    QTest::newRow("the shell") << QStringList { "completion", "" } << QStringList { "bash" }
                               << QStringList();
}

void TestCompletion::bashOffersWhatTheCommandTakes()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, absent);
    QStringList const reply = _bash(words);
    for (QString const &word : expected)
        QVERIFY2(reply.contains(word), qPrintable(word + " not in: " + reply.join(' ')));
    for (QString const &word : absent)
        QVERIFY2(!reply.contains(word), qPrintable(word + " in: " + reply.join(' ')));
    for (QString const &word : reply)
        QVERIFY2(word.startsWith(words.last()), qPrintable(word));
}

void TestCompletion::bashOffersFileNamesWhereFilesAreTaken_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("expected");

    QStringList const all { "site.conf", "sets.tle", "older" };
    QTest::newRow("configuration") << QStringList { "validate", "" } << all;
    QTest::newRow("by its start") << QStringList { "diff", "s" }
                                  << QStringList { "site.conf", "sets.tle" };
    QTest::newRow("output of new") << QStringList { "new", "tracking", "" } << all;
    QTest::newRow("value of -o") << QStringList { "update", "site.conf", "-o", "o" }
                                 << QStringList { "older" };
    QTest::newRow("TLE file") << QStringList { "tle-check", "sets" } << QStringList { "sets.tle" };
    QTest::newRow("no file for a value")
        << QStringList { "set", "site.conf", "Version", "" } << QStringList();
}

void TestCompletion::bashOffersFileNamesWhereFilesAreTaken()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, expected);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    for (QString const name : { "site.conf", "sets.tle" }) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("older")));

    QStringList reply = _bash(words, dir.path());
    QStringList sortedExpected = expected;
    reply.sort();
    sortedExpected.sort();
    QCOMPARE(reply, sortedExpected);
}

void TestCompletion::unknownShellIsRefused()
{
    QProcess ctl;
    ctl.start(QStringLiteral(ORVEXCTL_PATH), { "completion", "tcsh" });
    QVERIFY(ctl.waitForFinished(60000));
    QCOMPARE(ctl.exitCode(), 2);
    QVERIFY(ctl.readAllStandardOutput().isEmpty());
    QVERIFY(ctl.readAllStandardError().contains("tcsh"));
}

QTEST_GUILESS_MAIN(TestCompletion)
#include "tst_completion.moc"
