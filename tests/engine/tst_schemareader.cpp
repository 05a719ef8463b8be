// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The schema reader: the tree it builds, the types it gives leaves and lists,
// and the forms of declaration that make a node or none.

#include "schemafixture.h"

#include <QtTest>

using namespace enginefixture;

class TestSchemaReader : public QObject, private SchemaFiles
{
    Q_OBJECT

private slots:
    void sampleSchemaGivesTreeInSchemaOrder();
    void sampleSchemaGivesTypesFacetsAndListKeys();
    void sampleSchemaGivesPresentationRecords();
    void validSchemaGivesStatusZeroAndNoLine();

    void typeTableMapsNames_data();
    void typeTableMapsNames();
    void leafTypeComesFromRestrictionBase_data();
    void leafTypeComesFromRestrictionBase();
    void listItemTypeComesFromItemType_data();
    void listItemTypeComesFromItemType();
    void unknownBaseGivesStringLeafWithInertBounds_data();
    void unknownBaseGivesStringLeafWithInertBounds();
    void typeNameDifferingInCaseGivesString();

    void elementWithSimpleAndComplexTypeIsLeaf();
    void elementWithOnlyNameAndTypeMakesNoNode();
    void sequenceWithIdAttributeMakesListWithMinimumZero();
    void sequenceMinOccursGivesListMinimum();
    void sequenceWithAttributeButNoItemMakesStringList();
    void complexTypeWithoutSequenceMakesEmptySection();
    void elementsOutsideTheSequenceAreIgnored();
    void sectionsNestWithLevels();
    void missingNameGivesEmptyKey();
};

// ------------------------------------------------------------ the sample

void TestSchemaReader::sampleSchemaGivesTreeInSchemaOrder()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QVERIFY(root);
    QCOMPARE(root->getParameterKey(), std::string("root"));
    QCOMPARE(root->getParantPtr(), nullptr);
    QCOMPARE(root->getLevel(), 0u);

    QStringList keys;
    for (Parameter *child : root->getChildrenPtrs()) {
        keys << QString::fromStdString(child->getParameterKey());
        QCOMPARE(child->getParantPtr(), root);
        QCOMPARE(child->getLevel(), 1u);
    }
    QCOMPARE(keys, QStringList({"Version", "Service", "Station", "Hosts", "Ports", "Satellites", "Survey"}));

    QStringList stationKeys;
    for (Parameter *child : dynamic_cast<ParameterComplex *>(at(root, {"Station"}))->getChildrenPtrs())
        stationKeys << QString::fromStdString(child->getParameterKey());
    QCOMPARE(stationKeys, QStringList({"Name", "Antennas", "Gain", "Mode", "Enabled", "Workdir"}));
    QCOMPARE(at(root, {"Station", "Gain"})->getLevel(), 2u);
}

