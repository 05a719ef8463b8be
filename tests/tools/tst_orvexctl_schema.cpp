// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// check-schema and validate: what orvexctl tells about a schema and a file.

#include "ctlfixture.h"

#include <QtTest>

using namespace ctlfixture;

class TestOrvexctlSchema : public QObject, private OrvexctlHarness
{
    Q_OBJECT

private slots:
    void init() { _setUpDir(); }
    void cleanup() { _dir.reset(); }

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
};

// -------------------------------------------------------------- check-schema

void TestOrvexctlSchema::checkSchemaPrintsOutline()
{
    Run const run = _run({ QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("check-schema.txt"));
}

void TestOrvexctlSchema::checkSchemaOfShippedSchemaIsCleanAndComplete()
{
    // Without an argument the schema beside the executable, a copy of the shipped one.
    Run const run = _run({ QStringLiteral("check-schema") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QStringList const lines = CtlProcess::lines(run.out);
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

void TestOrvexctlSchema::checkSchemaTellsPitfalls_data()
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

void TestOrvexctlSchema::checkSchemaTellsPitfalls()
{
    QFETCH(QString, remark);
    Run const run = CtlProcess::run(
        _pitfallsDir, { QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.status, 1);
    QVERIFY2(CtlProcess::lines(run.err).contains(QStringLiteral("orvexctl: ") + remark), run.err.constData());
    // The outline shows what is read all the same.
    QVERIFY(run.out.contains("    Count: xs:string, any text (bounds 1 to 5 not applied)\n"));
    QVERIFY(!run.out.contains("Plain"));
}

void TestOrvexctlSchema::checkSchemaRefusesBrokenSchema_data()
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

void TestOrvexctlSchema::checkSchemaRefusesBrokenSchema()
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

void TestOrvexctlSchema::checkSchemaTellsFirstChildrenTheProgramCantUse_data()
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

void TestOrvexctlSchema::checkSchemaTellsFirstChildrenTheProgramCantUse()
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

void TestOrvexctlSchema::schemaGuideExampleIsClean()
{
    // The complete example of the schema guide, taken from the guide itself.
    QString const guide
        = QString::fromUtf8(CtlProcess::readFile(QStringLiteral(ORVEX_DOCS_DIR "/schema-guide.md")));
    QRegularExpression const block(QStringLiteral("<!-- example: (\\S+) -->\\n```xml\\n(.*?)```"),
        QRegularExpression::DotMatchesEverythingOption);
    QTemporaryDir dir;
    int count = 0;
    for (QRegularExpressionMatchIterator it = block.globalMatch(guide); it.hasNext(); ++count) {
        QRegularExpressionMatch const match = it.next();
        _writeFile(dir.filePath(match.captured(1)), match.captured(2).toUtf8());
    }
    QCOMPARE(count, 2);
    Run const run = CtlProcess::run(
        dir.path(), { QStringLiteral("check-schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    // The guide also shows the outline.
    QRegularExpression const shown(QStringLiteral("```text\\n(Schema: .*?)```"),
        QRegularExpression::DotMatchesEverythingOption);
    QCOMPARE(QString::fromUtf8(run.out), shown.match(guide).captured(1));
    Run const created = CtlProcess::run(dir.path(),
        { QStringLiteral("new"), QStringLiteral("echelle"), QStringLiteral("new.conf"),
            QStringLiteral("--schema"), QStringLiteral("schema-userconf.xsd") });
    QCOMPARE(created.status, 0);
    QCOMPARE(CtlProcess::readFile(dir.filePath(QStringLiteral("new.conf"))),
        CtlProcess::readFile(dir.filePath(QStringLiteral("echelle-default.conf"))));
}

// ------------------------------------------------------------------ validate

void TestOrvexctlSchema::validateAcceptsShippedExample()
{
    Run const run = _run({ QStringLiteral("validate"), _shippedExample });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, _shippedExample.toUtf8() + ": valid\n1 valid, 0 invalid\n");
}

void TestOrvexctlSchema::validateShowsLocationOfValueOutsideEnumeration()
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

void TestOrvexctlSchema::validateRefusesMissingFile()
{
    Run const run = _runFixture({ QStringLiteral("validate"), QStringLiteral("nothing.conf") });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: nothing.conf is not valid against "
                   "schema-userconf.xsd:\n"
                   "XML is not opened\n"
                   "file is invalid at: line: -1, column: -1\n"));
}

void TestOrvexctlSchema::validateWithBrokenSchemaTellsSchemaOnly()
{
    Run const run = _run({ QStringLiteral("validate"), QStringLiteral("nothing.conf"),
        QStringLiteral("--schema"), QStringLiteral("station.conf") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.contains("\nXSD schema is not "));
    QVERIFY(!run.err.contains("XML is not opened"));
}

QTEST_GUILESS_MAIN(TestOrvexctlSchema)
#include "tst_orvexctl_schema.moc"
