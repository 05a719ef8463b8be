// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// TLE lines written from the keywords of an OMM record, field by field.
#include "tle/tlecomposer.h"

#include "tlelines.h"

#include <QtTest>

#include <charconv>

namespace {

// The ISS set of the test data as an OMM record.
TLEComposer::Fields _iss()
{
    return { { "OBJECT_NAME", "ISS (ZARYA)" }, { "OBJECT_ID", "1998-067A" },
        { "EPOCH", "2004-01-05T12:28:09.630623" }, { "MEAN_MOTION", "15.66405366" },
        { "ECCENTRICITY", "0.0006431" }, { "INCLINATION", "51.6297" },
        { "RA_OF_ASC_NODE", "78.4979" }, { "ARG_OF_PERICENTER", "344.6528" },
        { "MEAN_ANOMALY", "119.5204" }, { "EPHEMERIS_TYPE", "0" }, { "CLASSIFICATION_TYPE", "U" },
        { "NORAD_CAT_ID", "25544" }, { "ELEMENT_SET_NO", "970" }, { "REV_AT_EPOCH", "29264" },
        { "BSTAR", "0.00019085" }, { "MEAN_MOTION_DOT", "0.00019728" },
        { "MEAN_MOTION_DDOT", "0.0" } };
}

using Field = bool (*)(double, std::string &);

} // namespace

Q_DECLARE_METATYPE(Field)

class TestTleComposer : public QObject
{
    Q_OBJECT

private slots:
    void decimalsAreReadAsFromCharsReadsThem_data();
    void decimalsAreReadAsFromCharsReadsThem();
    void epochIsRoundedToTheNearestAndCarried_data();
    void epochIsRoundedToTheNearestAndCarried();
    void epochOutsideTheTwoDigitYearsIsRefused_data();
    void epochOutsideTheTwoDigitYearsIsRefused();
    void designatorDropsTheCentury_data();
    void designatorDropsTheCentury();
    void numbersTakeTheirNotation_data();
    void numbersTakeTheirNotation();
    void numbersThatDontFitAreRefused_data();
    void numbersThatDontFitAreRefused();
    void wholeNumbersAreRightAligned_data();
    void wholeNumbersAreRightAligned();
    void recordGivesBackTheCatalogSet();
    void setsBeyondFiveDigitsTakeAlpha5();
    void edgeValuesGiveWellFormedLines_data();
    void edgeValuesGiveWellFormedLines();
    void recordIsRefusedWithItsReason_data();
    void recordIsRefusedWithItsReason();
    void setsGoIntoOneTextAsTheListWritesThem();
};

void TestTleComposer::epochIsRoundedToTheNearestAndCarried_data()
{
    QTest::addColumn<QString>("epoch");
    QTest::addColumn<QString>("field");
    QTest::newRow("exporter's microseconds") << "2004-01-05T12:28:09.630623"
                                             << "04005.51955591";
    QTest::newRow("day of year form") << "2004-005T12:28:09.630623"
                                      << "04005.51955591";
    QTest::newRow("zone letter") << "2004-01-05T12:28:09.630623Z"
                                 << "04005.51955591";
    QTest::newRow("whole seconds") << "1957-10-04T19:28:34"
                                   << "57277.81150463";
    QTest::newRow("rounds down") << "2018-01-20T00:00:00.000431"
                                 << "18020.00000000";
    QTest::newRow("rounds up") << "2018-01-20T00:00:00.000432"
                               << "18020.00000001";
    QTest::newRow("into the next day") << "2018-01-20T23:59:59.9999"
                                       << "18021.00000000";
    QTest::newRow("into the next year") << "2018-12-31T23:59:59.9999"
                                        << "19001.00000000";
    QTest::newRow("last day of a leap year") << "2020-12-31T12:00:00"
                                             << "20366.50000000";
    QTest::newRow("into 2000") << "1999-12-31T23:59:59.99999"
                               << "00001.00000000";
    QTest::newRow("last year") << "2056-12-31T23:59:59"
                               << "56366.99998843";
}