void TestSchemaReader::sampleSchemaGivesTypesFacetsAndListKeys()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);

    QCOMPARE(at(root, {"Station"})->getGlobalType(), Parameter::GlobalType::Complex);
    ParameterSimple *version = simple(root, {"Version"});
    QVERIFY(version);
    QCOMPARE(version->getGlobalType(), Parameter::GlobalType::Simple);
    QCOMPARE(version->getFasets().kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(version->getFasets().enumeration, Lines({"1.0", "1.1"}));
    QCOMPARE(version->getValue(), std::string());

    ParameterSimple *antennas = simple(root, {"Station", "Antennas"});
    QCOMPARE(antennas->getSimpleType(), ParameterSimple::Integer);
    QCOMPARE(antennas->getFasets().kind, int(ParameterSimple::FasetRange));
    QCOMPARE(antennas->getFasets().minValue, 1.0);
    QCOMPARE(antennas->getFasets().maxValue, 10.0);
    QCOMPARE(simple(root, {"Station", "Gain"})->getFasets().minValue, 0.5);
    QCOMPARE(simple(root, {"Station", "Enabled"})->getSimpleType(), ParameterSimple::Boolean);
    QCOMPARE(simple(root, {"Station", "Workdir"})->getSimpleType(), ParameterSimple::Dirpath);
    QCOMPARE(simple(root, {"Survey", "Token"})->getSimpleType(), ParameterSimple::Password);

    ParameterList *hosts = list(root, {"Hosts"});
    QVERIFY(hosts);
    QCOMPARE(hosts->getGlobalType(), Parameter::GlobalType::List);
    QCOMPARE(hosts->getListKey(), std::string("Host"));
    QCOMPARE(hosts->getSimpleType(), ParameterSimple::String);
    QCOMPARE(hosts->getFasets().kind, int(ParameterSimple::FasetRange));
    QCOMPARE(hosts->getFasets().minValue, 0.0);
    QCOMPARE(hosts->getFasets().maxValue, 9999999.9);
    QVERIFY(hosts->getFasets().enumeration.empty());

    ParameterList *ports = list(root, {"Ports"});
    QCOMPARE(ports->getSimpleType(), ParameterSimple::Integer);
    QCOMPARE(ports->getFasets().minValue, 1.0);
    // minOccurs bounds each number item too: 0 is refused.
    QVERIFY(!ports->addValue("0"));

    ParameterListTLEs *satellites = tles(root, {"Satellites"});
    QVERIFY(satellites);
    QCOMPARE(satellites->getGlobalType(), Parameter::GlobalType::ListTLEs);
    QCOMPARE(satellites->getListKey(), std::string("TLE"));
    QCOMPARE(satellites->getSimpleType(), ParameterSimple::TLE);
    QCOMPARE(satellites->getFasets().kind, int(ParameterSimple::FasetNone));
    QCOMPARE(satellites->getFasets().minValue, -9999999.9);
}

void TestSchemaReader::sampleSchemaGivesPresentationRecords()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);

    Parameter::VisualParams const station = at(root, {"Station"})->getVisualParams();
    QCOMPARE(station.name_en, std::string("Station"));
    QCOMPARE(station.documentation, std::string("The ground station."));
    QCOMPARE(station.source, std::string("manual.html#station"));
    QCOMPARE(station.importance, 2);
    QVERIFY(station.isvisible);
    QVERIFY(station.services.empty());

    QCOMPARE(at(root, {"Station", "Gain"})->getVisualParams().dimension, std::string("dB"));
    QCOMPARE(at(root, {"Version"})->getVisualParams().importance, 0);
    QCOMPARE(at(root, {"Survey"})->getVisualParams().services, Lines({"survey"}));
    QVERIFY(!at(root, {"Survey", "Token"})->getVisualParams().isvisible);
}

void TestSchemaReader::validSchemaGivesStatusZeroAndNoLine()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:string")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.errors, Lines());
    QVERIFY(loaded.root);
    QCOMPARE(loaded.root->getChildrenPtrs().size(), std::size_t(1));
}

// ------------------------------------------------------------ type table

void TestSchemaReader::typeTableMapsNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ParameterSimple::SimpleType>("type");
    QTest::newRow("integer") << "xs:integer" << ParameterSimple::Integer;
    QTest::newRow("decimal") << "xs:decimal" << ParameterSimple::Decimal;
    QTest::newRow("boolean") << "xs:boolean" << ParameterSimple::Boolean;
    QTest::newRow("string") << "xs:string" << ParameterSimple::String;
    QTest::newRow("dirpath") << "DirpathType" << ParameterSimple::Dirpath;
    QTest::newRow("filepath") << "FilepathType" << ParameterSimple::Filepath;
    QTest::newRow("email") << "EmailType" << ParameterSimple::Email;
    QTest::newRow("password") << "PasswordType" << ParameterSimple::Password;
    QTest::newRow("header keys") << "headerKeysType" << ParameterSimple::HeaderKeys;
    QTest::newRow("filter keys") << "filterKeysType" << ParameterSimple::FilterKeys;
    QTest::newRow("tle") << "TLEType" << ParameterSimple::TLE;
    QTest::newRow("empty") << "" << ParameterSimple::String;
    QTest::newRow("int") << "xs:int" << ParameterSimple::String;
    QTest::newRow("positive integer") << "xs:positiveInteger" << ParameterSimple::String;
    QTest::newRow("integer without prefix") << "integer" << ParameterSimple::String;
    QTest::newRow("upper-case Integer") << "xs:Integer" << ParameterSimple::String;
    QTest::newRow("lower-case dirpath") << "dirpathType" << ParameterSimple::String;
    QTest::newRow("upper-case HeaderKeys") << "HeaderKeysType" << ParameterSimple::String;
    QTest::newRow("lower-case tle") << "tleType" << ParameterSimple::String;
}

