// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// What the schema reader records for a leaf besides its type: the facets of
// its restriction and the presentation record of its annotation.

#include "schemafixture.h"

#include <QtTest>

using namespace enginefixture;

class TestSchemaRecords : public QObject, private SchemaFiles
{
    Q_OBJECT

private slots:
    void facetKindFollowsWhatWasMet_data();
    void facetKindFollowsWhatWasMet();
    void enumerationWithBoundsKeepsBounds();
    void minInclusiveAloneKeepsDefaultMaximum();
    void repeatedBoundOverwritesEarlier();
    void simpleTypeWithoutRestrictionGivesStringWithoutFacets();
    void nullRestrictionGivesDefaultFacets();

    void annotationFieldsAreRead();
    void emptyServicesMeansAllServices();
    void servicesAreReadInOrderWhateverTheirTag();
    void importanceWordGivesZero();
    void presentElementReplacesDefault_data();
    void presentElementReplacesDefault();
    void documentationWithoutAppinfoSetsDocumentationAndSource();
    void nullAnnotationGivesDefaultRecord();
    void rootAnnotationHasNoEffect();
};

// ---------------------------------------------------------------- facets

void TestSchemaRecords::facetKindFollowsWhatWasMet_data()
{
    QTest::addColumn<QByteArray>("base");
    QTest::addColumn<QByteArray>("facets");
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("minValue");
    QTest::addColumn<double>("maxValue");
    QTest::addColumn<QStringList>("enumeration");
    QTest::newRow("none") << QByteArray("xs:integer") << QByteArray() << int(ParameterSimple::FasetNone)
                          << -9999999.9 << 9999999.9 << QStringList();
    QTest::newRow("range") << QByteArray("xs:integer")
                           << QByteArray("<xs:minInclusive value=\"-3\"/><xs:maxInclusive value=\"12\"/>")
                           << int(ParameterSimple::FasetRange) << -3.0 << 12.0 << QStringList();
    QTest::newRow("maximum alone") << QByteArray("xs:decimal")
                                   << QByteArray("<xs:maxInclusive value=\"2.5\"/>")
                                   << int(ParameterSimple::FasetRange) << -9999999.9 << 2.5 << QStringList();
    QTest::newRow("enumeration") << QByteArray("xs:string")
                                 << QByteArray("<xs:enumeration value=\"b\"/><xs:enumeration value=\"a\"/>"
                                               "<xs:enumeration value=\"\"/>")
                                 << int(ParameterSimple::FasetEnumeration) << -9999999.9 << 9999999.9
                                 << QStringList({"b", "a", ""});
    QTest::newRow("other facets ignored")
        << QByteArray("xs:string")
        << QByteArray("<xs:minLength value=\"2\"/><xs:maxLength value=\"8\"/><xs:pattern value=\"[a-z]*\"/>")
        << int(ParameterSimple::FasetNone) << -9999999.9 << 9999999.9 << QStringList();
    QTest::newRow("bounds with a fraction")
        << QByteArray("xs:double")
        << QByteArray("<xs:minInclusive value=\"0.5\"/>"
                      "<xs:maxInclusive value=\"1e3\"/>")
        << int(ParameterSimple::FasetRange) << 0.5 << 1000.0 << QStringList();
}

void TestSchemaRecords::facetKindFollowsWhatWasMet()
{
    QFETCH(QByteArray, base);
    QFETCH(QByteArray, facets);
    QFETCH(int, kind);
    QFETCH(double, minValue);
    QFETCH(double, maxValue);
    QFETCH(QStringList, enumeration);
    Loaded const loaded = _load(schema(leaf("a", base, facets)));
    QCOMPARE(loaded.status, 0);
    ParameterSimple::Fasets const f = simple(loaded.root.get(), {"a"})->getFasets();
    QCOMPARE(f.kind, kind);
    QCOMPARE(f.minValue, minValue);
    QCOMPARE(f.maxValue, maxValue);
    QStringList read;
    for (std::string const &e : f.enumeration)
        read << QString::fromStdString(e);
    QCOMPARE(read, enumeration);
}

void TestSchemaRecords::enumerationWithBoundsKeepsBounds()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:integer",
                                            "<xs:minInclusive value=\"0\"/><xs:maxInclusive value=\"50\"/>"
                                            "<xs:enumeration value=\"1\"/><xs:enumeration value=\"30\"/>")));
    QCOMPARE(loaded.status, 0);
    ParameterSimple::Fasets const f = simple(loaded.root.get(), {"a"})->getFasets();
    QCOMPARE(f.kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(f.minValue, 0.0);
    QCOMPARE(f.maxValue, 50.0);
    QCOMPARE(f.enumeration, Lines({"1", "30"}));
}