void TestTleComposer::epochIsRoundedToTheNearestAndCarried()
{
    QFETCH(QString, epoch);
    QFETCH(QString, field);
    std::string written;
    QVERIFY(TLEComposer::epochField(epoch.toStdString(), written));
    QCOMPARE(QString::fromStdString(written), field);
}

void TestTleComposer::epochOutsideTheTwoDigitYearsIsRefused_data()
{
    QTest::addColumn<QString>("epoch");
    QTest::newRow("before 1957") << "1956-12-31T23:59:59";
    QTest::newRow("carried past 2056") << "2056-12-31T23:59:59.9999";
    QTest::newRow("no time") << "2018-01-20";
    QTest::newRow("30 February") << "2018-02-30T00:00:00";
    QTest::newRow("day 366 of a common year") << "2018-366T00:00:00";
    QTest::newRow("hour 24") << "2018-01-20T24:00:00";
    QTest::newRow("words") << "yesterday";
}

void TestTleComposer::epochOutsideTheTwoDigitYearsIsRefused()
{
    QFETCH(QString, epoch);
    std::string field = "kept";
    QVERIFY(!TLEComposer::epochField(epoch.toStdString(), field));
    QCOMPARE(field, std::string("kept"));
}

void TestTleComposer::designatorDropsTheCentury_data()
{
    QTest::addColumn<QString>("objectId");
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("written");
    QTest::newRow("one letter") << "1998-067A"
                                << "98067A  " << true;
    QTest::newRow("two letters") << "1985-108AA"
                                 << "85108AA " << true;
    QTest::newRow("three letters") << "2023-001ABC"
                                   << "23001ABC" << true;
    QTest::newRow("none") << ""
                          << "        " << true;
    QTest::newRow("already short") << "98067A"
                                   << "" << false;
    QTest::newRow("two-digit launch") << "1998-67A"
                                      << "" << false;
    QTest::newRow("lower case") << "1998-067a"
                                << "" << false;
    QTest::newRow("four letters") << "1998-067ABCD"
                                  << "" << false;
}

void TestTleComposer::designatorDropsTheCentury()
{
    QFETCH(QString, objectId);
    QFETCH(QString, field);
    QFETCH(bool, written);
    std::string result;
    QCOMPARE(TLEComposer::designatorField(objectId.toStdString(), result), written);
    QCOMPARE(QString::fromStdString(result), field);
}

void TestTleComposer::numbersTakeTheirNotation_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    Field const rate = TLEComposer::rateField;
    Field const exponent = TLEComposer::exponentField;
    Field const angle = TLEComposer::angleField;
    Field const eccentricity = TLEComposer::eccentricityField;
    Field const motion = TLEComposer::meanMotionField;
    QTest::newRow("rate") << rate << 0.00002078 << " .00002078";
    QTest::newRow("rate negative") << rate << -0.00000036 << "-.00000036";
    QTest::newRow("rate zero") << rate << 0.0 << " .00000000";
    QTest::newRow("rate negative zero") << rate << -0.0 << "-.00000000";
    QTest::newRow("exponent zero") << exponent << 0.0 << " 00000-0";
    QTest::newRow("exponent") << exponent << 3.855e-5 << " 38550-4";
    QTest::newRow("exponent negative") << exponent << -1.1606e-5 << "-11606-4";
    QTest::newRow("exponent of zero") << exponent << 0.5 << " 50000+0";
    QTest::newRow("exponent positive") << exponent << 1234.5 << " 12345+4";
    QTest::newRow("exponent carried") << exponent << 9.99996e-5 << " 10000-3";
    QTest::newRow("exponent smallest") << exponent << 1.2345e-10 << " 12345-9";
    QTest::newRow("angle") << angle << 51.6297 << " 51.6297";
    QTest::newRow("angle zero") << angle << 0.0 << "  0.0000";
    QTest::newRow("angle rounded up") << angle << 359.99999 << "360.0000";
    QTest::newRow("eccentricity") << eccentricity << 0.0006431 << "0006431";
    QTest::newRow("eccentricity zero") << eccentricity << 0.0 << "0000000";
    QTest::newRow("eccentricity highest") << eccentricity << 0.9999999 << "9999999";
    QTest::newRow("mean motion") << motion << 15.66405366 << "15.66405366";
    QTest::newRow("mean motion above 16") << motion << 16.5 << "16.50000000";
    QTest::newRow("mean motion geostationary") << motion << 1.00273791 << " 1.00273791";
}

