// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The four forms of OMM records that tle-import reads, told apart by content.
#include "ctl/ommreader.h"

#include <QtTest>

namespace {

QString _value(
    std::vector<TLEComposer::Fields> const &records, std::size_t index, std::string const &key)
{
    if (index >= records.size())
        return QStringLiteral("(no record)");
    std::string const *value = records[index].find(key);
    return value ? QString::fromStdString(*value) : QStringLiteral("(none)");
}

// The keywords of a full record, and the ISS set of the test data in them.
QByteArray const _header = "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,"
                           "RA_OF_ASC_NODE,ARG_OF_PERICENTER,MEAN_ANOMALY,EPHEMERIS_TYPE,"
                           "CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,"
                           "MEAN_MOTION_DOT,MEAN_MOTION_DDOT";
QByteArray const _iss = "ISS (ZARYA),1998-067A,2004-01-05T12:28:09.630623,15.66405366,0.0006431,"
                        "51.6297,78.4979,344.6528,119.5204,0,U,25544,970,29264,0.00019085,"
                        "0.00019728,0.0";

// The sets of `records` one by one, a refused one as its reason.
QStringList _composed(std::vector<TLEComposer::Fields> const &records)
{
    QStringList sets;
    for (TLEComposer::Fields const &record : records) {
        CheckerTLE::TLE tle;
        std::string reason;
        sets << QString::fromStdString(TLEComposer::compose(record, tle, reason)
                ? tle.line0 + "\n" + tle.line1 + "\n" + tle.line2
                : "refused: " + reason);
    }
    return sets;
}

} // namespace

Q_DECLARE_METATYPE(OmmReader::Format)

class TestOmmReader : public QObject
{
    Q_OBJECT

private slots:
    void formIsToldByContent_data();
    void formIsToldByContent();
    void recordsKeepTheirValues_data();
    void recordsKeepTheirValues();
    void csvSetsAreThoseOfItsRecords_data();
    void csvSetsAreThoseOfItsRecords();
    void malformedCsvRowLeavesNothingBehind_data();
    void malformedCsvRowLeavesNothingBehind();
};

void TestOmmReader::formIsToldByContent_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<OmmReader::Format>("format");
    QTest::newRow("XML") << QByteArray("<?xml version=\"1.0\"?><ndm/>") << OmmReader::Xml;
    QTest::newRow("XML behind a byte order mark")
        << QByteArray("\xEF\xBB\xBF\n <ndm/>") << OmmReader::Xml;
    QTest::newRow("JSON array") << QByteArray("  [ ]") << OmmReader::Json;
    QTest::newRow("JSON object") << QByteArray("{}") << OmmReader::Json;
    QTest::newRow("CSV") << QByteArray("OBJECT_NAME,NORAD_CAT_ID\r\nISS,25544\r\n")
                         << OmmReader::Csv;
    QTest::newRow("KVN") << QByteArray("CCSDS_OMM_VERS = 2.0\n") << OmmReader::Kvn;
    QTest::newRow("KVN comment first")
        << QByteArray("COMMENT made here\nA = 1\n") << OmmReader::Kvn;
    QTest::newRow("empty") << QByteArray() << OmmReader::Unknown;
    QTest::newRow("a TLE") << QByteArray("ISS (ZARYA)\n1 25544U 98067A ...\n")
                           << OmmReader::Unknown;
    QTest::newRow("CSV without keywords") << QByteArray("a,b\n1,2\n") << OmmReader::Unknown;
}

void TestOmmReader::formIsToldByContent()
{
    QFETCH(QByteArray, content);
    QFETCH(OmmReader::Format, format);
    QCOMPARE(OmmReader::detect(content), format);
}