void TestSchemaReader::typeTableMapsNames()
{
    QFETCH(QString, name);
    QFETCH(ParameterSimple::SimpleType, type);
    QCOMPARE(OrvexConfigLib::_toSimpleType(name), type);
}

void TestSchemaReader::leafTypeComesFromRestrictionBase_data()
{
    QTest::addColumn<QByteArray>("base");
    QTest::addColumn<ParameterSimple::SimpleType>("type");
    QTest::newRow("integer") << QByteArray("xs:integer") << ParameterSimple::Integer;
    QTest::newRow("decimal") << QByteArray("xs:decimal") << ParameterSimple::Decimal;
    QTest::newRow("boolean") << QByteArray("xs:boolean") << ParameterSimple::Boolean;
    QTest::newRow("string") << QByteArray("xs:string") << ParameterSimple::String;
    QTest::newRow("dirpath") << QByteArray("DirpathType") << ParameterSimple::Dirpath;
    QTest::newRow("filepath") << QByteArray("FilepathType") << ParameterSimple::Filepath;
    QTest::newRow("email") << QByteArray("EmailType") << ParameterSimple::Email;
    QTest::newRow("password") << QByteArray("PasswordType") << ParameterSimple::Password;
    QTest::newRow("header keys") << QByteArray("headerKeysType") << ParameterSimple::HeaderKeys;
    QTest::newRow("filter keys") << QByteArray("filterKeysType") << ParameterSimple::FilterKeys;
}

void TestSchemaReader::leafTypeComesFromRestrictionBase()
{
    QFETCH(QByteArray, base);
    QFETCH(ParameterSimple::SimpleType, type);
    Loaded const loaded = _load(schema(leaf("a", base)));
    QCOMPARE(loaded.status, 0);
    ParameterSimple *a = simple(loaded.root.get(), {"a"});
    QVERIFY(a);
    QCOMPARE(a->getGlobalType(), Parameter::GlobalType::Simple);
    QCOMPARE(a->getSimpleType(), type);
}

void TestSchemaReader::listItemTypeComesFromItemType_data()
{
    QTest::addColumn<QByteArray>("itemType");
    QTest::addColumn<ParameterSimple::SimpleType>("type");
    QTest::newRow("boolean list") << QByteArray("xs:boolean") << ParameterSimple::Boolean;
    QTest::newRow("decimal list") << QByteArray("xs:decimal") << ParameterSimple::Decimal;
    QTest::newRow("email list") << QByteArray("EmailType") << ParameterSimple::Email;
    QTest::newRow("unknown item type") << QByteArray("xs:token") << ParameterSimple::String;
}