void TestTleComposer::numbersTakeTheirNotation()
{
    QFETCH(Field, field);
    QFETCH(double, value);
    QFETCH(QString, text);
    std::string written;
    QVERIFY(field(value, written));
    QCOMPARE(QString::fromStdString(written), text);
}

void TestTleComposer::numbersThatDontFitAreRefused_data()
{
    QTest::addColumn<Field>("field");
    QTest::addColumn<double>("value");
    QTest::newRow("rate rounded to one") << Field(TLEComposer::rateField) << 0.999999999;
    QTest::newRow("rate above one") << Field(TLEComposer::rateField) << -1.5;
    QTest::newRow("exponent too small") << Field(TLEComposer::exponentField) << 1.2345e-11;
    QTest::newRow("exponent too large") << Field(TLEComposer::exponentField) << 1.5e9;
    QTest::newRow("angle negative") << Field(TLEComposer::angleField) << -1.0;
    QTest::newRow("angle of four digits") << Field(TLEComposer::angleField) << 1000.0;
    QTest::newRow("eccentricity rounded to one")
        << Field(TLEComposer::eccentricityField) << 0.99999996;
    QTest::newRow("eccentricity negative") << Field(TLEComposer::eccentricityField) << -0.1;
    QTest::newRow("mean motion of 100") << Field(TLEComposer::meanMotionField) << 100.0;
    QTest::newRow("not a number") << Field(TLEComposer::angleField) << qQNaN();
}

void TestTleComposer::numbersThatDontFitAreRefused()
{
    QFETCH(Field, field);
    QFETCH(double, value);
    std::string written = "kept";
    QVERIFY(!field(value, written));
    QCOMPARE(written, std::string("kept"));
}

void TestTleComposer::wholeNumbersAreRightAligned_data()
{
    QTest::addColumn<long>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("written");
    QTest::newRow("element set") << 999L << 4 << " 999" << true;
    QTest::newRow("element set full") << 9999L << 4 << "9999" << true;
    QTest::newRow("element set too large") << 10000L << 4 << "" << false;
    QTest::newRow("revolution") << 9015L << 5 << " 9015" << true;
    QTest::newRow("negative") << -1L << 5 << "" << false;
}

void TestTleComposer::wholeNumbersAreRightAligned()
{
    QFETCH(long, value);
    QFETCH(int, width);
    QFETCH(QString, text);
    QFETCH(bool, written);
    std::string result;
    QCOMPARE(TLEComposer::integerField(value, width, result), written);
    QCOMPARE(QString::fromStdString(result), text);
}

void TestTleComposer::recordGivesBackTheCatalogSet()
{
    CheckerTLE::TLE tle;
    std::string reason;
    QVERIFY(TLEComposer::compose(_iss(), tle, reason));
    QCOMPARE(tle.line0, TleLines::issName);
    QCOMPARE(tle.line1, TleLines::issLine1);
    QCOMPARE(tle.line2, TleLines::issLine2);
}

void TestTleComposer::setsBeyondFiveDigitsTakeAlpha5()
{
    TLEComposer::Fields fields = _iss();
    fields["NORAD_CAT_ID"] = "100000";
    CheckerTLE::TLE tle;
    std::string reason;
    QVERIFY(TLEComposer::compose(fields, tle, reason));
    QCOMPARE(tle.line1, TleLines::withField(TleLines::issLine1, 2, "A0000"));
    QCOMPARE(tle.line2, TleLines::withField(TleLines::issLine2, 2, "A0000"));
}

