// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Help, usage, version and the refusals of a wrong command line.

#include "ctlfixture.h"

#include <QtTest>

using namespace ctlfixture;

class TestOrvexctlUsage : public QObject, private OrvexctlHarness
{
    Q_OBJECT

private slots:
    void init() { _setUpDir(); }
    void cleanup() { _dir.reset(); }

    void everyCommandHasHelp_data();
    void everyCommandHasHelp();
    void noCommandPrintsUsageAndFails();
    void unknownCommandFails();
    void versionOptionPrintsVersion();
    void wrongNumberOfArgumentsFails_data();
    void wrongNumberOfArgumentsFails();
    void unknownOptionFails();
};

void TestOrvexctlUsage::everyCommandHasHelp_data()
{
    QTest::addColumn<QString>("command");
    for (char const *command :
        { "check-schema", "validate", "list", "get", "set", "new", "update", "diff", "tle-check" })
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TestOrvexctlUsage::everyCommandHasHelp()
{
    QFETCH(QString, command);
    Run const run = _run({ command, QStringLiteral("--help") });
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.startsWith("Usage: orvexctl " + command.toUtf8() + ' '));
    QVERIFY(run.out.contains("Exit status: 0 success, 1 done with remarks, 2 failure."));
    QVERIFY(run.err.isEmpty());
}

void TestOrvexctlUsage::noCommandPrintsUsageAndFails()
{
    Run const run = _run({});
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.startsWith("Usage: orvexctl COMMAND [ARGUMENTS]"));
    QCOMPARE(_run({ QStringLiteral("--help") }).status, 0);
}

void TestOrvexctlUsage::unknownCommandFails()
{
    Run const run = _run({ QStringLiteral("frobnicate") });
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.startsWith("orvexctl: unknown command frobnicate\n"));
}

void TestOrvexctlUsage::versionOptionPrintsVersion()
{
    Run const run = _run({ QStringLiteral("--version") });
    QCOMPARE(run.status, 0);
    QVERIFY(QRegularExpression(QStringLiteral("^orvexctl \\d+\\.\\d+\\.\\d+\n$"))
                .match(QString::fromUtf8(run.out))
                .hasMatch());
}

void TestOrvexctlUsage::wrongNumberOfArgumentsFails_data()
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

void TestOrvexctlUsage::wrongNumberOfArgumentsFails()
{
    QFETCH(QStringList, args);
    Run const run = _run(args);
    QCOMPARE(run.status, 2);
    QVERIFY(run.err.contains(": wrong number of arguments\nUsage: orvexctl " + args[0].toUtf8()));
    QVERIFY(run.out.isEmpty());
}

void TestOrvexctlUsage::unknownOptionFails()
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

QTEST_GUILESS_MAIN(TestOrvexctlUsage)
#include "tst_orvexctl_usage.moc"