void TestSchemaRecords::minInclusiveAloneKeepsDefaultMaximum()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:decimal", "<xs:minInclusive value=\"0.25\"/>")));
    QCOMPARE(loaded.status, 0);
    ParameterSimple::Fasets const f = simple(loaded.root.get(), {"a"})->getFasets();
    QCOMPARE(f.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(f.minValue, 0.25);
    QCOMPARE(f.maxValue, 9999999.9);
}

void TestSchemaRecords::repeatedBoundOverwritesEarlier()
{
    // A repeated facet is not valid XML Schema, so the restriction is read directly.
    ParameterSimple::Fasets const f = OrvexConfigLib::_parseRestriction(firstElement(
        "<xs:restriction base=\"xs:integer\"><xs:minInclusive value=\"1\"/><xs:maxInclusive value=\"9\"/>"
        "<xs:minInclusive value=\"4\"/><xs:maxInclusive value=\"abc\"/></xs:restriction>"));
    QCOMPARE(f.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(f.minValue, 4.0);
    // A bound that isn't a number reads as 0.
    QCOMPARE(f.maxValue, 0.0);
}

void TestSchemaRecords::simpleTypeWithoutRestrictionGivesStringWithoutFacets()
{
    Loaded const loaded =
        _load(schema("<xs:element name=\"a\"><xs:simpleType><xs:list itemType=\"xs:integer\"/>"
                     "</xs:simpleType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    ParameterSimple *a = simple(loaded.root.get(), {"a"});
    QVERIFY(a);
    QCOMPARE(a->getSimpleType(), ParameterSimple::String);
    QCOMPARE(a->getFasets().kind, int(ParameterSimple::FasetNone));
    QVERIFY(a->getFasets().enumeration.empty());
}

void TestSchemaRecords::nullRestrictionGivesDefaultFacets()
{
    ParameterSimple::Fasets const f = OrvexConfigLib::_parseRestriction(QDomElement());
    QCOMPARE(f.kind, int(ParameterSimple::FasetNone));
    QCOMPARE(f.minValue, -9999999.9);
    QCOMPARE(f.maxValue, 9999999.9);
    QVERIFY(f.enumeration.empty());
}

// ------------------------------------------------------------ annotation

void TestSchemaRecords::annotationFieldsAreRead()
{
    QByteArray const annotation =
        "<xs:annotation><xs:documentation source=\"doc/a.html\">Antenna gain in decibels.</xs:documentation>"
        "<xs:appinfo><name_en>Gain</name_en><dimension>dB</dimension><importance>1</importance>"
        "<isvisible>true</isvisible><services><s>tracking</s><s>survey</s></services><other>x</other>"
        "</xs:appinfo></xs:annotation>";
    Loaded const loaded = _load(schema(leaf("a", "xs:decimal", QByteArray(), annotation)));
    QCOMPARE(loaded.status, 0);
    Parameter::VisualParams const v = at(loaded.root.get(), {"a"})->getVisualParams();
    QCOMPARE(v.name_en, std::string("Gain"));
    QCOMPARE(v.dimension, std::string("dB"));
    QCOMPARE(v.documentation, std::string("Antenna gain in decibels."));
    QCOMPARE(v.source, std::string("doc/a.html"));
    QCOMPARE(v.importance, 1);
    QVERIFY(v.isvisible);
    QCOMPARE(v.services, Lines({"tracking", "survey"}));
}

void TestSchemaRecords::emptyServicesMeansAllServices()
{
    Loaded const loaded = _load(schema(
        leaf("a", "xs:string", QByteArray(),
             "<xs:annotation><xs:appinfo><name_en>A</name_en><services/></xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    Parameter *a = at(loaded.root.get(), {"a"});
    QVERIFY(a->getVisualParams().services.empty());
    QVERIFY(a->isVisible("tracking"));
    QVERIFY(a->isVisible("survey"));
}

void TestSchemaRecords::servicesAreReadInOrderWhateverTheirTag()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:string", QByteArray(),
                                            "<xs:annotation><xs:appinfo><services><z>survey</z>"
                                            "<service>tracking</service><a>photometry</a></services>"
                                            "</xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(at(loaded.root.get(), {"a"})->getVisualParams().services,
             Lines({"survey", "tracking", "photometry"}));
}

void TestSchemaRecords::importanceWordGivesZero()
{
    Loaded const loaded = _load(schema(
        leaf("a", "xs:string", QByteArray(),
             "<xs:annotation><xs:appinfo><importance>high</importance></xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(at(loaded.root.get(), {"a"})->getVisualParams().importance, 0);
}

void TestSchemaRecords::presentElementReplacesDefault_data()
{
    QTest::addColumn<QByteArray>("appinfo");
    QTest::addColumn<int>("importance");
    QTest::addColumn<bool>("isvisible");
    QTest::newRow("nothing") << QByteArray() << 2 << true;
    QTest::newRow("empty isvisible hides") << QByteArray("<isvisible/>") << 2 << false;
    QTest::newRow("isvisible false") << QByteArray("<isvisible>false</isvisible>") << 2 << false;
    QTest::newRow("isvisible 1") << QByteArray("<isvisible>1</isvisible>") << 2 << true;
    QTest::newRow("isvisible TRUE") << QByteArray("<isvisible>TRUE</isvisible>") << 2 << false;
    QTest::newRow("empty importance") << QByteArray("<importance/>") << 0 << true;
    QTest::newRow("importance 5") << QByteArray("<importance>5</importance>") << 5 << true;
    QTest::newRow("importance with unit") << QByteArray("<importance>3rd</importance>") << 3 << true;
}

void TestSchemaRecords::presentElementReplacesDefault()
{
    QFETCH(QByteArray, appinfo);
    QFETCH(int, importance);
    QFETCH(bool, isvisible);
    Loaded const loaded =
        _load(schema(leaf("a", "xs:string", QByteArray(),
                          "<xs:annotation><xs:appinfo>" + appinfo + "</xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    Parameter::VisualParams const v = at(loaded.root.get(), {"a"})->getVisualParams();
    QCOMPARE(v.importance, importance);
    QCOMPARE(v.isvisible, isvisible);
    QCOMPARE(v.name_en, std::string());
}

void TestSchemaRecords::documentationWithoutAppinfoSetsDocumentationAndSource()
{
    Loaded const loaded = _load(schema(
        leaf(
            "a", "xs:string", QByteArray(),
            "<xs:annotation><xs:documentation source=\"https://example.org/a\">Only words.</xs:documentation>"
            "</xs:annotation>")
        + leaf("b", "xs:string", QByteArray(),
               "<xs:annotation><xs:documentation>No source.</xs:documentation></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    Parameter::VisualParams const a = at(loaded.root.get(), {"a"})->getVisualParams();
    QCOMPARE(a.documentation, std::string("Only words."));
    QCOMPARE(a.source, std::string("https://example.org/a"));
    QCOMPARE(a.name_en, std::string());
    QCOMPARE(a.importance, 2);
    QVERIFY(a.isvisible);
    Parameter::VisualParams const b = at(loaded.root.get(), {"b"})->getVisualParams();
    QCOMPARE(b.documentation, std::string("No source."));
    QCOMPARE(b.source, std::string());
}

void TestSchemaRecords::nullAnnotationGivesDefaultRecord()
{
    Parameter::VisualParams const v = OrvexConfigLib::_parseAnnotation(QDomElement());
    QCOMPARE(v.name_en, std::string());
    QCOMPARE(v.documentation, std::string());
    QCOMPARE(v.source, std::string());
    QCOMPARE(v.importance, 2);
    QVERIFY(v.isvisible);
    QVERIFY(v.services.empty());
}

void TestSchemaRecords::rootAnnotationHasNoEffect()
{
    QByteArray text = schema(leaf("a", "xs:string"));
    text.replace(
        "<xs:element name=\"root\">",
        "<xs:element name=\"root\"><xs:annotation><xs:documentation source=\"s\">Root doc"
        "</xs:documentation><xs:appinfo><name_en>Root</name_en><importance>0</importance>"
        "<isvisible>false</isvisible><services><s>survey</s></services></xs:appinfo></xs:annotation>");
    Loaded const loaded = _load(text);
    QCOMPARE(loaded.status, 0);
    Parameter::VisualParams const v = loaded.root->getVisualParams();
    QCOMPARE(v.name_en, std::string());
    QCOMPARE(v.documentation, std::string());
    QCOMPARE(v.source, std::string());
    QCOMPARE(v.importance, 2);
    QVERIFY(v.isvisible);
    QVERIFY(v.services.empty());
}

QTEST_GUILESS_MAIN(TestSchemaRecords)
#include "tst_schemarecords.moc"