void TestSchemaReader::listItemTypeComesFromItemType()
{
    QFETCH(QByteArray, itemType);
    QFETCH(ParameterSimple::SimpleType, type);
    Loaded const loaded = _load(schema("<xs:element name=\"l\"><xs:complexType><xs:sequence minOccurs=\"0\" "
                                       "maxOccurs=\"unbounded\"><xs:element name=\"item\" type=\""
                                       + itemType + "\"/></xs:sequence></xs:complexType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    ParameterList *l = list(loaded.root.get(), {"l"});
    QVERIFY(l);
    QCOMPARE(l->getSimpleType(), type);
    QCOMPARE(l->getListKey(), std::string("item"));
}

void TestSchemaReader::unknownBaseGivesStringLeafWithInertBounds_data()
{
    QTest::addColumn<QByteArray>("base");
    QTest::newRow("int") << QByteArray("xs:int");
    QTest::newRow("positiveInteger") << QByteArray("xs:positiveInteger");
}

void TestSchemaReader::unknownBaseGivesStringLeafWithInertBounds()
{
    QFETCH(QByteArray, base);
    Loaded const loaded =
        _load(schema(leaf("a", base, "<xs:minInclusive value=\"1\"/><xs:maxInclusive value=\"5\"/>")));
    QCOMPARE(loaded.status, 0);
    ParameterSimple *a = simple(loaded.root.get(), {"a"});
    QVERIFY(a);
    QCOMPARE(a->getSimpleType(), ParameterSimple::String);
    QCOMPARE(a->getFasets().kind, int(ParameterSimple::FasetRange));
    QCOMPARE(a->getFasets().minValue, 1.0);
    QCOMPARE(a->getFasets().maxValue, 5.0);
    // The bounds are stored but hold nothing back in a String.
    QVERIFY(a->setValue("99"));
    QCOMPARE(a->getValue(), std::string("99"));
}

void TestSchemaReader::typeNameDifferingInCaseGivesString()
{
    QByteArray const ownTypes =
        "  <xs:simpleType name=\"dirpathType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
        "  <xs:simpleType name=\"EMAILTYPE\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n";
    Loaded const loaded = _load(schema(leaf("a", "dirpathType") + leaf("b", "EMAILTYPE"), ownTypes));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(simple(loaded.root.get(), {"a"})->getSimpleType(), ParameterSimple::String);
    QCOMPARE(simple(loaded.root.get(), {"b"})->getSimpleType(), ParameterSimple::String);
}

// ------------------------------------------------------------ node forms

void TestSchemaReader::elementWithSimpleAndComplexTypeIsLeaf()
{
    // Not a valid schema, so the reader is asked directly.
    Loaded const loaded = _read(schema(
        "<xs:element name=\"a\"><xs:complexType><xs:sequence><xs:element name=\"x\">"
        "<xs:simpleType><xs:restriction base=\"xs:string\"/></xs:simpleType></xs:element></xs:sequence>"
        "</xs:complexType><xs:simpleType><xs:restriction "
        "base=\"xs:integer\"/></xs:simpleType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.errors, Lines());
    ParameterSimple *a = simple(loaded.root.get(), {"a"});
    QVERIFY(a);
    QCOMPARE(a->getGlobalType(), Parameter::GlobalType::Simple);
    QCOMPARE(a->getSimpleType(), ParameterSimple::Integer);
}

void TestSchemaReader::elementWithOnlyNameAndTypeMakesNoNode()
{
    Loaded const loaded =
        _load(schema("<xs:element name=\"s\"><xs:complexType><xs:sequence>\n" + leaf("a", "xs:string")
                     + "<xs:element name=\"typed\" type=\"xs:integer\"/>\n" + leaf("b", "xs:string")
                     + "</xs:sequence></xs:complexType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.errors, Lines());
    auto *s = dynamic_cast<ParameterComplex *>(at(loaded.root.get(), {"s"}));
    QVERIFY(s);
    QCOMPARE(s->getChildrenPtrs().size(), std::size_t(2));
    QVERIFY(at(s, {"a"}));
    QVERIFY(at(s, {"b"}));
    QVERIFY(!at(s, {"typed"}));
}

void TestSchemaReader::sequenceWithIdAttributeMakesListWithMinimumZero()
{
    Loaded const loaded = _load(schema("<xs:element name=\"l\"><xs:complexType><xs:sequence id=\"seq1\">"
                                       "<xs:element name=\"item\" type=\"xs:integer\"/></xs:sequence>"
                                       "</xs:complexType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    ParameterList *l = list(loaded.root.get(), {"l"});
    QVERIFY(l);
    QCOMPARE(l->getGlobalType(), Parameter::GlobalType::List);
    QCOMPARE(l->getFasets().kind, int(ParameterSimple::FasetRange));
    QCOMPARE(l->getFasets().minValue, 0.0);
    QCOMPARE(l->getFasets().maxValue, 9999999.9);
    QCOMPARE(l->getListKey(), std::string("item"));
    QCOMPARE(l->getSimpleType(), ParameterSimple::Integer);
}

void TestSchemaReader::sequenceMinOccursGivesListMinimum()
{
    Loaded const loaded = _load(schema("<xs:element name=\"l\"><xs:complexType><xs:sequence minOccurs=\"3\" "
                                       "maxOccurs=\"7\"><xs:element name=\"item\" type=\"xs:string\"/>"
                                       "</xs:sequence></xs:complexType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    ParameterList *l = list(loaded.root.get(), {"l"});
    QVERIFY(l);
    QCOMPARE(l->getFasets().minValue, 3.0);
    // maxOccurs is the validator's only.
    QCOMPARE(l->getFasets().maxValue, 9999999.9);
}

void TestSchemaReader::sequenceWithAttributeButNoItemMakesStringList()
{
    Loaded const loaded =
        _load(schema("<xs:element name=\"l\"><xs:complexType><xs:sequence minOccurs=\"0\"/></xs:complexType>"
                     "</xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    ParameterList *l = list(loaded.root.get(), {"l"});
    QVERIFY(l);
    QCOMPARE(l->getSimpleType(), ParameterSimple::String);
    QCOMPARE(l->getListKey(), std::string());
}

void TestSchemaReader::complexTypeWithoutSequenceMakesEmptySection()
{
    Loaded const loaded = _load(schema("<xs:element name=\"s\"><xs:complexType/></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    auto *s = dynamic_cast<ParameterComplex *>(at(loaded.root.get(), {"s"}));
    QVERIFY(s);
    QCOMPARE(s->getGlobalType(), Parameter::GlobalType::Complex);
    QVERIFY(s->getChildrenPtrs().empty());
}

void TestSchemaReader::elementsOutsideTheSequenceAreIgnored()
{
    Loaded const loaded =
        _load(schema(leaf("a", "xs:string") + "<xs:choice minOccurs=\"0\">" + leaf("inChoice", "xs:string")
                     + "</xs:choice>\n" + leaf("b", "xs:string")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.root->getChildrenPtrs().size(), std::size_t(2));
    QVERIFY(!at(loaded.root.get(), {"inChoice"}));
}

void TestSchemaReader::sectionsNestWithLevels()
{
    Loaded const loaded = _load(
        schema("<xs:element name=\"a\"><xs:complexType><xs:sequence><xs:element name=\"b\"><xs:complexType>"
               "<xs:sequence>"
               + leaf("c", "xs:decimal")
               + "</xs:sequence></xs:complexType></xs:element>"
                 "</xs:sequence></xs:complexType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    Parameter *c = at(loaded.root.get(), {"a", "b", "c"});
    QVERIFY(c);
    QCOMPARE(c->getLevel(), 3u);
    QCOMPARE(c->getParantPtr(), at(loaded.root.get(), {"a", "b"}));
}

void TestSchemaReader::missingNameGivesEmptyKey()
{
    // Not a valid schema (a local element needs a name), so the reader is asked directly.
    Loaded const loaded = _read(schema(
        "<xs:element><xs:simpleType><xs:restriction base=\"xs:string\"/></xs:simpleType></xs:element>\n"));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.errors, Lines());
    QCOMPARE(loaded.root->getChildrenPtrs().size(), std::size_t(1));
    QCOMPARE(loaded.root->getChildrenPtrs().front()->getParameterKey(), std::string());
}

QTEST_GUILESS_MAIN(TestSchemaReader)
#include "tst_schemareader.moc"