void TestTleComposer::edgeValuesGiveWellFormedLines_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("field");
    QTest::newRow("BSTAR zero") << "BSTAR"
                                << "0" << 1 << 53 << " 00000-0";
    QTest::newRow("BSTAR negative") << "BSTAR"
                                    << "-0.000011606" << 1 << 53 << "-11606-4";
    QTest::newRow("BSTAR in exponent notation") << "BSTAR"
                                                << "3.855E-5" << 1 << 53 << " 38550-4";
    QTest::newRow("second derivative") << "MEAN_MOTION_DDOT"
                                       << "1.2345e-7" << 1 << 44 << " 12345-6";
    QTest::newRow("day fraction rounds into the next day")
        << "EPOCH"
        << "2004-01-05T23:59:59.9996" << 1 << 18 << "04006.00000000";
    QTest::newRow("last day of the year")
        << "EPOCH"
        << "2004-12-31T23:59:59.9999" << 1 << 18 << "05001.00000000";
    QTest::newRow("eccentricity 0.9999999") << "ECCENTRICITY"
                                            << "0.9999999" << 2 << 26 << "9999999";
    QTest::newRow("mean motion above 16") << "MEAN_MOTION"
                                          << "16.12345678" << 2 << 52 << "16.12345678";
    QTest::newRow("classification") << "CLASSIFICATION_TYPE"
                                    << "S" << 1 << 7 << "S";
    QTest::newRow("number with plus") << "INCLINATION"
                                      << "+51.6297" << 2 << 8 << " 51.6297";
}

void TestTleComposer::edgeValuesGiveWellFormedLines()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(int, line);
    QFETCH(int, index);
    QFETCH(QString, field);
    TLEComposer::Fields fields = _iss();
    fields[key.toStdString()] = value.toStdString();
    CheckerTLE::TLE tle;
    std::string reason;
    QVERIFY2(TLEComposer::compose(fields, tle, reason), reason.c_str());
    std::string const &written = line == 1 ? tle.line1 : tle.line2;
    std::string const &original = line == 1 ? TleLines::issLine1 : TleLines::issLine2;
    // Only the field changes, and the check digit follows it.
    QCOMPARE(written, TleLines::withField(original, std::size_t(index), field.toStdString()));
}

