// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// list, get and set: the values of a configuration file.

#include "ctlfixture.h"

#include <QtTest>

using namespace ctlfixture;

class TestOrvexctlValues : public QObject, private OrvexctlHarness
{
    Q_OBJECT

private slots:
    void init() { _setUpDir(); }
    void cleanup() { _dir.reset(); }

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
};

// ---------------------------------------------------------------------- list

void TestOrvexctlValues::listPrintsEveryValueInSchemaOrder()
{
    Run const run = _runFixture({ QStringLiteral("list"), QStringLiteral("station.conf") });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    _checkGolden(run.out, QStringLiteral("list-station.txt"));
}

void TestOrvexctlValues::listOfShippedExampleAgreesWithFile()
{
    Run const run = _run({ QStringLiteral("list"), _shippedExample });
    QCOMPARE(run.status, run.err.isEmpty() ? 0 : 1);
    QDomElement const root = _documentElement(_shippedExample);
    QStringList const lines = CtlProcess::lines(run.out);
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

void TestOrvexctlValues::listTellsParametersTheFileLacks()
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

void TestOrvexctlValues::listRefusesHostileFiles_data()
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

void TestOrvexctlValues::listRefusesHostileFiles()
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

// ----------------------------------------------------------------------- get

void TestOrvexctlValues::getPrintsValue_data()
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

void TestOrvexctlValues::getPrintsValue()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, expected);
    Run const run = _runFixture({ QStringLiteral("get"), QStringLiteral("station.conf"), path });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, expected);
}

void TestOrvexctlValues::getRefusesPath_data()
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

void TestOrvexctlValues::getRefusesPath()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    Run const run = _runFixture({ QStringLiteral("get"), QStringLiteral("station.conf"), path });
    QCOMPARE(run.status, 2);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(run.err, message);
}

void TestOrvexctlValues::getOnShippedExampleAgreesWithFile()
{
    QDomElement const root = _documentElement(_shippedExample);
    for (QString const &key : { QStringLiteral("Version"), QStringLiteral("Service"),
             QStringLiteral("Observatory/SiteName"), QStringLiteral("Camera/Gain") }) {
        Run const run = _run({ QStringLiteral("get"), _shippedExample, key });
        QVERIFY(run.status == 0 || run.status == 1);
        QCOMPARE(run.out, _elementAt(root, key).text().toUtf8() + "\n");
    }
}

// ----------------------------------------------------------------------- set

void TestOrvexctlValues::setChangesOnlyThatValue()
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

void TestOrvexctlValues::setRefusesValueAndLeavesFileUntouched_data()
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

void TestOrvexctlValues::setRefusesValueAndLeavesFileUntouched()
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

void TestOrvexctlValues::setReplacesAndAppendsListItems()
{
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids[0]", "11" }).status, 0);
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids[2]", "33" }).status, 0);
    QCOMPARE(
        _runFixture({ "get", "station.conf", "Station/Ids" }).out, QByteArray("11\n27424\n33\n"));
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Ids", "7", "8" }).status, 0);
    QVERIFY(_file(QStringLiteral("station.conf"))
                .contains("  <Ids>\n   <NoradId>7</NoradId>\n   <NoradId>8</NoradId>\n  </Ids>\n"));
}

void TestOrvexctlValues::setEmptiesListWithoutMinimum()
{
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Files", "/a", "/b" }).status, 0);
    QCOMPARE(_runFixture({ "get", "station.conf", "Station/Files" }).out, QByteArray("/a\n/b\n"));
    QCOMPARE(_runFixture({ "set", "station.conf", "Station/Files" }).status, 0);
    QVERIFY(_file(QStringLiteral("station.conf")).contains("  <Files/>\n"));
}

void TestOrvexctlValues::setTakesTLEText()
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

void TestOrvexctlValues::setOnShippedExample()
{
    QString const copy = _path(QStringLiteral("example.conf"));
    QVERIFY(QFile::copy(_shippedExample, copy));
    QByteArray const before = CtlProcess::readFile(copy);
    Run const refused = _run({ "set", copy, "Camera/Gain", "700" });
    QCOMPARE(refused.status, 2);
    QVERIFY(refused.err.endsWith("\"700\" is refused; allowed: from 0 to 600, or empty; "
        + copy.toUtf8() + " is left as it was\n"));
    QCOMPARE(CtlProcess::readFile(copy), before);
    Run const set = _run({ "set", copy, "Camera/Gain", "300" });
    QVERIFY(set.status == 0 || set.status == 1);
    QCOMPARE(_run({ "get", copy, "Camera/Gain" }).out, QByteArray("300\n"));
}

QTEST_GUILESS_MAIN(TestOrvexctlValues)
#include "tst_orvexctl_values.moc"
