// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl as a user runs it: the built executable is started with arguments,
// and its standard output, standard error, exit status and files are checked.
#include "golden.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

QString const _fixtureDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/fixture");
QString const _pitfallsDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/pitfalls");
QString const _expectedDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/expected");
QString const _shippedExample = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/conf/example.conf");
QString const _shippedSchema = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/schema-userconf.xsd");

QByteArray _readFile(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void _writeFile(QString const &path, QByteArray const &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void _copyDir(QString const &from, QString const &to)
{
    QDir const source(from);
    for (QString const &name : source.entryList(QDir::Files))
        QVERIFY(QFile::copy(source.filePath(name), to + QLatin1Char('/') + name));
}

QDomElement _documentElement(QString const &path)
{
    QDomDocument document;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        document.setContent(&file, false);
    return document.documentElement();
}

// The element that a key of "orvexctl list" names, walked in a file:
// "a/b[1]/Line0" is the second child element of <b> in <a>, then its <Line0>.
QDomElement _elementAt(QDomElement element, QString const &key)
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
QStringList _declaredNames(QString const &schemaPath)
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

QStringList _lines(QByteArray const &bytes)
{
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

class TestOrvexctl : public QObject
{
    Q_OBJECT

private:
    Run _runIn(QString const &dir, QStringList const &args) const;
    // In the test's own directory, which holds copies of the fixture files.
    Run _run(QStringList const &args) const { return _runIn(_dir->path(), args); }
    // The same, with the fixture's schema.
    Run _runFixture(QStringList args) const;
    QString _path(QString const &name) const { return _dir->filePath(name); }
    QByteArray _file(QString const &name) const { return _readFile(_path(name)); }
    void _checkGolden(QByteArray const &actual, QString const &name) const;

    QScopedPointer<QTemporaryDir> _dir;

private slots:
    void init();
    void cleanup();

    void everyCommandHasHelp_data();
    void everyCommandHasHelp();
    void noCommandPrintsUsageAndFails();
    void unknownCommandFails();
    void versionOptionPrintsVersion();
    void wrongNumberOfArgumentsFails_data();
    void wrongNumberOfArgumentsFails();
    void unknownOptionFails();

    void checkSchemaPrintsOutline();
    void checkSchemaOfShippedSchemaIsCleanAndComplete();
    void checkSchemaTellsPitfalls_data();
    void checkSchemaTellsPitfalls();
    void checkSchemaRefusesBrokenSchema_data();
    void checkSchemaRefusesBrokenSchema();
    void checkSchemaTellsFirstChildrenTheProgramCantUse_data();
    void checkSchemaTellsFirstChildrenTheProgramCantUse();
    void schemaGuideExampleIsClean();

    void validateAcceptsShippedExample();
    void validateShowsLocationOfValueOutsideEnumeration();
    void validateRefusesMissingFile();
    void validateWithBrokenSchemaTellsSchemaOnly();

    void listPrintsEveryValueInSchemaOrder();
    void listOfShippedExampleAgreesWithFile();
    void listTellsParametersTheFileLacks();
    void listRefusesHostileFiles_data();
    void listRefusesHostileFiles();

    void getPrintsValue_data();
    void getPrintsValue();
    void getRefusesPath_data();
    void getRefusesPath();
    void getOnShippedExampleAgreesWithFile();

    void setChangesOnlyThatValue();
    void setRefusesValueAndLeavesFileUntouched_data();
    void setRefusesValueAndLeavesFileUntouched();
    void setReplacesAndAppendsListItems();
    void setEmptiesListWithoutMinimum();
    void setTakesTLEText();
    void setOnShippedExample();

    void newWritesServiceDefault();
    void newRefusesUnknownService();
    void newReplacesExistingOutputOnlyWhenForced();
    void newRaisesVersionOfOlderDefault();
    void newFailsWithoutDefaultFile();
    void newOnShippedSchemaGivesValidFile();

    void updatePrintsMigrationReport();
    void updateKeepsBackupOfOldFile();
    void updateWithOutputLeavesOldFileAlone();
    void updateFillsParameterTheOldFileLacks();
    void updateKeepsUserValueOverDefault();
    void updateDropsUndeclaredElements();
    void updateKeepsDefaultItemsOfListTheFileLacks();
    void updateOfUpdatedFileHasNothingToDo();
    void updateRefusesUnlistedVersionOrService_data();
    void updateRefusesUnlistedVersionOrService();
    void updateRefusesMissingFile();
    void updateOnShippedExample();

    void diffPrintsDifferencesFromDefault();
    void diffOfDefaultIsEmpty();
    void diffOnShippedExample();
    void diffRefusesUnlistedService();

    void tleCheckPrintsNormalForm();
    void tleCheckTellsProblems();
    void tleCheckRefusesEmptyOrMissingFile_data();
    void tleCheckRefusesEmptyOrMissingFile();
    void tleCheckReportsTable();
    void tleCheckRefusesBadDate();
};

Run TestOrvexctl::_runIn(QString const &dir, QStringList const &args) const
{
    QProcess process;
    process.setWorkingDirectory(dir);
    process.start(QStringLiteral(ORVEXCTL_PATH), args);
    Run run;
    if (!process.waitForFinished(60000))
        return run;
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

Run TestOrvexctl::_runFixture(QStringList args) const
{
    args << QStringLiteral("--schema") << QStringLiteral("schema-userconf.xsd");
    return _run(args);
}

void TestOrvexctl::_checkGolden(QByteArray const &actual, QString const &name) const
{
    QString failure;
    QVERIFY2(matchesGolden(actual, _expectedDir + QLatin1Char('/') + name, &failure),
        qPrintable(failure));
}

void TestOrvexctl::init()
{
    _dir.reset(new QTemporaryDir);
    QVERIFY(_dir->isValid());
    _copyDir(_fixtureDir, _dir->path());
}

void TestOrvexctl::cleanup()
{
    _dir.reset();
}

// ------------------------------------------------------------------ general

void TestOrvexctl::everyCommandHasHelp_data()
{
    QTest::addColumn<QString>("command");
    for (char const *command :
        { "check-schema", "validate", "list", "get", "set", "new", "update", "diff", "tle-check" })
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TestOrvexctl::everyCommandHasHelp()
{
    QFETCH(QString, command);
    Run const run = _run({ command, QStringLiteral("--help") });
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.startsWith("Usage: orvexctl " + command.toUtf8() + ' '));
    QVERIFY(run.out.contains("Exit status: 0 success, 1 done with remarks, 2 failure."));
    QVERIFY(run.err.isEmpty());
}

void TestOrvexctl::noCommandPrintsUsageAndFails()
{
    Run const run = _run({});
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.startsWith("Usage: orvexctl COMMAND [ARGUMENTS]"));
    QCOMPARE(_run({ QStringLiteral("--help") }).status, 0);
}

void TestOrvexctl::unknownCommandFails()
{
    Run const run = _run({ QStringLiteral("frobnicate") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.startsWith("orvexctl: unknown command frobnicate\n"));
}

void TestOrvexctl::versionOptionPrintsVersion()
{
    Run const run = _run({ QStringLiteral("--version") });
    QCOMPARE(run.status, 0);
    QVERIFY(QRegularExpression(QStringLiteral("^orvexctl \\d+\\.\\d+\\.\\d+\n$"))
                .match(QString::fromUtf8(run.out))
                .hasMatch());
}

void TestOrvexctl::wrongNumberOfArgumentsFails_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::newRow("check-schema two") << QStringList { "check-schema", "a.xsd", "b.xsd" };
    QTest::newRow("validate none") << QStringList { "validate" };
    QTest::newRow("get one") << QStringList { "get", "station.conf" };
    QTest::newRow("set one") << QStringList { "set", "station.conf" };
    QTest::newRow("new one") << QStringList { "new", "alpha" };
    QTest::newRow("update two") << QStringList { "update", "a.conf", "b.conf" };
    QTest::newRow("tle-check none") << QStringList { "tle-check" };
}

void TestOrvexctl::wrongNumberOfArgumentsFails()
{
    QFETCH(QStringList, args);
    Run const run = _run(args);
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.contains(": wrong number of arguments\nUsage: orvexctl " + args[0].toUtf8()));
    QVERIFY(run.out.isEmpty());
}

void TestOrvexctl::unknownOptionFails()
{
    Run const run = _run(
        { QStringLiteral("list"), QStringLiteral("station.conf"), QStringLiteral("--colour") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.startsWith("orvexctl: list: unknown option --colour\n"));
    QCOMPARE(
        _run({ QStringLiteral("list"), QStringLiteral("station.conf"), QStringLiteral("--schema") })
            .status,
        2);
}

// ------------------------------------------------------------- check-schema

void TestOrvexctl::checkSchemaPrintsOutline()
{
    Run const run = _run({ QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("check-schema.txt"));
}

void TestOrvexctl::checkSchemaOfShippedSchemaIsCleanAndComplete()
{
    // Without an argument the schema beside the executable, a copy of the shipped one.
    Run const run = _run({ QStringLiteral("check-schema") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QStringList const lines = _lines(run.out);
    QVERIFY(lines.value(0).endsWith(QStringLiteral("/orvex/default/schema-userconf.xsd")));
    QCOMPARE(lines.value(3), QStringLiteral("root/"));
    QStringList names = _declaredNames(_shippedSchema);
    names.removeAll(QString()); // the inner elements of the named TLE type
    int at = 4;
    for (QString const &name : names) {
        if (name == QLatin1String("root") || name.startsWith(QLatin1String("Line")))
            continue;
        // Every declared name appears, in order, as a node or as a list's item tag.
        while (at < lines.size()
            && !lines[at].contains(QRegularExpression(
                QStringLiteral("(^ *%1[:/]|<%1>)").arg(QRegularExpression::escape(name)))))
            ++at;
        QVERIFY2(at < lines.size(), qPrintable(name));
    }
}

void TestOrvexctl::checkSchemaTellsPitfalls_data()
{
    QTest::addColumn<QString>("remark");
    QTest::newRow("element without inline type")
        << "Box/Plain: no inline xs:simpleType, so the program makes no parameter of it";
    QTest::newRow("unknown type")
        << "Box/Count: the type \"xs:int\" is not one the program knows; its values are taken as "
           "xs:string";
    QTest::newRow("TLE records under another tag")
        << "Box/Sats: the records of a TLE list are written as <Sat> but read back only as "
           "<TLE>; saved records would be lost";
    QTest::newRow("sequence attribute other than minOccurs")
        << "Box/Tagged: its xs:sequence has attributes but no minOccurs; it is read as a list "
           "with no minimum";
    QTest::newRow("version text not in normal form")
        << "the version \"1.02\" reads as 1.2; the desktop program can't set it when it updates "
           "a file";
    QTest::newRow("default of an older version")
        << "./one-default.conf states the version \"1.0\", not the newest 1.02";
    QTest::newRow("default value refused")
        << "./one-default.conf: Box/Level = 12  # refused (from 1 to 9, or empty); kept: ";
    QTest::newRow("default element undeclared")
        << "./one-default.conf holds Box/Extra = yes, which the schema doesn't declare";
    QTest::newRow("default invalid")
        << "./one-default.conf is not valid against the schema: XML is not valid, file is "
           "invalid at: line: 6, column: 9";
    QTest::newRow("default missing")
        << "no default configuration ./two-default.conf for the service two; New and update fail "
           "for it";
    QTest::newRow("default incomplete")
        << "./three-default.conf lacks Box/Level; updated files get an empty value";
}

void TestOrvexctl::checkSchemaTellsPitfalls()
{
    QFETCH(QString, remark);
    Run const run = _runIn(
        _pitfallsDir, { QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.status, 1);
    QVERIFY2(_lines(run.err).contains(QStringLiteral("orvexctl: ") + remark), run.err.constData());
    // The outline shows what is read all the same.
    QVERIFY(run.out.contains("    Count: xs:string, any text (bounds 1 to 5 not applied)\n"));
    QVERIFY(!run.out.contains("Plain"));
}

void TestOrvexctl::checkSchemaRefusesBrokenSchema_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArrayList>("expected");
    QTest::newRow("missing file") << QByteArray()
                                  << QByteArrayList { "XSD schema is not opened\n" };
    QByteArray broken = "<?xml version=\"1.0\"?>\n"
                        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
                        " <xs:element name=\"root\">\n"
                        "  <xs:complexType>\n"
                        "   <xs:sequence>\n"
                        "    <xs:element name=\"Version\">\n"
                        "     <xs:simpleType oops\n"
                        "    </xs:element>\n"
                        "   </xs:sequence>\n"
                        "  </xs:complexType>\n"
                        " </xs:element>\n"
                        "</xs:schema>\n";
    QTest::newRow("not well formed")
        << broken << QByteArrayList { "XSD schema is not load\nfile is invalid at: line: 8," };
    QByteArray const wrongRoot = "<?xml version=\"1.0\"?>\n"
                                 "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
                                 " <xs:element name=\"Root\" type=\"xs:string\"/>\n"
                                 "</xs:schema>\n";
    QTest::newRow("root with a capital")
        << wrongRoot << QByteArrayList { "XSD schema is not orvex schema\n" };
}

void TestOrvexctl::checkSchemaRefusesBrokenSchema()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArrayList, expected);
    if (!content.isEmpty())
        _writeFile(_path(QStringLiteral("broken.xsd")), content);
    Run const run = _run({ QStringLiteral("check-schema"), QStringLiteral("broken.xsd") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.isEmpty());
    for (QByteArray const &text : expected)
        QVERIFY2(run.err.contains(text), run.err.constData());
}

void TestOrvexctl::checkSchemaTellsFirstChildrenTheProgramCantUse_data()
{
    // The text from `from` up to `until` is replaced by `to`; the schema stays valid.
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("until");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("fault");
    QTest::newRow("three children")
        << QStringLiteral("        <xs:element name=\"Tracking\">")
        << QStringLiteral("      </xs:sequence>\n    </xs:complexType>\n  </xs:element>")
        << QStringLiteral("        <xs:element name=\"Tracking\" type=\"xs:string\"/>\n")
        << QStringLiteral("Init Service lsist And Version fail");
    QTest::newRow("versions without enumeration")
        << QStringLiteral("<xs:enumeration value=\"1.0\"/>")
        << QStringLiteral("            </xs:restriction>")
        << QStringLiteral("<xs:pattern value=\"[0-9.]+\"/>\n")
        << QStringLiteral("Init List of config versions fail");
}

void TestOrvexctl::checkSchemaTellsFirstChildrenTheProgramCantUse()
{
    QFETCH(QString, from);
    QFETCH(QString, until);
    QFETCH(QString, to);
    QFETCH(QString, fault);
    QString schema = QString::fromUtf8(_file(QStringLiteral("schema-userconf.xsd")));
    int const start = schema.indexOf(from);
    int const end = schema.indexOf(until, start);
    QVERIFY(start > 0 && end > start);
    schema.replace(start, end - start, to);
    _writeFile(_path(QStringLiteral("odd.xsd")), schema.toUtf8());
    Run const run = _run({ QStringLiteral("check-schema"), QStringLiteral("odd.xsd") });
    QCOMPARE(run.status, 1);
    QVERIFY2(run.err.contains("orvexctl: the desktop program can't open any configuration with "
                              "this schema: "
                 + fault.toUtf8() + "\n"),
        run.err.constData());
    // Nor can the commands that need the services.
    Run const created = _run({ QStringLiteral("new"), QStringLiteral("alpha"),
        QStringLiteral("out.conf"), QStringLiteral("--schema"), QStringLiteral("odd.xsd") });
    QCOMPARE(created.status, 2);
    QVERIFY(created.err.contains(fault.toUtf8()));
    QVERIFY(!QFile::exists(_path(QStringLiteral("out.conf"))));
}

void TestOrvexctl::schemaGuideExampleIsClean()
{
    // The complete example of the schema guide, taken from the guide itself.
    QString const guide
        = QString::fromUtf8(_readFile(QStringLiteral(ORVEX_DOCS_DIR "/schema-guide.md")));
    QRegularExpression const block(QStringLiteral("<!-- example: (\\S+) -->\\n```xml\\n(.*?)```"),
        QRegularExpression::DotMatchesEverythingOption);
    QTemporaryDir dir;
    int count = 0;
    for (QRegularExpressionMatchIterator it = block.globalMatch(guide); it.hasNext(); ++count) {
        QRegularExpressionMatch const match = it.next();
        _writeFile(dir.filePath(match.captured(1)), match.captured(2).toUtf8());
    }
    QCOMPARE(count, 2);
    Run const run = _runIn(
        dir.path(), { QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    // The guide also shows the outline.
    QRegularExpression const shown(QStringLiteral("```text\\n(Schema: .*?)```"),
        QRegularExpression::DotMatchesEverythingOption);
    QCOMPARE(QString::fromUtf8(run.out), shown.match(guide).captured(1));
    Run const created = _runIn(dir.path(),
        { QStringLiteral("new"), QStringLiteral("echelle"), QStringLiteral("new.conf"),
            QStringLiteral("--schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(created.status, 0);
    QCOMPARE(_readFile(dir.filePath(QStringLiteral("new.conf"))),
        _readFile(dir.filePath(QStringLiteral("echelle-default.conf"))));
}

// ----------------------------------------------------------------- validate

void TestOrvexctl::validateAcceptsShippedExample()
{
    Run const run = _run({ QStringLiteral("validate"), _shippedExample });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, _shippedExample.toUtf8() + ": valid\n1 valid, 0 invalid\n");
}

void TestOrvexctl::validateShowsLocationOfValueOutsideEnumeration()
{
    QByteArray content = _file(QStringLiteral("station.conf"));
    content.replace("<Mode>slow</Mode>", "<Mode>medium</Mode>");
    _writeFile(_path(QStringLiteral("bad.conf")), content);
    Run const run = _runFixture({ QStringLiteral("validate"), QStringLiteral("bad.conf") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.startsWith("bad.conf:8:8: "));
    QVERIFY(run.out.endsWith("\n0 valid, 1 invalid\n"));
    QCOMPARE(run.err,
        QByteArray("orvexctl: bad.conf is not valid against schema-userconf.xsd:\n"
                   "XML is not valid\n"
                   "file is invalid at: line: 8, column: 8\n"
                   "  8 | <Mode>medium</Mode>\n"));
}

void TestOrvexctl::validateRefusesMissingFile()
{
    Run const run = _runFixture({ QStringLiteral("validate"), QStringLiteral("nothing.conf") });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: nothing.conf is not valid against "
                   "schema-userconf.xsd:\n"
                   "XML is not opened\n"
                   "file is invalid at: line: -1, column: -1\n"));
}

void TestOrvexctl::validateWithBrokenSchemaTellsSchemaOnly()
{
    Run const run = _run({ QStringLiteral("validate"), QStringLiteral("nothing.conf"),
        QStringLiteral("--schema"), QStringLiteral("station.conf") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.contains("\nXSD schema is not "));
    QVERIFY(!run.err.contains("XML is not opened"));
}

// --------------------------------------------------------------------- list

void TestOrvexctl::listPrintsEveryValueInSchemaOrder()
{
    Run const run = _runFixture({ QStringLiteral("list"), QStringLiteral("station.conf") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("list-station.txt"));
}

void TestOrvexctl::listOfShippedExampleAgreesWithFile()
{
    Run const run = _run({ QStringLiteral("list"), _shippedExample });
    QCOMPARE(run.status, run.err.isEmpty() ? 0 : 1);
    QDomElement const root = _documentElement(_shippedExample);
    QStringList const lines = _lines(run.out);
    QVERIFY(lines.size() > 10);
    for (QString const &line : lines) {
        int const at = line.indexOf(QStringLiteral(" = "));
        QVERIFY2(at > 0, qPrintable(line));
        QString const key = line.left(at);
        QDomElement const element = _elementAt(root, key);
        // A parameter that the file lacks is listed empty, and told on standard error.
        if (element.isNull()) {
            QCOMPARE(line.mid(at + 3), QString());
            QVERIFY(run.err.contains(" not found in XML"));
            continue;
        }
        QCOMPARE(
            line.mid(at + 3), element.firstChildElement().isNull() ? element.text() : QString());
    }
}

void TestOrvexctl::listTellsParametersTheFileLacks()
{
    QByteArray content = _file(QStringLiteral("station.conf"));
    content.replace("  <Gain>250</Gain>\n", "");
    _writeFile(_path(QStringLiteral("lacking.conf")), content);
    Run const run = _runFixture({ QStringLiteral("list"), QStringLiteral("lacking.conf") });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("orvexctl: the configuration lacking.conf is read with remarks:\n"
                   "Node \"->root->Station->Gain\" not found in XML\n"));
    QVERIFY(run.out.contains("\nStation/Gain = \nStation/Mode = slow\n"));
}

void TestOrvexctl::listRefusesHostileFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("missing file") << QByteArray() << QByteArray("XML is not opened\n");
    QTest::newRow("not XML") << QByteArray("Version = 2.0\n")
                             << QByteArray("XML is not dom document\n");
    QTest::newRow("wrong root") << QByteArray("<?xml version=\"1.0\"?>\n<config><Version>2.0"
                                              "</Version></config>\n")
                                << QByteArray("Root parameter does not match root XML node\n");
}

void TestOrvexctl::listRefusesHostileFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, line);
    if (!content.isEmpty())
        _writeFile(_path(QStringLiteral("hostile.conf")), content);
    for (QString const &command : { QStringLiteral("list"), QStringLiteral("diff") }) {
        Run const run = _runFixture({ command, QStringLiteral("hostile.conf") });
        QCOMPARE(run.status, 2);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err, "orvexctl: the configuration hostile.conf cannot be read:\n" + line);
    }
}

// ---------------------------------------------------------------------- get

void TestOrvexctl::getPrintsValue_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("expected");
    QByteArray const iss = "ISS (ZARYA)\n"
                           "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992\n"
                           "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614";
    QByteArray const noaa
        = "NOAA 19\n"
          "1 33591U 09005A   18020.91958580  .00000107  00000-0  83477-4 0  9992\n"
          "2 33591  99.1238 356.1693 0014450  24.0615 336.1228 14.12247534461122";
    QTest::newRow("leaf") << "Station/Gain" << QByteArray("250\n");
    QTest::newRow("escaped text") << "Station/Name" << QByteArray("Hilltop & Co\n");
    QTest::newRow("list") << "Station/Ids" << QByteArray("33591\n27424\n");
    QTest::newRow("list item") << "Station/Ids[1]" << QByteArray("27424\n");
    QTest::newRow("empty list") << "Station/Files" << QByteArray();
    QTest::newRow("TLE list") << "Tracking/Satellites" << iss + "\n\n" + noaa + "\n";
    QTest::newRow("TLE set") << "Tracking/Satellites[1]" << noaa + "\n";
    QTest::newRow("TLE line") << "Tracking/Satellites[1]/Line0" << QByteArray("NOAA 19\n");
    QTest::newRow("section") << "Tracking"
                             << "Tracking/Satellites[0]/Line0 = ISS (ZARYA)\n"
                                "Tracking/Satellites[0]/Line1 = "
            + iss.split('\n')[1] + "\nTracking/Satellites[0]/Line2 = " + iss.split('\n')[2]
            + "\nTracking/Satellites[1]/Line0 = NOAA 19\n"
              "Tracking/Satellites[1]/Line1 = "
            + noaa.split('\n')[1] + "\nTracking/Satellites[1]/Line2 = " + noaa.split('\n')[2]
            + "\nTracking/Enabled = true\n";
}

void TestOrvexctl::getPrintsValue()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, expected);
    Run const run = _runFixture({ QStringLiteral("get"), QStringLiteral("station.conf"), path });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, expected);
}

void TestOrvexctl::getRefusesPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("unknown") << "Station/Shutter"
                             << QByteArray(
                                    "orvexctl: the schema has no parameter Station/Shutter\n");
    QTest::newRow("below a leaf") << "Station/Gain/Extra"
                                  << QByteArray("orvexctl: the schema has no parameter "
                                                "Station/Gain/Extra\n");
    QTest::newRow("item past the end")
        << "Station/Ids[2]" << QByteArray("orvexctl: Station/Ids has 2 items\n");
    QTest::newRow("item of a leaf")
        << "Station/Gain[0]" << QByteArray("orvexctl: Station/Gain is not a list\n");
    QTest::newRow("line of a list")
        << "Station/Ids[0]/Line1" << QByteArray("orvexctl: Station/Ids is not a TLE list\n");
    QTest::newRow("no such line") << "Tracking/Satellites[0]/Line3"
                                  << QByteArray("orvexctl: Tracking/Satellites[0]/Line3 is not a "
                                                "parameter path\n");
    QTest::newRow("bad index") << "Station/Ids[x]"
                               << QByteArray("orvexctl: Station/Ids[x] is not a parameter path\n");
}

