// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl tle-import as a user runs it. Real element sets are turned into OMM
// records by an independent program (Debian's python3-sgp4, through
// omm_oracle.py) and must come back from the import as they were.
#include "ctlprocess.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using CtlProcess::Run;

QString const _fixtureDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tools/fixture");
QString const _tleDir = QStringLiteral(ORVEX_TEST_DATA_DIR "/tle");

QByteArray _readFile(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool _writeFile(QString const &path, QByteArray const &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The non-empty lines of a text of sets.
QList<QByteArray> _setLines(QByteArray const &text)
{
    QList<QByteArray> lines;
    for (QByteArray const &line : text.split('\n'))
        if (!line.isEmpty())
            lines << line;
    return lines;
}

// One OMM record as JSON, the ISS set of the test data, with changes.
QByteArray _issJson(QJsonObject const &changes = QJsonObject())
{
    QJsonObject record { { "OBJECT_NAME", "ISS (ZARYA)" }, { "OBJECT_ID", "1998-067A" },
        { "EPOCH", "2004-01-05T12:28:09.630623" }, { "MEAN_MOTION", 15.66405366 },
        { "ECCENTRICITY", 0.0006431 }, { "INCLINATION", 51.6297 }, { "RA_OF_ASC_NODE", 78.4979 },
        { "ARG_OF_PERICENTER", 344.6528 }, { "MEAN_ANOMALY", 119.5204 }, { "EPHEMERIS_TYPE", 0 },
        { "CLASSIFICATION_TYPE", "U" }, { "NORAD_CAT_ID", 25544 }, { "ELEMENT_SET_NO", 970 },
        { "REV_AT_EPOCH", 29264 }, { "BSTAR", 0.00019085 }, { "MEAN_MOTION_DOT", 0.00019728 },
        { "MEAN_MOTION_DDOT", 0 } };
    for (auto it = changes.begin(); it != changes.end(); ++it)
        record[it.key()] = it.value();
    return QJsonDocument(record).toJson();
}

QByteArray const _issSet
    = "ISS (ZARYA)\n"
      "1 25544U 98067A   04005.51955591  .00019728  00000-0  19085-3 0  9701\n"
      "2 25544  51.6297  78.4979 0006431 344.6528 119.5204 15.66405366292649\n";

} // namespace

class TestTleImport : public QObject
{
    Q_OBJECT

private:
    Run _run(QStringList const &args) const;
    QString _path(QString const &name) const { return _dir->filePath(name); }
    bool _write(QString const &name, QByteArray const &bytes) const
    {
        return _writeFile(_path(name), bytes);
    }

    QTemporaryDir _oracleDir;
    QScopedPointer<QTemporaryDir> _dir;

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void realSetsComeBackLineByLine_data();
    void realSetsComeBackLineByLine();
    void filesAreConvertedInTheirOrder();
    void outputGoesIntoAFile();
    void refusedRecordsAreNamedAndTheOthersConverted();
    void unreadableInputFails_data();
    void unreadableInputFails();
    void oneUnreadableFileAmongOthersIsARemark();
    void setsReplaceATleList();
    void setsAreAppendedToATleList();
    void pathThatIsNoTleListLeavesTheFileUntouched_data();
    void pathThatIsNoTleListLeavesTheFileUntouched();
    void intoNeedsItsPath();
    void helpTellsAlpha5();
};

Run TestTleImport::_run(QStringList const &args) const
{
    return CtlProcess::run(_dir->path(), args);
}

void TestTleImport::initTestCase()
{
    QVERIFY(_oracleDir.isValid());
    QProcess oracle;
    oracle.start(QStringLiteral(ORVEX_SYSTEM_PYTHON),
        { QStringLiteral(ORVEX_OMM_ORACLE), _oracleDir.path(), _tleDir + "/catalog-a.tle",
            _tleDir + "/iss-crlf.tle", _tleDir + "/verification-sets.tle" });
    QVERIFY(oracle.waitForFinished(120000));
    QVERIFY2(oracle.exitCode() == 0, oracle.readAllStandardError().constData());
}

void TestTleImport::init()
{
    _dir.reset(new QTemporaryDir);
    QVERIFY(_dir->isValid());
}

void TestTleImport::cleanup()
{
    _dir.reset();
}

void TestTleImport::realSetsComeBackLineByLine_data()
{
    QTest::addColumn<QString>("stem");
    QTest::addColumn<QString>("format");
    for (char const *stem : { "real", "alpha5" })
        for (char const *format : { "xml", "csv", "json", "kvn" })
            QTest::addRow("%s %s", stem, format) << stem << format;
}

void TestTleImport::realSetsComeBackLineByLine()
{
    QFETCH(QString, stem);
    QFETCH(QString, format);
    Run const run = _run({ "tle-import", _oracleDir.filePath(stem + "." + format) });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QList<QByteArray> const expected = _setLines(_readFile(_oracleDir.filePath(stem + ".tle")));
    QList<QByteArray> const actual = _setLines(run.out);
    // Every set of the three files with a designator and right check digits.
    QCOMPARE(expected.size(), 3 * 520);
    QCOMPARE(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(actual[i] == expected[i],
            qPrintable(QStringLiteral("line %1:\n  got      %2\n  expected %3")
                           .arg(i)
                           .arg(QString::fromUtf8(actual[i]), QString::fromUtf8(expected[i]))));
}

void TestTleImport::filesAreConvertedInTheirOrder()
{
    QVERIFY(_write("one.json", _issJson({ { "NORAD_CAT_ID", 100000 } })));
    QVERIFY(_write("two.json", "[" + _issJson() + "]"));
    Run const run = _run({ "tle-import", "one.json", "two.json" });
    QCOMPARE(run.status, 0);
    QList<QByteArray> const lines = _setLines(run.out);
    QCOMPARE(lines.size(), 6);
    QVERIFY(lines[1].startsWith("1 A0000U "));
    QVERIFY(lines[4].startsWith("1 25544U "));
    // One empty line between sets, as the TLE editor writes them.
    QCOMPARE(run.out.count("\n\n"), 1);
}

void TestTleImport::outputGoesIntoAFile()
{
    QVERIFY(_write("iss.json", _issJson()));
    Run const run = _run({ "tle-import", "iss.json", "-o", "iss.tle" });
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(_readFile(_path("iss.tle")), _issSet);
}

void TestTleImport::refusedRecordsAreNamedAndTheOthersConverted()
{
    QByteArray const records = "["
        + _issJson({ { "OBJECT_NAME", "FAR" }, { "NORAD_CAT_ID", 340000 } }) + ",\n" + _issJson()
        + ",\n"
        + _issJson(
            { { "OBJECT_NAME", "FAST" }, { "OBJECT_ID", "2026-001B" }, { "MEAN_MOTION", 123.4 } })
        + ",\n{\"OBJECT_ID\": \"2026-001C\"}]";
    QVERIFY(_write("mixed.json", records));
    Run const run = _run({ "tle-import", "mixed.json" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err,
        QByteArray("orvexctl: mixed.json: FAR (1998-067A) is refused: NORAD_CAT_ID 340000 is "
                   "above 339999, the last number of the Alpha-5 form\n"
                   "orvexctl: mixed.json: FAST (2026-001B) is refused: MEAN_MOTION 123.4 does "
                   "not fit its columns\n"
                   "orvexctl: mixed.json: record 4 (2026-001C) is refused: has no OBJECT_NAME\n"));
    QCOMPARE(run.out, _issSet);
}

void TestTleImport::unreadableInputFails_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("empty") << QByteArray() << QByteArray("orvexctl: in.omm: empty\n");
    QTest::newRow("blanks only") << QByteArray(" \r\n\n")
                                 << QByteArray("orvexctl: in.omm: empty\n");
    QTest::newRow("no OMM form") << QByteArray("hello\nworld\n")
                                 << QByteArray("orvexctl: in.omm: not an OMM file in XML, CSV, "
                                               "JSON or KVN\n");
    QTest::newRow("a TLE") << _issSet
                           << QByteArray("orvexctl: in.omm: not an OMM file in XML, CSV, JSON "
                                         "or KVN\n");
    QTest::newRow("malformed XML")
        << QByteArray("<ndm><omm><body>\n</ndm>")
        << QByteArray("orvexctl: in.omm: malformed XML: Opening and ending tag mismatch. at line "
                      "2\n");
    QTest::newRow("malformed JSON")
        << QByteArray("[{\"OBJECT_NAME\": }]")
        << QByteArray(
               "orvexctl: in.omm: malformed JSON: object is missing after a comma at byte 18\n");
    QTest::newRow("JSON of numbers") << QByteArray("[1, 2]")
                                     << QByteArray("orvexctl: in.omm: malformed JSON: the array "
                                                   "holds something other than objects\n");
    QTest::newRow("empty JSON array")
        << QByteArray("[]") << QByteArray("orvexctl: in.omm: holds no OMM record\n");
    QTest::newRow("malformed CSV")
        << QByteArray("OBJECT_NAME,NORAD_CAT_ID\r\nISS,25544,9\r\n")
        << QByteArray("orvexctl: in.omm: malformed CSV: line 2 has 3 cells, the header 2\n");
    QTest::newRow("malformed KVN")
        << QByteArray("OBJECT_NAME = ISS\nNORAD_CAT_ID 25544\n")
        << QByteArray("orvexctl: in.omm: malformed KVN: line 2 is not KEYWORD = value\n");
}

void TestTleImport::unreadableInputFails()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, message);
    QVERIFY(_write("in.omm", content));
    Run const run = _run({ "tle-import", "in.omm", "-o", "out.tle" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err, message);
    QVERIFY(run.out.isEmpty());
    QVERIFY(!QFile::exists(_path("out.tle")));
}

void TestTleImport::oneUnreadableFileAmongOthersIsARemark()
{
    QVERIFY(_write("iss.json", _issJson()));
    Run const run = _run({ "tle-import", "missing.xml", "iss.json" });
    QCOMPARE(run.status, 1);
    QCOMPARE(run.err, QByteArray("orvexctl: missing.xml cannot be read\n"));
    QCOMPARE(run.out, _issSet);
    QCOMPARE(_run({ "tle-import", "missing.xml" }).status, 2);
}

void TestTleImport::setsReplaceATleList()
{
    for (char const *name : { "station.conf", "schema-userconf.xsd" })
        QVERIFY(QFile::copy(_fixtureDir + "/" + name, _path(name)));
    QVERIFY(_write("new.json", _issJson({ { "NORAD_CAT_ID", 339999 }, { "OBJECT_NAME", "NEW" } })));
    Run const run = _run({ "tle-import", "new.json", "--into", "station.conf",
        "Tracking/Satellites", "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.isEmpty());
    Run const get
        = _run({ "get", "station.conf", "Tracking/Satellites", "--schema", "schema-userconf.xsd" });
    QCOMPARE(get.status, 0);
    QCOMPARE(_setLines(get.out).size(), 3);
    QCOMPARE(_setLines(get.out)[0], QByteArray("NEW"));
    QVERIFY(_setLines(get.out)[1].startsWith("1 Z9999U 98067A "));
}

void TestTleImport::setsAreAppendedToATleList()
{
    for (char const *name : { "station.conf", "schema-userconf.xsd" })
        QVERIFY(QFile::copy(_fixtureDir + "/" + name, _path(name)));
    QVERIFY(_write("iss.xml",
        "<ndm><omm><body><segment><metadata><OBJECT_NAME>NEW</OBJECT_NAME>"
        "<OBJECT_ID>2026-301A</OBJECT_ID></metadata><data><meanElements>"
        "<EPOCH>2026-10-28T00:00:00</EPOCH><MEAN_MOTION>16.2</MEAN_MOTION>"
        "<ECCENTRICITY>0.0001</ECCENTRICITY><INCLINATION>51.6</INCLINATION>"
        "<RA_OF_ASC_NODE>10</RA_OF_ASC_NODE><ARG_OF_PERICENTER>20</ARG_OF_PERICENTER>"
        "<MEAN_ANOMALY>30</MEAN_ANOMALY></meanElements><tleParameters>"
        "<NORAD_CAT_ID>123456</NORAD_CAT_ID><ELEMENT_SET_NO>999</ELEMENT_SET_NO>"
        "<REV_AT_EPOCH>1</REV_AT_EPOCH><BSTAR>-0.0001</BSTAR>"
        "<MEAN_MOTION_DOT>0.001</MEAN_MOTION_DOT><MEAN_MOTION_DDOT>0</MEAN_MOTION_DDOT>"
        "</tleParameters></data></segment></body></omm></ndm>\n"));
    Run const run = _run({ "tle-import", "iss.xml", "--into", "station.conf", "Tracking/Satellites",
        "--append", "--schema", "schema-userconf.xsd" });
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    Run const get
        = _run({ "get", "station.conf", "Tracking/Satellites", "--schema", "schema-userconf.xsd" });
    QList<QByteArray> const lines = _setLines(get.out);
    QCOMPARE(lines.size(), 9);
    QCOMPARE(lines[0], QByteArray("ISS (ZARYA)"));
    QCOMPARE(lines[3], QByteArray("NOAA 19"));
    QCOMPARE(lines[6], QByteArray("NEW"));
    QCOMPARE(lines[7],
        QByteArray("1 C3456U 26301A   26301.00000000  .00100000  00000-0 -10000-3 0  9998"));
    QCOMPARE(lines[8],
        QByteArray("2 C3456  51.6000  10.0000 0001000  20.0000  30.0000 16.20000000    19"));
}

void TestTleImport::pathThatIsNoTleListLeavesTheFileUntouched_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("a number") << "Station/Gain"
                              << QByteArray("orvexctl: Station/Gain: is not a TLE list; "
                                            "station.conf is left as it was\n");
    QTest::newRow("a list") << "Station/Ids"
                            << QByteArray("orvexctl: Station/Ids: is not a TLE list; "
                                          "station.conf is left as it was\n");
    QTest::newRow("a section") << "Tracking"
                               << QByteArray("orvexctl: Tracking: is not a TLE list; "
                                             "station.conf is left as it was\n");
    QTest::newRow("one set") << "Tracking/Satellites[0]"
                             << QByteArray("orvexctl: Tracking/Satellites[0]: names one set; the "
                                           "sets go into the whole TLE list; station.conf is "
                                           "left as it was\n");
    QTest::newRow("no parameter") << "Tracking/Nothing"
                                  << QByteArray("orvexctl: the schema has no parameter "
                                                "Tracking/Nothing\n");
}

void TestTleImport::pathThatIsNoTleListLeavesTheFileUntouched()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    for (char const *name : { "station.conf", "schema-userconf.xsd" })
        QVERIFY(QFile::copy(_fixtureDir + "/" + name, _path(name)));
    QByteArray const before = _readFile(_path("station.conf"));
    QVERIFY(_write("iss.json", _issJson()));
    Run const run = _run({ "tle-import", "iss.json", "--into", "station.conf", path, "--schema",
        "schema-userconf.xsd" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err, message);
    QCOMPARE(_readFile(_path("station.conf")), before);
}

void TestTleImport::intoNeedsItsPath()
{
    QVERIFY(_write("iss.json", _issJson()));
    Run const run = _run({ "tle-import", "iss.json", "--into", "station.conf" });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.err,
        QByteArray("orvexctl: tle-import: --into CONFIG takes the PATH of a TLE list behind it\n"));
    Run const append = _run({ "tle-import", "iss.json", "--append" });
    QCOMPARE(append.status, 2);
    QCOMPARE(append.err,
        QByteArray("orvexctl: tle-import: --append and --schema go with --into only\n"));
}

void TestTleImport::helpTellsAlpha5()
{
    Run const run = _run({ "tle-import", "--help" });
    QCOMPARE(run.status, 0);
    QVERIFY(run.out.startsWith("Usage: orvexctl tle-import FILE... "));
    QVERIFY(run.out.contains("100000 is \"A0000\""));
    QVERIFY(run.out.contains("Exit status: 0 success, 1 done with remarks, 2 failure."));
}

QTEST_GUILESS_MAIN(TestTleImport)
#include "tst_tleimport.moc"
