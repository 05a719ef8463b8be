// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// new, update and diff: whole configuration files against their default.

#include "ctlfixture.h"

#include <QtTest>

using namespace ctlfixture;

class TestOrvexctlFiles : public QObject, private OrvexctlHarness
{
    Q_OBJECT

private slots:
    void init() { _setUpDir(); }
    void cleanup() { _dir.reset(); }

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
};

// ----------------------------------------------------------------------- new

void TestOrvexctlFiles::newWritesServiceDefault()
{
    for (QString const &service : { QStringLiteral("alpha"), QStringLiteral("beta") }) {
        Run const run = _runFixture({ "new", service, service + ".conf" });
        QCOMPARE(run.err, QByteArray());
        QCOMPARE(run.status, 0);
        // The defaults are written as the program writes, so a copy is byte for byte.
        QCOMPARE(_file(service + ".conf"), _file(service + "-default.conf"));
    }
}

void TestOrvexctlFiles::newRefusesUnknownService()
{
    Run const run = _runFixture({ "new", "Alpha", "out.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(
        run.err, QByteArray("orvexctl: the schema has no service Alpha; it lists alpha, beta\n"));
    QVERIFY(!QFile::exists(_path(QStringLiteral("out.conf"))));
}

void TestOrvexctlFiles::newReplacesExistingOutputOnlyWhenForced()
{
    Run const refused = _runFixture({ "new", "alpha", "station.conf" });
    QCOMPARE(refused.status, 2);
    QCOMPARE(
        refused.err, QByteArray("orvexctl: station.conf exists; give --force to replace it\n"));
    QVERIFY(_file(QStringLiteral("station.conf")).contains("Hilltop"));
    QCOMPARE(_runFixture({ "new", "alpha", "station.conf", "--force" }).status, 0);
    QCOMPARE(_file(QStringLiteral("station.conf")), _file(QStringLiteral("alpha-default.conf")));
}

void TestOrvexctlFiles::newRaisesVersionOfOlderDefault()
{
    QString const out = _path(QStringLiteral("one.conf"));
    Run const run = CtlProcess::run(_pitfallsDir, { "new", "one", out, "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("orvexctl: ./one-default.conf states the version 1.0; written "
                   "as 1.02\n"));
    QVERIFY(CtlProcess::readFile(out).contains(" <Version>1.02</Version>\n"));
}

void TestOrvexctlFiles::newFailsWithoutDefaultFile()
{
    QString const out = _path(QStringLiteral("two.conf"));
    Run const run = CtlProcess::run(_pitfallsDir, { "new", "two", out, "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: the default configuration ./two-default.conf cannot "
                   "be read:\nXML is not opened\n"));
    QVERIFY(!QFile::exists(out));
}

void TestOrvexctlFiles::newOnShippedSchemaGivesValidFile()
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

// -------------------------------------------------------------------- update

void TestOrvexctlFiles::updatePrintsMigrationReport()
{
    Run const run = _runFixture({ "update", "old-alpha.conf" });
    QCOMPARE(run.err, QByteArray());
    // A value that the schema refuses now makes a remark.
    QCOMPARE(run.status, 1);
    _checkGolden(run.out, QStringLiteral("update-report.txt"));
    _checkGolden(_file(QStringLiteral("old-alpha.conf")), QStringLiteral("updated-alpha.conf"));
}

void TestOrvexctlFiles::updateKeepsBackupOfOldFile()
{
    QByteArray const old = _file(QStringLiteral("old-alpha.conf"));
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_file(QStringLiteral("old-alpha.conf.bak")), old);
    QVERIFY(_file(QStringLiteral("old-alpha.conf")) != old);
}

void TestOrvexctlFiles::updateWithOutputLeavesOldFileAlone()
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

void TestOrvexctlFiles::updateFillsParameterTheOldFileLacks()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Retries" }).out, QByteArray("3\n"));
    QVERIFY(_file(QStringLiteral("old-alpha.conf")).contains("  <Retries>3</Retries>\n"));
}

void TestOrvexctlFiles::updateKeepsUserValueOverDefault()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Gain" }).out, QByteArray("250\n"));
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Tracking/Satellites[0]/Line0" }).out,
        QByteArray("NOAA 19\n"));
}

void TestOrvexctlFiles::updateDropsUndeclaredElements()
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

void TestOrvexctlFiles::updateKeepsDefaultItemsOfListTheFileLacks()
{
    QCOMPARE(_runFixture({ "update", "old-alpha.conf" }).status, 1);
    QCOMPARE(_runFixture({ "get", "old-alpha.conf", "Station/Files" }).out,
        QByteArray("/etc/orvex/a.cat\n/etc/orvex/b.cat\n"));
}

void TestOrvexctlFiles::updateOfUpdatedFileHasNothingToDo()
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

void TestOrvexctlFiles::updateRefusesUnlistedVersionOrService_data()
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

void TestOrvexctlFiles::updateRefusesUnlistedVersionOrService()
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

void TestOrvexctlFiles::updateRefusesMissingFile()
{
    Run const run = _runFixture({ "update", "nothing.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: the configuration nothing.conf cannot be read:\n"
                   "XML is not opened\n"));
    QVERIFY(!QFile::exists(_path(QStringLiteral("nothing.conf"))));
}

void TestOrvexctlFiles::updateOnShippedExample()
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

// ---------------------------------------------------------------------- diff

void TestOrvexctlFiles::diffPrintsDifferencesFromDefault()
{
    Run const run = _runFixture({ "diff", "station.conf" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("diff-station.txt"));
}

void TestOrvexctlFiles::diffOfDefaultIsEmpty()
{
    QVERIFY(
        QFile::copy(_path(QStringLiteral("beta-default.conf")), _path(QStringLiteral("b.conf"))));
    Run const run = _runFixture({ "diff", "b.conf" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, QByteArray());
}

void TestOrvexctlFiles::diffOnShippedExample()
{
    Run const run = _run({ "diff", _shippedExample });
    QCOMPARE(run.status, run.err.isEmpty() ? 0 : 1);
    QStringList const lines = CtlProcess::lines(run.out);
    QVERIFY(!lines.isEmpty());
    QRegularExpression const form(QStringLiteral("^(\\S+) = (.*)  # default: (.*)$"));
    for (QString const &line : lines) {
        QRegularExpressionMatch const match = form.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QVERIFY2(match.captured(2) != match.captured(3), qPrintable(line));
        QVERIFY(match.captured(1) != QLatin1String("Service"));
    }
}

void TestOrvexctlFiles::diffRefusesUnlistedService()
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

QTEST_GUILESS_MAIN(TestOrvexctlFiles)
#include "tst_orvexctl_files.moc"