void TestOrvexctl::getRefusesPath()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    Run const run = _runFixture({ QStringLiteral("get"), QStringLiteral("station.conf"), path });
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(run.err, message);
}

void TestOrvexctl::getOnShippedExampleAgreesWithFile()
{
    QDomElement const root = _documentElement(_shippedExample);
    for (QString const &key : { QStringLiteral("Version"), QStringLiteral("Service"),
             QStringLiteral("Observatory/SiteName"), QStringLiteral("Camera/Gain") }) {
        Run const run = _run({ QStringLiteral("get"), _shippedExample, key });
        QVERIFY(run.status == 0 || run.status == 1);
        QCOMPARE(run.out, _elementAt(root, key).text().toUtf8() + "\n");
    }
}

// ---------------------------------------------------------------------- set

void TestOrvexctl::setChangesOnlyThatValue()
{
    Run const before = _runFixture({ QStringLiteral("list"), QStringLiteral("station.conf") });
    Run const run = _runFixture({ QStringLiteral("set"), QStringLiteral("station.conf"),
        QStringLiteral("Station/Gain"), QStringLiteral("300") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.isEmpty());
    Run const after = _runFixture({ QStringLiteral("list"), QStringLiteral("station.conf") });
    QByteArray expected = before.out;
    expected.replace("Station/Gain = 250\n", "Station/Gain = 300\n");
    QCOMPARE(after.out, expected);
    QVERIFY(!QFile::exists(_path(QStringLiteral("station.conf.orvexctl-new"))));
}

void TestOrvexctl::setRefusesValueAndLeavesFileUntouched_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("above the range") << QStringList { "Station/Gain",
        "700" } << QByteArray("Station/Gain: \"700\" is refused; allowed: from 0 to 600, or empty");
    QTest::newRow("negative number") << QStringList { "Station/Gain",
        "-1" } << QByteArray("Station/Gain: \"-1\" is refused; allowed: from 0 to 600, or empty");
    QTest::newRow("outside the enumeration")
        << QStringList { "Station/Mode", "medium" }
        << QByteArray("Station/Mode: \"medium\" is refused; allowed: one of fast | slow");
    QTest::newRow("empty against an enumeration") << QStringList { "Station/Mode",
        "" } << QByteArray("Station/Mode: \"\" is refused; allowed: one of fast | slow");
    QTest::newRow("decimal not a number")
        << QStringList { "Station/Ratio", "nan" }
        << QByteArray("Station/Ratio: \"nan\" is refused; allowed: from 0.5 to 1.5, or empty");
    QTest::newRow("list item below the minimum count")
        << QStringList { "Station/Ids", "25544", "0" }
        << QByteArray("Station/Ids: item 1: \"0\" is refused; allowed: from 1 to 9999999, or "
                      "empty (the list's minimum count bounds its numbers too)");
    QTest::newRow("list emptied below its minimum")
        << QStringList { "Station/Ids" } << QByteArray("Station/Ids: needs at least 1 item");
    QTest::newRow("item past the end") << QStringList { "Station/Ids[3]",
        "5" } << QByteArray("Station/Ids[3]: has 2 items; [2] appends one");
    QTest::newRow("two values for a leaf") << QStringList { "Station/Gain", "1", "2" }
                                           << QByteArray("Station/Gain: takes exactly one value");
    QTest::newRow("section") << QStringList { "Station", "1" }
                             << QByteArray("Station: is a section, not a parameter");
    QTest::newRow("bad TLE line")
        << QStringList { "Tracking/Satellites[0]/Line1", "1 25544U" }
        << QByteArray("Tracking/Satellites[0]/Line1: the set is refused (Line #1 is not TLE "
                      "line.)");
}

