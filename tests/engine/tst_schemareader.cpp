// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "enginefixture.h"

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "model/parameter.h"

#include <QDomDocument>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace enginefixture;

Q_DECLARE_METATYPE(ParameterSimple::SimpleType)

namespace {

// What loadXSD made of one schema text.
struct Loaded
{
    int status = -1;
    Lines errors;
    std::unique_ptr<ParameterComplex> root;
};

QDomElement firstElement(QByteArray const &xml)
{
    QDomDocument document;
    document.setContent(xml, false);
    return document.documentElement();
}

} // namespace

class TestSchemaReader : public QObject
{
    Q_OBJECT

private:
    Loaded _load(QByteArray const &schemaText);
    Loaded _read(QByteArray const &schemaText);
    QString _write(QByteArray const &text);

    QTemporaryDir _dir;
    int _files = 0;

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

    void rootWithCapitalIsNotOrvexSchema();
    void firstTopLevelElementMustBeRoot();
    void schemaWithoutElementIsNotOrvexSchema();
    void failureLeavesRootUntouched();
    void successDoesNotDeleteEarlierTree();
    void invalidSchemaIsRefusedBeforeReading();
    void readerRefusesTextThatIsNotXml();
    void readerRefusesUnreadableFile();
    void readerRefusesDeeplyNestedSchema();
    void loadRefusesDeeplyNestedSchemaAtItsDepth();
    void nestingScanIgnoresMarkupInCommentsQuotesAndCData();
    void nestingScanReadsWideEncodings();

    void hierarchyGivesQuotedPath();
};

QString TestSchemaReader::_write(QByteArray const &text)
{
    return writeFile(_dir, QStringLiteral("schema-%1.xsd").arg(++_files), text);
}

Loaded TestSchemaReader::_load(QByteArray const &schemaText)
{
    Loaded loaded;
    ParameterComplex *root = nullptr;
    loaded.status = OrvexConfigLib::loadXSD(loaded.errors, root, path(_write(schemaText)));
    loaded.root.reset(root);
    return loaded;
}

// The reader behind the validation gate, for schemas that the gate would
// stop before the reader sees them.
Loaded TestSchemaReader::_read(QByteArray const &schemaText)
{
    Loaded loaded;
    ParameterComplex *root = nullptr;
    loaded.status = OrvexConfigLib::_readSchema(loaded.errors, root, path(_write(schemaText)));
    loaded.root.reset(root);
    return loaded;
}

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

// ---------------------------------------------------------------- facets

void TestSchemaReader::facetKindFollowsWhatWasMet_data()
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

void TestSchemaReader::facetKindFollowsWhatWasMet()
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

void TestSchemaReader::enumerationWithBoundsKeepsBounds()
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

void TestSchemaReader::minInclusiveAloneKeepsDefaultMaximum()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:decimal", "<xs:minInclusive value=\"0.25\"/>")));
    QCOMPARE(loaded.status, 0);
    ParameterSimple::Fasets const f = simple(loaded.root.get(), {"a"})->getFasets();
    QCOMPARE(f.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(f.minValue, 0.25);
    QCOMPARE(f.maxValue, 9999999.9);
}

void TestSchemaReader::repeatedBoundOverwritesEarlier()
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

void TestSchemaReader::simpleTypeWithoutRestrictionGivesStringWithoutFacets()
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

void TestSchemaReader::nullRestrictionGivesDefaultFacets()
{
    ParameterSimple::Fasets const f = OrvexConfigLib::_parseRestriction(QDomElement());
    QCOMPARE(f.kind, int(ParameterSimple::FasetNone));
    QCOMPARE(f.minValue, -9999999.9);
    QCOMPARE(f.maxValue, 9999999.9);
    QVERIFY(f.enumeration.empty());
}

// ------------------------------------------------------------ annotation

void TestSchemaReader::annotationFieldsAreRead()
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

void TestSchemaReader::emptyServicesMeansAllServices()
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

void TestSchemaReader::servicesAreReadInOrderWhateverTheirTag()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:string", QByteArray(),
                                            "<xs:annotation><xs:appinfo><services><z>survey</z>"
                                            "<service>tracking</service><a>photometry</a></services>"
                                            "</xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(at(loaded.root.get(), {"a"})->getVisualParams().services,
             Lines({"survey", "tracking", "photometry"}));
}