void TestTleComposer::recordIsRefusedWithItsReason_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("reason");
    QString const gone; // the keyword is taken away
    QTest::newRow("catalog number too large")
        << "NORAD_CAT_ID"
        << "340000"
        << "NORAD_CAT_ID 340000 is above 339999, the last number of the Alpha-5 form";
    QTest::newRow("catalog number negative") << "NORAD_CAT_ID"
                                             << "-5"
                                             << "NORAD_CAT_ID -5 is negative";
    QTest::newRow("catalog number missing") << "NORAD_CAT_ID" << gone << "has no NORAD_CAT_ID";
    QTest::newRow("catalog number not whole") << "NORAD_CAT_ID"
                                              << "25544.5"
                                              << "NORAD_CAT_ID \"25544.5\" is not a whole number";
    QTest::newRow("mean motion missing") << "MEAN_MOTION" << gone << "has no MEAN_MOTION";
    QTest::newRow("eccentricity unreadable") << "ECCENTRICITY"
                                             << "abc"
                                             << "ECCENTRICITY \"abc\" is not a number";
    QTest::newRow("decimal comma") << "INCLINATION"
                                   << "51,6297"
                                   << "INCLINATION \"51,6297\" is not a number";
    QTest::newRow("mean motion too large") << "MEAN_MOTION"
                                           << "123.4"
                                           << "MEAN_MOTION 123.4 does not fit its columns";
    QTest::newRow("eccentricity of one") << "ECCENTRICITY"
                                         << "1.0"
                                         << "ECCENTRICITY 1.0 does not fit its columns";
    QTest::newRow("BSTAR too small") << "BSTAR"
                                     << "1e-12"
                                     << "BSTAR 1e-12 does not fit its columns";
    QTest::newRow("epoch unreadable") << "EPOCH"
                                      << "2004-13-05T00:00:00"
                                      << "EPOCH 2004-13-05T00:00:00 does not fit its columns";
    QTest::newRow("designator unreadable") << "OBJECT_ID"
                                           << "ISS"
                                           << "OBJECT_ID ISS does not fit its columns";
    QTest::newRow("element set number too large")
        << "ELEMENT_SET_NO"
        << "10000"
        << "ELEMENT_SET_NO 10000 does not fit its columns";
    QTest::newRow("revolution number too large") << "REV_AT_EPOCH"
                                                 << "100000"
                                                 << "REV_AT_EPOCH 100000 does not fit its columns";
    QTest::newRow("ephemeris type of two digits") << "EPHEMERIS_TYPE"
                                                  << "10"
                                                  << "EPHEMERIS_TYPE 10 does not fit its column";
    QTest::newRow("classification of a word") << "CLASSIFICATION_TYPE"
                                              << "UN"
                                              << "CLASSIFICATION_TYPE \"UN\" is not one letter";
    QTest::newRow("name missing") << "OBJECT_NAME" << gone << "has no OBJECT_NAME";
    QTest::newRow("name too long") << "OBJECT_NAME" << QString(69, QLatin1Char('N'))
                                   << "OBJECT_NAME has 69 bytes; a name line holds 68 at most";
}

void TestTleComposer::recordIsRefusedWithItsReason()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, reason);
    TLEComposer::Fields fields = _iss();
    if (value.isNull())
        fields.erase(key.toStdString());
    else
        fields[key.toStdString()] = value.toStdString();
    CheckerTLE::TLE tle { "kept", "", "" };
    std::string told;
    QVERIFY(!TLEComposer::compose(fields, tle, told));
    QCOMPARE(QString::fromStdString(told), reason);
    QCOMPARE(tle.line0, std::string("kept"));
}