void TestOrvexctl::setRefusesValueAndLeavesFileUntouched()
{
    QFETCH(QStringList, args);
    QFETCH(QByteArray, message);
    QByteArray const before = _file(QStringLiteral("station.conf"));
    // "--" lets a value begin with "-"; a number such as -1 needs none.
    Run const run = _runFixture(QStringList { "set", "station.conf" } + args);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err, "orvexctl: " + message + "; station.conf is left as it was\n");
    QCOMPARE(_file(QStringLiteral("station.conf")), before);
}

void TestOrvexctl::setReplacesAndAppendsListItems()
{
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids[0]", "11" }).status, 0);
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids[2]", "33" }).status, 0);
    QCOMPARE(
        _runFixture({ "get", "station.conf", "Station/Ids" }).out, QByteArray("11\n27424\n33\n"));
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids", "7", "8" }).status, 0);
    QVERIFY(_file(QStringLiteral("station.conf"))
                .contains("  <Ids>\n   <NoradId>7</NoradId>\n   <NoradId>8</NoradId>\n  </Ids>\n"));
}

void TestOrvexctl::setEmptiesListWithoutMinimum()
{
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Files", "/a", "/b" }).status, 0);
    QCOMPARE(_runFixture({ "get", "station.conf", "Station/Files" }).out, QByteArray("/a\n/b\n"));
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Files" }).status, 0);
    QVERIFY(_file(QStringLiteral("station.conf")).contains("  <Files/>\n"));
}