void TestSchemaReader::importanceWordGivesZero()
{
    Loaded const loaded = _load(schema(
        leaf("a", "xs:string", QByteArray(),
             "<xs:annotation><xs:appinfo><importance>high</importance></xs:appinfo></xs:annotation>")));
    QCOMPARE(loaded.status, 0);
    QCOMPARE(at(loaded.root.get(), {"a"})->getVisualParams().importance, 0);
}

void TestSchemaReader::presentElementReplacesDefault_data()
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

void TestSchemaReader::presentElementReplacesDefault()
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

void TestSchemaReader::documentationWithoutAppinfoSetsDocumentationAndSource()
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

void TestSchemaReader::nullAnnotationGivesDefaultRecord()
{
    Parameter::VisualParams const v = OrvexConfigLib::_parseAnnotation(QDomElement());
    QCOMPARE(v.name_en, std::string());
    QCOMPARE(v.documentation, std::string());
    QCOMPARE(v.source, std::string());
    QCOMPARE(v.importance, 2);
    QVERIFY(v.isvisible);
    QVERIFY(v.services.empty());
}

void TestSchemaReader::rootAnnotationHasNoEffect()
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

// -------------------------------------------------------------- failures

void TestSchemaReader::rootWithCapitalIsNotOrvexSchema()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:string"), QByteArray(), "Root"));
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
    QVERIFY(!loaded.root);
}

void TestSchemaReader::firstTopLevelElementMustBeRoot()
{
    Loaded const loaded =
        _load(schema(leaf("a", "xs:string"), QByteArray(), "config")
                  .replace("</xs:schema>", "  <xs:element name=\"root\" type=\"xs:string\"/>\n"
                                           "</xs:schema>"));
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
}

void TestSchemaReader::schemaWithoutElementIsNotOrvexSchema()
{
    Loaded const loaded =
        _load("<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
              + namedTypes() + "</xs:schema>\n");
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
}

void TestSchemaReader::failureLeavesRootUntouched()
{
    ParameterComplex earlier(nullptr, "root", Parameter::VisualParams());
    ParameterComplex *root = &earlier;
    Lines errors{"earlier line"};
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(_write(schema(leaf("a", "xs:string"), {}, "Root")))),
             2);
    QCOMPARE(root, &earlier);
    QCOMPARE(errors, Lines({"earlier line", "XSD schema is not orvex schema"}));

    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(_dir.filePath("missing.xsd"))), 2);
    QCOMPARE(root, &earlier);
    QCOMPARE(errors, Lines({"earlier line", "XSD schema is not orvex schema", "XSD schema is not opened"}));
}

void TestSchemaReader::successDoesNotDeleteEarlierTree()
{
    auto earlier = std::make_unique<ParameterComplex>(nullptr, "root", Parameter::VisualParams());
    new ParameterSimple(earlier.get(), "kept", Parameter::VisualParams(), ParameterSimple::String,
                        ParameterSimple::Fasets());
    ParameterComplex *root = earlier.get();
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(_write(schema(leaf("a", "xs:string"))))), 0);
    std::unique_ptr<ParameterComplex> const fresh(root);
    QVERIFY(root != earlier.get());
    // The earlier tree is the caller's to delete; it is still whole.
    QCOMPARE(earlier->getChildrenPtrs().size(), std::size_t(1));
    QCOMPARE(earlier->getChildrenPtrs().front()->getParameterKey(), std::string("kept"));
}

void TestSchemaReader::invalidSchemaIsRefusedBeforeReading()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QByteArray const text = schema(leaf("a", "NoSuchType"));
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(_write(text))), 2);
    QVERIFY(!root);
    QCOMPARE(errors.size(), std::size_t(2));
    QCOMPARE(errors[0], std::string("XSD schema is not load"));
    // The unknown base is on line 6 of the text.
    QCOMPARE(text.split('\n').indexOf(leaf("a", "NoSuchType").chopped(1)) + 1, 6);
    QVERIFY2(QByteArray::fromStdString(errors[1]).startsWith("file is invalid at: line: 6, column: "),
             errors[1].c_str());
}

void TestSchemaReader::readerRefusesTextThatIsNotXml()
{
    Loaded const loaded =
        _read("<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"><xs:element name=\"root\">");
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not dom document"}));
    QVERIFY(!loaded.root);
}

