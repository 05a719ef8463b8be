// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The keywords of one OMM record.
#include "tle/ommfields.h"

#include <QtTest>

class TestOmmFields : public QObject
{
    Q_OBJECT

private slots:
    void missingKeywordIsNull();
    void indexAddsOnceAndThenFinds();
    void firstOfRepeatedKeywordsIsFound();
    void eraseTakesTheKeywordAway();
};

void TestOmmFields::missingKeywordIsNull()
{
    OmmFields const fields { { "EPOCH", "2026-01-01T00:00:00" } };
    QVERIFY(!fields.find("EPOCH_"));
    QVERIFY(!fields.contains("epoch"));
    QCOMPARE(*fields.find("EPOCH"), std::string("2026-01-01T00:00:00"));
}

void TestOmmFields::indexAddsOnceAndThenFinds()
{
    OmmFields fields;
    fields["OBJECT_NAME"] += "A &";
    fields["OBJECT_NAME"] += " B";
    QCOMPARE(*fields.find("OBJECT_NAME"), std::string("A & B"));
    fields["NORAD_CAT_ID"] = "1";
    QCOMPARE(*fields.find("OBJECT_NAME"), std::string("A & B"));
    QCOMPARE(*fields.find("NORAD_CAT_ID"), std::string("1"));
}

void TestOmmFields::firstOfRepeatedKeywordsIsFound()
{
    // append doesn't look, as a CSV header or a JSON object has each keyword once.
    OmmFields fields;
    fields.append("BSTAR", "1");
    fields.append("BSTAR", "2");
    QCOMPARE(*fields.find("BSTAR"), std::string("1"));
}

void TestOmmFields::eraseTakesTheKeywordAway()
{
    OmmFields fields { { "A", "1" }, { "B", "2" }, { "A", "3" } };
    fields.erase("A");
    QVERIFY(!fields.contains("A"));
    QCOMPARE(*fields.find("B"), std::string("2"));
}

QTEST_APPLESS_MAIN(TestOmmFields)
#include "tst_ommfields.moc"