void TestOrvexctl::setTakesTLEText()
{
    QByteArray const flock
        = "FLOCK 2P-1\n"
          "1 41617U 16040U   18020.92263222  .00002489  00000-0  10617-3 0  9990\n"
          "2 41617  97.4368  87.1954 0011425  46.9108 313.3084 15.23813118 87812";
    Run const set
        = _runFixture({ "set", "station.conf", "Tracking/Satellites", QString::fromUtf8(flock) });
    QCOMPARE(set.err, QByteArray());
    QCOMPARE(set.status, 0);
    QCOMPARE(_runFixture({ "get", "station.conf", "Tracking/Satellites" }).out, flock + "\n");

    // A text with a fault is refused with the checker's messages.
    QByteArray broken = flock;
    broken.replace("0  9990", "0  9991");
    QByteArray const before = _file(QStringLiteral("station.conf"));
    Run const refused
        = _runFixture({ "set", "station.conf", "Tracking/Satellites", QString::fromUtf8(broken) });
    QCOMPARE(refused.status, 2);
    QCOMPARE(refused.err,
        QByteArray("Line #2. TLE is not valid. Line #1 is not TLE line.\n"
                   "0 problem-free TLEs were parsed.\n"
                   "orvexctl: Tracking/Satellites: the TLE text is refused; "
                   "station.conf is left as it was\n"));
    QCOMPARE(_file(QStringLiteral("station.conf")), before);

    // An empty text empties the list: records have no minimum.
    QCOMPARE(_runFixture({ "set", "station.conf", "Tracking/Satellites", "" }).status, 0);
    QVERIFY(_file(QStringLiteral("station.conf")).contains("  <Satellites/>\n"));
}