void TestTleComposer::decimalsAreReadAsFromCharsReadsThem_data()
{
    // A text that already has the field's decimals is copied as it stands;
    // every spelling must give what its number gives through the field.
    QTest::addColumn<QByteArray>("keyword");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<Field>("field");
    auto const motion = [](char const *name, char const *text) {
        QTest::newRow(name) << QByteArray("MEAN_MOTION") << QByteArray(text) << 2 << 52
                            << Field(&TLEComposer::meanMotionField);
    };
    motion("catalog spelling", "15.66405366");
    motion("a tie at the eighth decimal", "15.123456785");
    motion("a tie that the double rounds up", "0.000000005");
    motion("point first", ".5");
    motion("point last", "5.");
    motion("whole number", "16");
    motion("fifteen digits", "1.23456789012345");
    motion("sixteen digits", "1.234567890123455");
    motion("zeros in front", "0000015.50000000");
    motion("exponent", "1.55e1");
    motion("plus sign", "+15.5");
    motion("mean motion below one", "0.99999999");
    motion("mean motion too wide", "123.00000000");
    motion("negative mean motion", "-15.66405366");
    auto const angle = [](char const *name, char const *keyword, int column, char const *text) {
        QTest::newRow(name) << QByteArray(keyword) << QByteArray(text) << 2 << column
                            << Field(&TLEComposer::angleField);
    };
    angle("inclination as written", "INCLINATION", 8, "51.6297");
    angle("inclination with a zero in front", "INCLINATION", 8, "051.6297");
    angle("inclination with a fifth decimal", "INCLINATION", 8, "51.62975");
    angle("inclination of zero", "INCLINATION", 8, "0.0000");
    angle("inclination of minus zero", "INCLINATION", 8, "-0.0000");
    angle("negative inclination", "INCLINATION", 8, "-51.6297");
    angle("node as written", "RA_OF_ASC_NODE", 17, "359.9999");
    angle("node too wide", "RA_OF_ASC_NODE", 17, "1359.9999");
    angle("perigee as written", "ARG_OF_PERICENTER", 34, "344.6528");
    angle("perigee with a plus sign", "ARG_OF_PERICENTER", 34, "+344.6528");
    angle("anomaly as written", "MEAN_ANOMALY", 43, "119.5204");
    angle("anomaly as an exponent", "MEAN_ANOMALY", 43, "1.195204e2");
    auto const eccentricity = [](char const *name, char const *text) {
        QTest::newRow(name) << QByteArray("ECCENTRICITY") << QByteArray(text) << 2 << 26
                            << Field(&TLEComposer::eccentricityField);
    };
    eccentricity("eccentricity as written", "0.0006431");
    eccentricity("eccentricity near one", "0.9999999");
    eccentricity("eccentricity of one", "1.0000000");
    eccentricity("eccentricity with the point first", ".0006431");
    eccentricity("eccentricity with two zeros in front", "00.0006431");
    auto const rate = [](char const *name, char const *text) {
        QTest::newRow(name) << QByteArray("MEAN_MOTION_DOT") << QByteArray(text) << 1 << 33
                            << Field(&TLEComposer::rateField);
    };
    rate("rate as written", "0.00019728");
    rate("negative rate as written", "-0.00000036");
    rate("rate of minus zero", "-0.00000000");
    rate("rate with the point first", "-.00000036");
    rate("rate of one", "1.00000000");
    rate("rate as an exponent", "1.9728e-4");
}

void TestTleComposer::decimalsAreReadAsFromCharsReadsThem()
{
    QFETCH(QByteArray, keyword);
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(Field, field);
    std::string const value = text.toStdString();
    double number = 0.0;
    std::size_t const start = value[0] == '+' ? 1 : 0;
    std::from_chars(value.data() + start, value.data() + value.size(), number);
    std::string expected;
    bool const fits = field(number, expected);

    TLEComposer::Fields fields = _iss();
    fields[keyword.toStdString()] = value;
    CheckerTLE::TLE tle;
    std::string reason;
    QCOMPARE(TLEComposer::compose(fields, tle, reason), fits);
    if (fits)
        QCOMPARE((line == 1 ? tle.line1 : tle.line2).substr(column, expected.size()), expected);
    else
        QCOMPARE(reason, keyword.toStdString() + " " + value + " does not fit its columns");
}

void TestTleComposer::setsGoIntoOneTextAsTheListWritesThem()
{
    TLEComposer::Fields unnamed = _iss();
    unnamed["OBJECT_NAME"] = "";
    TLEComposer::Fields refused = _iss();
    refused["NORAD_CAT_ID"] = "340000";
    TLEComposer::Fields alpha5 = _iss();
    alpha5["NORAD_CAT_ID"] = "100000";
    std::vector<CheckerTLE::TLE> sets;
    std::string text;
    for (TLEComposer::Fields const &fields : { _iss(), unnamed, refused, alpha5 }) {
        CheckerTLE::TLE tle;
        std::string reason;
        std::string const before = text;
        bool const composed = TLEComposer::compose(fields, tle, reason);
        QCOMPARE(TLEComposer::appendSet(TLEComposer::values(fields), text, reason), composed);
        if (composed)
            sets.push_back(tle);
        else
            QCOMPARE(text, before);
    }
    QCOMPARE(sets.size(), std::size_t(3));
    std::vector<std::string> messages;
    std::string written;
    CheckerTLE::TLEs2text(messages, written, sets, false);
    QCOMPARE(text, written);
}

QTEST_APPLESS_MAIN(TestTleComposer)
#include "tst_tlecomposer.moc"