void TestOmmReader::recordsKeepTheirValues_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("motion");
    QTest::newRow("XML, one omm, entities")
        << QByteArray("<omm><body><segment><metadata><OBJECT_NAME>A &amp; B</OBJECT_NAME>"
                      "</metadata><data><meanElements><MEAN_MOTION> 15.5 </MEAN_MOTION>"
                      "</meanElements></data></segment></body></omm>")
        << 1 << "A & B"
        << "15.5";
    QTest::newRow("XML with a namespace prefix") << QByteArray(
        "<n:ndm xmlns:n=\"urn:x\"><n:omm><n:OBJECT_NAME>X</n:OBJECT_NAME>"
        "</n:omm><n:omm><n:OBJECT_NAME>Y</n:OBJECT_NAME><n:MEAN_MOTION>2"
        "</n:MEAN_MOTION></n:omm></n:ndm>") << 2 << "X"
                                                 << "(none)";
    QTest::newRow("CSV, quoted name, CR LF, columns in any order") << QByteArray(
        "MEAN_MOTION,OBJECT_NAME,NORAD_CAT_ID\r\n15.5,\"A, \"\"B\"\"\",1\r\n\r\n"
        "16,C,2\r\n") << 2 << "A, \"B\""
                                                                   << "15.5";
    QTest::newRow("JSON numbers and strings")
        << QByteArray("[{\"OBJECT_NAME\": \"A\", \"MEAN_MOTION\": 15.5}, "
                      "{\"OBJECT_NAME\": \"B\", \"MEAN_MOTION\": \"16\"}]")
        << 2 << "A"
        << "15.5";
    QTest::newRow("JSON whole number")
        << QByteArray("{\"OBJECT_NAME\": \"A\", \"MEAN_MOTION\": 100000}") << 1 << "A"
        << "100000";
    QTest::newRow("JSON shortest text")
        << QByteArray("{\"OBJECT_NAME\": \"A\", \"MEAN_MOTION\": 0.00019085}") << 1 << "A"
        << "0.00019085";
    QTest::newRow("JSON null is no value")
        << QByteArray("{\"OBJECT_NAME\": \"A\", \"MEAN_MOTION\": null}") << 1 << "A"
        << "(none)";
    QTest::newRow("KVN, units, comments, two messages")
        << QByteArray("CCSDS_OMM_VERS = 2.0\nCOMMENT one\nOBJECT_NAME = IRIDIUM 73 [-]\n"
                      "MEAN_MOTION = 14.3 [rev/day]\n\nCCSDS_OMM_VERS = 2.0\nOBJECT_NAME = B\n")
        << 2 << "IRIDIUM 73 [-]"
        << "14.3";
    QTest::newRow("KVN, a keyword again starts a record")
        << QByteArray("OBJECT_NAME = A\r\nMEAN_MOTION = 1\r\nOBJECT_NAME = B\r\n") << 2 << "A"
        << "1";
}

void TestOmmReader::recordsKeepTheirValues()
{
    QFETCH(QByteArray, content);
    QFETCH(int, count);
    QFETCH(QString, name);
    QFETCH(QString, motion);
    std::vector<TLEComposer::Fields> records;
    std::string error;
    QVERIFY2(OmmReader::read(content, records, error), error.c_str());
    QCOMPARE(int(records.size()), count);
    QCOMPARE(_value(records, 0, "OBJECT_NAME"), name);
    QCOMPARE(_value(records, 0, "MEAN_MOTION"), motion);
}