void TestOrvexctl::setOnShippedExample()
{
    QString const copy = _path(QStringLiteral("example.conf"));
    QVERIFY(QFile::copy(_shippedExample, copy));
    QByteArray const before = _readFile(copy);
    Run const refused = _run({ "set", copy, "Camera/Gain", "700" });
    QCOMPARE(refused.status, 2);
    QVERIFY(refused.err.endsWith("\"700\" is refused; allowed: from 0 to 600, or empty; "
        + copy.toUtf8() + " is left as it was\n"));
    QCOMPARE(_readFile(copy), before);
    Run const set = _run({ "set", copy, "Camera/Gain", "300" });
    QVERIFY(set.status == 0 || set.status == 1);
    QCOMPARE(_run({ "get", copy, "Camera/Gain" }).out, QByteArray("300\n"));
}

// ---------------------------------------------------------------------- new

void TestOrvexctl::newWritesServiceDefault()
{
    for (QString const &service : { QStringLiteral("alpha"), QStringLiteral("beta") }) {
        Run const run = _runFixture({ "new", service, service + ".conf" });
        QCOMPARE(run.err, QByteArray());
        QCOMPARE(run.status, 0);
        // The defaults are written as the program writes, so a copy is byte for byte.
        QCOMPARE(_file(service + ".conf"), _file(service + "-default.conf"));
    }
}