void TestSchemaReader::readerRefusesUnreadableFile()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::_readSchema(errors, root, path(_dir.filePath("nowhere.xsd"))), 2);
    QCOMPARE(errors, Lines({"XSD schema is not dom document"}));
    QVERIFY(!root);
}

void TestSchemaReader::readerRefusesDeeplyNestedSchema()
{
    // Far past the depth at which QDom's parser overflows the stack.
    int const depth = 40000;
    QByteArray text = "<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n";
    for (int i = 0; i < depth; ++i)
        text += "<xs:element name=\"root\">";
    for (int i = 0; i < depth; ++i)
        text += "</xs:element>";
    text += "\n</xs:schema>\n";
    Loaded const loaded = _read(text);
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not dom document"}));
    QVERIFY(!loaded.root);
}

void TestSchemaReader::loadRefusesDeeplyNestedSchemaAtItsDepth()
{
    int const sections = 20000;
    QByteArray text = "<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n";
    for (int i = 0; i < sections; ++i)
        text += "<xs:element name=\"root\">\n<xs:complexType>\n<xs:sequence>\n";
    for (int i = 0; i < sections; ++i)
        text += "</xs:sequence></xs:complexType></xs:element>\n";
    text += "</xs:schema>\n";
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(_write(text))), 2);
    QVERIFY(!root);
    // xs:schema is level 1 on line 2, so the tag that goes one past the
    // limit stands alone on line 2 + limit; the column is just past it.
    int const line = 2 + OrvexConfigLib::_maxNesting;
    QByteArray const tag = text.split('\n').at(line - 1);
    QVERIFY(tag.startsWith("<xs:") && !tag.startsWith("</"));
    QCOMPARE(errors, Lines({"XSD schema is not load", "file is invalid at: line: " + std::to_string(line)
                                                          + ", column: " + std::to_string(tag.size())}));
}

void TestSchemaReader::nestingScanIgnoresMarkupInCommentsQuotesAndCData()
{
    QByteArray const inner =
        "<a title=\"<b><b>\" alt='>/'><!-- <c><c> --><![CDATA[<d><d>]]><?pi <e>?><f/><g></g></a>";
    QByteArray const text = "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ENTITY x \"<h><h>\"> <!-- ] > -->]>\n<r>"
                            + inner + inner + "</r>\n";
    int line = 0;
    int column = 0;
    // <r>, <a> and <g> nest three deep; nothing in comments, quotes,
    // character data, instructions or the document type counts.
    QVERIFY(!OrvexConfigLib::_nestsTooDeep(text, 3, &line, &column));
    QVERIFY(OrvexConfigLib::_nestsTooDeep(text, 1, &line, &column));
    QCOMPARE(line, 3);
    // Past the start tag <a ...> after "<r>".
    QCOMPARE(column, 3 + int(QByteArray("<a title=\"<b><b>\" alt='>/'>").size()));
}

void TestSchemaReader::nestingScanReadsWideEncodings()
{
    QString const text =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r><a/><a/><a><b/></a></r>\n");
    QByteArray utf16;
    for (QChar c : text) {
        utf16 += char(c.unicode() & 0xFF);
        utf16 += char(c.unicode() >> 8);
    }
    int line = 0;
    int column = 0;
    QVERIFY(!OrvexConfigLib::_nestsTooDeep(utf16, 2, &line, &column));
    QVERIFY(OrvexConfigLib::_nestsTooDeep("\xFF\xFE" + utf16, 1, &line, &column));
    QCOMPARE(line, 2);
    QCOMPARE(column, int(QByteArray("<r><a/><a/><a>").size()));
}

// -------------------------------------------------------------- messages

void TestSchemaReader::hierarchyGivesQuotedPath()
{
    QCOMPARE(OrvexConfigLib::_hierarchy(nullptr), std::string("\"\""));
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *a = new ParameterComplex(&root, "a", Parameter::VisualParams());
    auto *b = new ParameterSimple(a, "b", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    QCOMPARE(OrvexConfigLib::_hierarchy(&root), std::string("\"->root\""));
    QCOMPARE(OrvexConfigLib::_hierarchy(b), std::string("\"->root->a->b\""));
}

QTEST_GUILESS_MAIN(TestSchemaReader)
#include "tst_schemareader.moc"