void TestOmmReader::csvSetsAreThoseOfItsRecords_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("refused");
    QByteArray const withName = QByteArray(_iss).replace("ISS (ZARYA)", "\"ISS, \"\"A\"\"\"");
    QTest::newRow("one row") << _header + "\n" + _iss + "\n" << 0;
    QTest::newRow("quoted name, CR LF, blank lines")
        << _header + "\r\n" + withName + "\r\n\r\n" + _iss << 0;
    QTest::newRow("quoted cells past the first commas") << _header + "\n"
            + QByteArray(_iss).replace("15.66405366", "\"15.66405366\"").replace(",0.0", ",\"0.0\"")
                                                        << 0;
    QTest::newRow("the first of a repeated column counts") << _header + ",OBJECT_NAME\n" + _iss
            + ",OTHER\n" << 0;
    QTest::newRow("blanks around values")
        << _header + "\n" + QByteArray(_iss).replace(",15.66405366,", ", 15.66405366 ,") << 0;
    QTest::newRow("exponent and long decimals") << _header + "\n"
            + QByteArray(_iss)
                  .replace("0.00019085", "1.9085e-4")
                  .replace("51.6297", "51.62970000000000001")
                                                << 0;
    QTest::newRow("a refused row beside a converted one")
        << _header + "\n" + QByteArray(_iss).replace("25544", "340000") + "\n" + _iss << 1;
    QTest::newRow("a keyword without its column") << QByteArray(_header).replace(",BSTAR", "")
            + "\n" + QByteArray(_iss).replace(",0.00019085", "")
                                                  << 1;
    // Rows are read eight bytes at a time: commas and quotes in every place of a word.
    for (int width = 1; width <= 17; ++width) {
        QByteArray const name = QByteArray(width, 'N');
        QTest::newRow(qPrintable(QStringLiteral("a name of %1 bytes, empty cells behind").arg(width)))
            << _header + ",A,B,C\n" + QByteArray(_iss).replace("ISS (ZARYA)", name) + ",,,\n"
            << 0;
        QTest::newRow(qPrintable(QStringLiteral("a quote behind %1 bytes").arg(width)))
            << _header + "\n" + QByteArray(_iss).replace("ISS (ZARYA)", name + "\"x,\"\"\"")
            << 0;
    }
}

void TestOmmReader::csvSetsAreThoseOfItsRecords()
{
    QFETCH(QByteArray, content);
    QFETCH(int, refused);
    std::vector<TLEComposer::Fields> records;
    std::string error;
    QVERIFY2(OmmReader::read(content, records, error), error.c_str());
    QStringList const expected = _composed(records);

    std::string text;
    std::size_t sets = 0;
    std::vector<std::string> refusals;
    QVERIFY2(OmmReader::convert(content, text, sets, refusals, error), error.c_str());
    QStringList converted = QString::fromStdString(text).split(QStringLiteral("\n\n"));
    converted.removeAll(QString());
    QCOMPARE(int(sets), converted.size());
    for (std::string const &refusal : refusals)
        converted << "refused: "
                + QString::fromStdString(refusal.substr(refusal.find(" is refused: ") + 13));
    QStringList sorted = expected;
    sorted.sort();
    converted.sort();
    QCOMPARE(converted, sorted);
    QCOMPARE(int(refusals.size()), refused);
}

void TestOmmReader::malformedCsvRowLeavesNothingBehind_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("too few cells") << QByteArray("1,2")
                                   << QByteArray("malformed CSV: line 4 has 2 cells, the header 17");
    QTest::newRow("too many cells")
        << _iss + ",1" << QByteArray("malformed CSV: line 4 has 18 cells, the header 17");
    QTest::newRow("too many cells, one quoted")
        << _iss + ",\"1,2\"" << QByteArray("malformed CSV: line 4 has 18 cells, the header 17");
}

void TestOmmReader::malformedCsvRowLeavesNothingBehind()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, message);
    QByteArray const content = _header + "\n" + _iss + "\n"
        + QByteArray(_iss).replace("25544", "340000") + "\n" + row + "\n";
    std::string text = "earlier sets";
    std::size_t sets = 1;
    std::vector<std::string> refusals;
    std::string error;
    QVERIFY(!OmmReader::convert(content, text, sets, refusals, error));
    QCOMPARE(text, std::string("earlier sets"));
    QCOMPARE(sets, std::size_t(1));
    QVERIFY(refusals.empty());
    QCOMPARE(error, message.toStdString());
}

QTEST_APPLESS_MAIN(TestOmmReader)
#include "tst_ommreader.moc"