void TestOrvexctl::newRefusesUnknownService()
{
    Run const run = _runFixture({ "new", "Alpha", "out.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(
        run.err, QByteArray("orvexctl: the schema has no service Alpha; it lists alpha, beta\n"));
    QVERIFY(!QFile::exists(_path(QStringLiteral("out.conf"))));
}

void TestOrvexctl::newReplacesExistingOutputOnlyWhenForced()
{
    Run const refused = _runFixture({ "new", "alpha", "station.conf" });
    QCOMPARE(refused.status, 2);
    QCOMPARE(
        refused.err, QByteArray("orvexctl: station.conf exists; give --force to replace it\n"));
    QVERIFY(_file(QStringLiteral("station.conf")).contains("Hilltop"));
    QCOMPARE(_runFixture({ "new", "alpha", "station.conf", "--force" }).status, 0);
    QCOMPARE(_file(QStringLiteral("station.conf")), _file(QStringLiteral("alpha-default.conf")));
}

void TestOrvexctl::newRaisesVersionOfOlderDefault()
{
    QString const out = _path(QStringLiteral("one.conf"));
    Run const run = _runIn(_pitfallsDir, { "new", "one", out, "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("orvexctl: ./one-default.conf states the version 1.0; written "
                   "as 1.02\n"));
    QVERIFY(_readFile(out).contains(" <Version>1.02</Version>\n"));
}

void TestOrvexctl::newFailsWithoutDefaultFile()
{
    QString const out = _path(QStringLiteral("two.conf"));
    Run const run = _runIn(_pitfallsDir, { "new", "two", out, "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: the default configuration ./two-default.conf cannot "
                   "be read:\nXML is not opened\n"));
    QVERIFY(!QFile::exists(out));
}

void TestOrvexctl::newOnShippedSchemaGivesValidFile()
{
    QString const out = _path(QStringLiteral("tracking.conf"));
    Run const run = _run({ "new", "tracking", out });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(_run({ "validate", out }).status, 0);
    QCOMPARE(_run({ "get", out, "Service" }).out, QByteArray("tracking\n"));
    Run const outline = _run({ "check-schema" });
    QVERIFY(
        outline.out.contains("(newest " + _run({ "get", out, "Version" }).out.trimmed() + ")\n"));
}

// ------------------------------------------------------------------- update

void TestOrvexctl::updatePrintsMigrationReport()
{
    Run const run = _runFixture({ "update", "old-alpha.conf" });
    QCOMPARE(run.err, QByteArray());
    // A value that the schema refuses now makes a remark.
    QCOMPARE(run.status, 1);
    _checkGolden(run.out, QStringLiteral("update-report.txt"));
    _checkGolden(_file(QStringLiteral("old-alpha.conf")), QStringLiteral("updated-alpha.conf"));
}

void TestOrvexctl::updateKeepsBackupOfOldFile()
{
    QByteArray const old = _file(QStringLiteral("old-alpha.conf"));
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_file(QStringLiteral("old-alpha.conf.bak")), old);
    QVERIFY(_file(QStringLiteral("old-alpha.conf")) != old);
}

void TestOrvexctl::updateWithOutputLeavesOldFileAlone()
{
    QByteArray const old = _file(QStringLiteral("old-alpha.conf"));
    Run const run = _runFixture({ "update", "old-alpha.conf", "-o", "new.conf" });
    QCOMPARE(run.status, 1);
    QVERIFY(run.out.startsWith("Updated old-alpha.conf from version 1.0 to 2.0 (service alpha), "
                               "written to new.conf\n"));
    QCOMPARE(_file(QStringLiteral("old-alpha.conf")), old);
    QVERIFY(!QFile::exists(_path(QStringLiteral("old-alpha.conf.bak"))));
    _checkGolden(_file(QStringLiteral("new.conf")), QStringLiteral("updated-alpha.conf"));
}

void TestOrvexctl::updateFillsParameterTheOldFileLacks()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Retries" }).out, QByteArray("3\n"));
    QVERIFY(_file(QStringLiteral("old-alpha.conf")).contains("  <Retries>3</Retries>\n"));
}

void TestOrvexctl::updateKeepsUserValueOverDefault()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Gain" }).out, QByteArray("250\n"));
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Tracking/Satellites[0]/Line0" }).out,
        QByteArray("NOAA 19\n"));
}

void TestOrvexctl::updateDropsUndeclaredElements()
{
    Run const run = _runFixture({ "update", "old-alpha.conf" });
    QVERIFY(run.out.endsWith("Dropped, not declared by the schema:\n"
                             "  Station/Shutter = open\n"
                             "  Station/Gain = 999  # repeated; only the first is read\n"
                             "  Legacy/...\n"));
    QByteArray const updated = _file(QStringLiteral("old-alpha.conf"));
    QVERIFY(!updated.contains("Shutter"));
    QVERIFY(!updated.contains("Legacy"));
    QVERIFY(!updated.contains("<Gain>999</Gain>"));
}

void TestOrvexctl::updateKeepsDefaultItemsOfListTheFileLacks()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Files" }).out,
        QByteArray("/etc/orvex/a.cat\n/etc/orvex/b.cat\n"));
}

void TestOrvexctl::updateOfUpdatedFileHasNothingToDo()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QVERIFY(QFile::remove(_path(QStringLiteral("old-alpha.conf.bak"))));
    QByteArray const updated = _file(QStringLiteral("old-alpha.conf"));
    Run const again = _runFixture({ "update", "old-alpha.conf" });
    QCOMPARE(again.status, 0);
    QVERIFY(again.out.isEmpty());
    QCOMPARE(again.err,
        QByteArray("orvexctl: old-alpha.conf is at the newest version 2.0; "
                   "nothing to update\n"));
    QCOMPARE(_file(QStringLiteral("old-alpha.conf")), updated);
    QVERIFY(!QFile::exists(_path(QStringLiteral("old-alpha.conf.bak"))));
}

void TestOrvexctl::updateRefusesUnlistedVersionOrService_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("newer version") << QByteArray("<Version>1.0<") << QByteArray("<Version>3.0<")
                                   << QByteArray("old-alpha.conf: Fail to check config version "
                                                 "(the schema lists 1.0, 2.0)");
    QTest::newRow("version in another form")
        << QByteArray("<Version>1.0<") << QByteArray("<Version>1.0.0<")
        << QByteArray("old-alpha.conf: Fail to check config version (the schema lists 1.0, 2.0)");
    QTest::newRow("no version") << QByteArray(" <Version>1.0</Version>\n") << QByteArray()
                                << QByteArray("old-alpha.conf: Fail to check config version "
                                              "(the schema lists 1.0, 2.0)");
    QTest::newRow("service in another case")
        << QByteArray("<Service>alpha<") << QByteArray("<Service>Alpha<")
        << QByteArray(
               "old-alpha.conf: Fail to check config service (the schema lists alpha, beta)");
}

void TestOrvexctl::updateRefusesUnlistedVersionOrService()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QByteArray, message);
    QByteArray content = _file(QStringLiteral("old-alpha.conf"));
    QVERIFY(content.contains(from));
    content.replace(from, to);
    _writeFile(_path(QStringLiteral("old-alpha.conf")), content);
    Run const run = _runFixture({ "update", "old-alpha.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err, "orvexctl: " + message + "\n");
    QCOMPARE(_file(QStringLiteral("old-alpha.conf")), content);
    QVERIFY(!QFile::exists(_path(QStringLiteral("old-alpha.conf.bak"))));
}

void TestOrvexctl::updateRefusesMissingFile()
{
    Run const run = _runFixture({ "update", "nothing.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: the configuration nothing.conf cannot be read:\n"
                   "XML is not opened\n"));
    QVERIFY(!QFile::exists(_path(QStringLiteral("nothing.conf"))));
}

void TestOrvexctl::updateOnShippedExample()
{
    QString const copy = _path(QStringLiteral("example.conf"));
    QString const out = _path(QStringLiteral("example-new.conf"));
    QVERIFY(QFile::copy(_shippedExample, copy));
    QString const oldVersion = QString::fromUtf8(_run({ "get", copy, "Version" }).out.trimmed());
    Run const run = _run({ "update", copy, "-o", out });
    QVERIFY2(run.status == 0 || run.status == 1, run.err.constData());
    QVERIFY(run.out.startsWith(
        "Updated " + copy.toUtf8() + " from version " + oldVersion.toUtf8() + " to "));
    QVERIFY(run.out.contains("\nKept from the old file:\n"));
    QVERIFY(run.out.contains("\nFilled from the default configuration:\n"));
    QCOMPARE(_run({ "validate", out }).status, 0);
    QCOMPARE(_run({ "get", out, "Observatory/SiteName" }).out,
        _run({ "get", copy, "Observatory/SiteName" }).out);
    // The updated file is complete: listing it leaves no remark.
    Run const listed = _run({ "list", out });
    QCOMPARE(listed.err, QByteArray());
    QCOMPARE(listed.status, 0);
    QCOMPARE(_run({ "update", out }).status, 0);
}

// --------------------------------------------------------------------- diff

void TestOrvexctl::diffPrintsDifferencesFromDefault()
{
    Run const run = _runFixture({ "diff", "station.conf" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("diff-station.txt"));
}

void TestOrvexctl::diffOfDefaultIsEmpty()
{
    QVERIFY(
        QFile::copy(_path(QStringLiteral("beta-default.conf")), _path(QStringLiteral("b.conf"))));
    Run const run = _runFixture({ "diff", "b.conf" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, QByteArray());
}

void TestOrvexctl::diffOnShippedExample()
{
    Run const run = _run({ "diff", _shippedExample });
    QCOMPARE(run.status, run.err.isEmpty() ? 0 : 1);
    QStringList const lines = _lines(run.out);
    QVERIFY(!lines.isEmpty());
    QRegularExpression const form(QStringLiteral("^(\\S+) = (.*)  # default: (.*)$"));
    for (QString const &line : lines) {
        QRegularExpressionMatch const match = form.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QVERIFY2(match.captured(2) != match.captured(3), qPrintable(line));
        QVERIFY(match.captured(1) != QLatin1String("Service"));
    }
}

void TestOrvexctl::diffRefusesUnlistedService()
{
    QByteArray content = _file(QStringLiteral("station.conf"));
    content.replace("<Service>alpha<", "<Service>gamma<");
    _writeFile(_path(QStringLiteral("station.conf")), content);
    Run const run = _runFixture({ "diff", "station.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: station.conf: Fail to check config service (the schema "
                   "lists alpha, beta)\n"));
}

// ---------------------------------------------------------------- tle-check

void TestOrvexctl::tleCheckPrintsNormalForm()
{
    // Sets with several empty lines between them and one without a name.
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle") });
    QCOMPARE(run.err, QByteArray("3 problem-free TLEs were parsed.\n"));
    QCOMPARE(run.status, 0);
    QCOMPARE(
        run.out, _readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/expected/sets-normal.tle")));
}

void TestOrvexctl::tleCheckTellsProblems()
{
    QByteArray text = _readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"));
    text.replace("0  9990\n2 41617", "0  9993\n2 41617");
    _writeFile(_path(QStringLiteral("bad.tle")), text);
    Run const run = _run({ "tle-check", "bad.tle" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("Line #2. TLE is not valid. Line #1 is not TLE line.\n"
                   "2 problem-free TLEs were parsed.\n"));
    // The good sets still come out.
    QCOMPARE(_lines(run.out).size(), 3 + 1 + 2);
}

void TestOrvexctl::tleCheckRefusesEmptyOrMissingFile_data()
{
    QTest::addColumn<bool>("create");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("empty") << true << QByteArray("TLEs text is empty.\n");
    QTest::newRow("missing") << false << QByteArray("The file sats.tle cannot be read.\n");
}

void TestOrvexctl::tleCheckRefusesEmptyOrMissingFile()
{
    QFETCH(bool, create);
    QFETCH(QByteArray, message);
    if (create)
        _writeFile(_path(QStringLiteral("sats.tle")), QByteArray());
    for (QStringList const &extra : { QStringList(), QStringList { "--report" } }) {
        Run const run = _run(QStringList { "tle-check", "sats.tle" } + extra);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err, message);
        QVERIFY(run.out.isEmpty());
    }
}

void TestOrvexctl::tleCheckReportsTable()
{
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"),
        "--report", "--at", "2018-01-21" });
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("sets-report.txt"));
}

void TestOrvexctl::tleCheckRefusesBadDate()
{
    Run const run = _run({ "tle-check", QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/sets.tle"),
        "--report", "--at", "yesterday" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: --at takes a date such as 2024-06-01 or "
                   "2024-06-01T12:00:00, not yesterday\n"));
}

QTEST_GUILESS_MAIN(TestOrvexctl)
#include "tst_orvexctl.moc"
