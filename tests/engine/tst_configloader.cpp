// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "enginefixture.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include <QTemporaryDir>
#include <QtTest>

#include <clocale>
#include <memory>

using namespace enginefixture;

namespace {

QByteArray const tleLine1 = "1 25544U 98067A   04005.51955591  .00019728  00000-0  19085-3 0  9701";
QByteArray const tleLine2 = "2 25544  51.6297  78.4979 0006431 344.6528 119.5204 15.66405366292649";
QByteArray const tleLine1b = "1 27873U 03039A   04004.82500000  .00018733  00000-0  18171-3 0  1068";
QByteArray const tleLine2b = "2 27873  51.6298  82.0291 0006742 342.9757 161.9609 15.66375652 20143";

QByteArray record(QByteArray const &tag, QByteArray const &name, QByteArray const &line1,
                  QByteArray const &line2)
{
    return "  <" + tag + "><Line0>" + name + "</Line0><Line1>" + line1 + "</Line1><Line2>" + line2
           + "</Line2></" + tag + ">\n";
}

// The children of a file that fills every parameter of the sample schema,
// with `replace` swapped for `with` in the text.
QByteArray fullChildren(QByteArray const &replace = QByteArray(), QByteArray const &with = QByteArray())
{
    QByteArray text = " <Version>1.1</Version>\n"
                      " <Service>tracking</Service>\n"
                      " <Station>\n"
                      "  <Name>North dish</Name>\n"
                      "  <Antennas>3</Antennas>\n"
                      "  <Gain>0.75</Gain>\n"
                      "  <Mode>fast</Mode>\n"
                      "  <Enabled>true</Enabled>\n"
                      "  <Workdir>/var/lib/orvex</Workdir>\n"
                      " </Station>\n"
                      " <Hosts><Host>alpha</Host><Host>beta</Host></Hosts>\n"
                      " <Ports><Port>4000</Port><Port>4001</Port></Ports>\n"
                      " <Satellites>\n"
                      + record("TLE", "ISS (ZARYA)", tleLine1, tleLine2)
                      + " </Satellites>\n"
                        " <Survey><Exposure>12.5</Exposure><Token>s3cret</Token></Survey>\n";
    if (!replace.isEmpty())
        text.replace(replace, with);
    return text;
}

// Restores the process locale when a test that changed it ends, passed or not.
class LocaleGuard
{
public:
    LocaleGuard() : _saved(std::setlocale(LC_ALL, nullptr)) {}
    ~LocaleGuard() { std::setlocale(LC_ALL, _saved.c_str()); }

private:
    std::string _saved;
};

} // namespace

class TestConfigLoader : public QObject
{
    Q_OBJECT

private:
    int _loadText(QByteArray const &text, Lines &errors);
    QString _write(QByteArray const &text);
    std::string _value(std::vector<std::string> const &keys);
    Lines _values(std::vector<std::string> const &keys);

    QTemporaryDir _dir;
    int _files = 0;
    ParameterComplex *_root = nullptr;

private slots:
    void init();
    void cleanup();

    void fullFileLoadsEveryParameter();
    void refusedEnumerationValueKeepsEarlierValueSilently();
    void refusedRangeValueKeepsEarlierValueSilently();
    void fileWithoutOneLeafReportsItsPath();
    void missingSectionGivesOneLine();
    void missingNodesAreReportedInWalkOrder();
    void extraElementsArePassedOver();
    void secondFileOverlaysFirst();
    void loaderKeepsFirstOfRepeatedElements();
    void firstCopyCountsWhenLaterCopyFollowsPredecessor_data();
    void firstCopyCountsWhenLaterCopyFollowsPredecessor();
    void orderOfSectionsAndLeavesDoesNotMatter();
    void attributesAreNotRead();
    void hiddenAndOtherServiceParametersAreLoaded();
    void valueIsWholeTextOfElement();
    void nonAsciiTextIsKeptAsUtf8();

    void emptyListElementEmptiesListWithMinimumZero();
    void emptyListElementKeepsItemsWithMinimumOne();
    void listItemsUnderAnyTagAreLoaded();
    void listWithRefusedItemKeepsEarlierItems();

    void tleRecordLackingLine0IsReported();
    void badRecordBetweenGoodOnesIsSkippedAndNumbered();
    void tleItemsUnderOtherTagGiveEmptyList();
    void tleRecordsAfterFirstMayHaveAnyTag();
    void elementsBeforeFirstTleAreNotRecords();
    void emptyTleRecordFieldsAreKept();

    void unreadableFileIsNotOpened();
    void malformedFileIsNotDomDocument();
    void deeplyNestedFileIsNotDomDocument();
    void nullRootIsReportedForReadableFile();
    void nullRootWithUnreadableFileReportsNotOpenedFirst();
    void nullRootWithMalformedFileReportsParseFirst();
    void otherRootElementChangesNothing();
    void nullChildIsReportedAndWalkGoesOn();
    void emptyKeyChildIsReportedAndWalkGoesOn();
    void earlierLinesStayInFront();
    void manySiblingsStillFindFirstElementOfEachKey();

    void numbersReadWithDecimalPointUnderGermanLocale();
};

void TestConfigLoader::init()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, _root, path(dataPath("sample-schema.xsd"))), 0);
}

void TestConfigLoader::cleanup()
{
    delete _root;
    _root = nullptr;
}

QString TestConfigLoader::_write(QByteArray const &text)
{
    return writeFile(_dir, QStringLiteral("config-%1.conf").arg(++_files), text);
}

int TestConfigLoader::_loadText(QByteArray const &text, Lines &errors)
{
    return OrvexConfigLib::loadXML_knStruct(errors, _root, path(_write(text)));
}

std::string TestConfigLoader::_value(std::vector<std::string> const &keys)
{
    ParameterSimple *node = simple(_root, keys);
    return node ? node->getValue() : std::string("<no such leaf>");
}

Lines TestConfigLoader::_values(std::vector<std::string> const &keys)
{
    ParameterList *node = list(_root, keys);
    return node ? node->getValues() : Lines({"<no such list>"});
}

// ------------------------------------------------------------ the values

void TestConfigLoader::fullFileLoadsEveryParameter()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, _root, path(dataPath("sample-full.conf"))), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_value({"Version"}), std::string("1.1"));
    QCOMPARE(_value({"Service"}), std::string("tracking"));
    QCOMPARE(_value({"Station", "Name"}), std::string("North dish"));
    QCOMPARE(_value({"Station", "Antennas"}), std::string("3"));
    QCOMPARE(_value({"Station", "Gain"}), std::string("0.75"));
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
    QCOMPARE(_value({"Station", "Enabled"}), std::string("true"));
    QCOMPARE(_value({"Station", "Workdir"}), std::string("/var/lib/orvex"));
    QCOMPARE(_values({"Hosts"}), Lines({"alpha", "beta"}));
    QCOMPARE(_value({"Hosts"}), std::string("alpha"));
    QCOMPARE(_values({"Ports"}), Lines({"4000", "4001"}));
    std::vector<ParameterListTLEs::TLE> const records = tles(_root, {"Satellites"})->getTLEs();
    QCOMPARE(records.size(), std::size_t(1));
    QCOMPARE(records[0].line0, std::string("ISS (ZARYA)"));
    QCOMPARE(records[0].line1, tleLine1.toStdString());
    QCOMPARE(records[0].line2, tleLine2.toStdString());
    QCOMPARE(_value({"Survey", "Exposure"}), std::string("12.5"));
    QCOMPARE(_value({"Survey", "Token"}), std::string("s3cret"));
}

void TestConfigLoader::refusedEnumerationValueKeepsEarlierValueSilently()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(_loadText(config(fullChildren("<Mode>fast</Mode>", "<Mode>medium</Mode>")), errors), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
    // An empty value is refused by an enumeration without an empty entry.
    QCOMPARE(_loadText(config(fullChildren("<Mode>fast</Mode>", "<Mode></Mode>")), errors), 0);
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
    QCOMPARE(errors, Lines());
}

void TestConfigLoader::refusedRangeValueKeepsEarlierValueSilently()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(_loadText(config(fullChildren("<Antennas>3</Antennas>", "<Antennas>11</Antennas>")
                                  .replace("<Gain>0.75</Gain>", "<Gain>1.6</Gain>")),
                       errors),
             0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_value({"Station", "Antennas"}), std::string("3"));
    QCOMPARE(_value({"Station", "Gain"}), std::string("0.75"));
}

void TestConfigLoader::fileWithoutOneLeafReportsItsPath()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren("  <Gain>0.75</Gain>\n", "")), errors), 1);
    QCOMPARE(errors, Lines({"Node \"->root->Station->Gain\" not found in XML"}));
    QCOMPARE(_value({"Station", "Gain"}), std::string());
    QCOMPARE(_value({"Station", "Antennas"}), std::string("3"));
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
    QCOMPARE(_values({"Ports"}), Lines({"4000", "4001"}));
    QCOMPARE(_value({"Survey", "Token"}), std::string("s3cret"));
}

void TestConfigLoader::missingSectionGivesOneLine()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren(
                           " <Survey><Exposure>12.5</Exposure><Token>s3cret</Token></Survey>\n", "")),
                       errors),
             1);
    QCOMPARE(errors, Lines({"Node \"->root->Survey\" not found in XML"}));
}

void TestConfigLoader::missingNodesAreReportedInWalkOrder()
{
    Lines errors;
    QByteArray const text = config(" <Station><Name>n</Name><Mode>slow</Mode><Enabled>0</Enabled></Station>\n"
                                   " <Hosts/>\n"
                                   " <Survey><Token>t</Token></Survey>\n");
    QCOMPARE(_loadText(text, errors), 1);
    QCOMPARE(errors,
             Lines({"Node \"->root->Version\" not found in XML", "Node \"->root->Service\" not found in XML",
                    "Node \"->root->Station->Antennas\" not found in XML",
                    "Node \"->root->Station->Gain\" not found in XML",
                    "Node \"->root->Station->Workdir\" not found in XML",
                    "Node \"->root->Ports\" not found in XML", "Node \"->root->Satellites\" not found in XML",
                    "Node \"->root->Survey->Exposure\" not found in XML"}));
    // A status of 1 never stops the walk.
    QCOMPARE(_value({"Station", "Mode"}), std::string("slow"));
    QCOMPARE(_value({"Survey", "Token"}), std::string("t"));
}

void TestConfigLoader::extraElementsArePassedOver()
{
    Lines errors;
    QByteArray const text = config(fullChildren(" <Survey>", " <Unknown>x</Unknown>\n <Survey><Extra/>")
                                       .replace("<Name>", "<Nested><Name>inner</Name></Nested><Name>"));
    QCOMPARE(_loadText(text, errors), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_value({"Station", "Name"}), std::string("North dish"));
}

void TestConfigLoader::secondFileOverlaysFirst()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QByteArray const second = config(" <Version>1.0</Version>\n"
                                     " <Station><Mode>slow</Mode><Antennas>7</Antennas></Station>\n"
                                     " <Hosts><Host>gamma</Host></Hosts>\n");
    QCOMPARE(_loadText(second, errors), 1);
    QCOMPARE(_value({"Version"}), std::string("1.0"));
    QCOMPARE(_value({"Station", "Mode"}), std::string("slow"));
    QCOMPARE(_value({"Station", "Antennas"}), std::string("7"));
    QCOMPARE(_values({"Hosts"}), Lines({"gamma"}));
    // What the second file doesn't hold keeps the values of the first.
    QCOMPARE(_value({"Service"}), std::string("tracking"));
    QCOMPARE(_value({"Station", "Gain"}), std::string("0.75"));
    QCOMPARE(_value({"Station", "Name"}), std::string("North dish"));
    QCOMPARE(_values({"Ports"}), Lines({"4000", "4001"}));
    QCOMPARE(tles(_root, {"Satellites"})->getTLEs().size(), std::size_t(1));
}

void TestConfigLoader::loaderKeepsFirstOfRepeatedElements()
{
    Lines errors;
    QByteArray const text =
        config(fullChildren(" <Hosts>", " <Hosts><Host>first</Host></Hosts>\n <Hosts>")
                   .replace("  <Mode>fast</Mode>\n", "  <Mode>slow</Mode>\n  <Mode>fast</Mode>\n")
                   .replace(" <Station>", " <Station><Name>first station</Name></Station>\n"
                                          " <Station>"));
    QCOMPARE(_loadText(text, errors), 1);
    // The first Station lacks all but Name; the second is never looked at.
    QCOMPARE(errors.size(), std::size_t(5));
    QCOMPARE(_value({"Station", "Name"}), std::string("first station"));
    QCOMPARE(_value({"Station", "Mode"}), std::string());
    QCOMPARE(_values({"Hosts"}), Lines({"first"}));

    errors.clear();
    QCOMPARE(
        _loadText(config(fullChildren("  <Mode>fast</Mode>\n", "  <Mode>slow</Mode>\n  <Mode>fast</Mode>\n")),
                  errors),
        0);
    QCOMPARE(_value({"Station", "Mode"}), std::string("slow"));
}

void TestConfigLoader::orderOfSectionsAndLeavesDoesNotMatter()
{
    Lines errors;
    QByteArray const text = config(" <Survey><Token>tok</Token><Exposure>3</Exposure></Survey>\n"
                                   " <Satellites/>\n"
                                   " <Ports><Port>1</Port></Ports>\n"
                                   " <Hosts/>\n"
                                   " <Station><Workdir>/w</Workdir><Enabled>false</Enabled><Mode>slow</Mode>"
                                   "<Gain>1.5</Gain><Antennas>10</Antennas><Name>n</Name></Station>\n"
                                   " <Service>survey</Service>\n"
                                   " <Version>1.0</Version>\n");
    QCOMPARE(_loadText(text, errors), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_value({"Version"}), std::string("1.0"));
    QCOMPARE(_value({"Service"}), std::string("survey"));
    QCOMPARE(_value({"Station", "Gain"}), std::string("1.5"));
    QCOMPARE(_value({"Station", "Name"}), std::string("n"));
    QCOMPARE(_value({"Survey", "Exposure"}), std::string("3"));
}

void TestConfigLoader::attributesAreNotRead()
{
    Lines errors;
    QByteArray const text =
        config(fullChildren("<Name>North dish</Name>", "<Name value=\"other\">North dish</Name>")
                   .replace("<Station>", "<Station Mode=\"slow\">"));
    QCOMPARE(_loadText(text, errors), 0);
    QCOMPARE(_value({"Station", "Name"}), std::string("North dish"));
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
}

void TestConfigLoader::hiddenAndOtherServiceParametersAreLoaded()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    Parameter *token = at(_root, {"Survey", "Token"});
    QVERIFY(!token->isVisible("tracking"));
    QVERIFY(!at(_root, {"Survey"})->isVisible("tracking"));
    QCOMPARE(_value({"Survey", "Token"}), std::string("s3cret"));
    QCOMPARE(_value({"Survey", "Exposure"}), std::string("12.5"));
}

void TestConfigLoader::valueIsWholeTextOfElement()
{
    Lines errors;
    QCOMPARE(
        _loadText(config(fullChildren("<Name>North dish</Name>", "<Name>  North <b>big</b> dish\n</Name>")),
                  errors),
        0);
    QCOMPARE(_value({"Station", "Name"}), std::string("  North big dish\n"));
}

void TestConfigLoader::nonAsciiTextIsKeptAsUtf8()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren("<Name>North dish</Name>", "<Name>Überwachung № 5 – Süd</Name>")),
                       errors),
             0);
    QCOMPARE(_value({"Station", "Name"}), std::string("\xC3\x9C"
                                                      "berwachung \xE2\x84\x96 5 \xE2\x80\x93 S\xC3\xBC"
                                                      "d"));
}

// ------------------------------------------------------------------ lists

void TestConfigLoader::emptyListElementEmptiesListWithMinimumZero()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(_value({"Hosts"}), std::string("alpha"));
    QCOMPARE(_loadText(config(fullChildren("<Hosts><Host>alpha</Host><Host>beta</Host></Hosts>", "<Hosts/>")),
                       errors),
             0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_values({"Hosts"}), Lines());
    QCOMPARE(_value({"Hosts"}), std::string());
}

void TestConfigLoader::emptyListElementKeepsItemsWithMinimumOne()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(_loadText(
                 config(fullChildren("<Ports><Port>4000</Port><Port>4001</Port></Ports>", "<Ports></Ports>")),
                 errors),
             0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_values({"Ports"}), Lines({"4000", "4001"}));
    QCOMPARE(_value({"Ports"}), std::string("4000"));
}

void TestConfigLoader::listItemsUnderAnyTagAreLoaded()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren("<Hosts><Host>alpha</Host><Host>beta</Host></Hosts>",
                                           "<Hosts><Item>a</Item><Host>b</Host><x>c</x></Hosts>")),
                       errors),
             0);
    QCOMPARE(_values({"Hosts"}), Lines({"a", "b", "c"}));
    QCOMPARE(_value({"Hosts"}), std::string("a"));
}

void TestConfigLoader::listWithRefusedItemKeepsEarlierItems()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    // Each number item is held against minOccurs 1: 0 is refused, and so the whole list.
    QCOMPARE(_loadText(config(fullChildren("<Ports><Port>4000</Port><Port>4001</Port></Ports>",
                                           "<Ports><Port>5</Port><Port>0</Port></Ports>")),
                       errors),
             0);
    QCOMPARE(errors, Lines());
    QCOMPARE(_values({"Ports"}), Lines({"4000", "4001"}));
}

// ------------------------------------------------------------------- TLEs

void TestConfigLoader::tleRecordLackingLine0IsReported()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QByteArray const bad = "  <TLE><Line1>" + tleLine1 + "</Line1><Line2>" + tleLine2 + "</Line2></TLE>\n";
    QCOMPARE(_loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), bad)), errors),
             1);
    QCOMPARE(errors, Lines({"Unexpected structure TLE node #0"}));
    QVERIFY(tles(_root, {"Satellites"})->getTLEs().empty());
}

void TestConfigLoader::badRecordBetweenGoodOnesIsSkippedAndNumbered()
{
    Lines errors;
    QByteArray const records = record("TLE", "ISS (ZARYA)", tleLine1, tleLine2)
                               + "  <TLE><Line0>broken</Line0><Line2>" + tleLine2 + "</Line2></TLE>\n"
                               + record("TLE", "PROGRESS-M 48", tleLine1b, tleLine2b);
    QCOMPARE(
        _loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), records)), errors),
        1);
    QCOMPARE(errors, Lines({"Unexpected structure TLE node #1"}));
    std::vector<ParameterListTLEs::TLE> const loaded = tles(_root, {"Satellites"})->getTLEs();
    QCOMPARE(loaded.size(), std::size_t(2));
    QCOMPARE(loaded[0].line0, std::string("ISS (ZARYA)"));
    QCOMPARE(loaded[1].line0, std::string("PROGRESS-M 48"));
    QCOMPARE(loaded[1].line1, tleLine1b.toStdString());
    QCOMPARE(loaded[1].line2, tleLine2b.toStdString());
}

void TestConfigLoader::tleItemsUnderOtherTagGiveEmptyList()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(tles(_root, {"Satellites"})->getTLEs().size(), std::size_t(1));
    QByteArray const records = record("Set", "ISS (ZARYA)", tleLine1, tleLine2)
                               + record("Set", "PROGRESS-M 48", tleLine1b, tleLine2b);
    QCOMPARE(
        _loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), records)), errors),
        0);
    QCOMPARE(errors, Lines());
    QVERIFY(tles(_root, {"Satellites"})->getTLEs().empty());
}

void TestConfigLoader::tleRecordsAfterFirstMayHaveAnyTag()
{
    Lines errors;
    QByteArray const records = record("TLE", "ISS (ZARYA)", tleLine1, tleLine2)
                               + record("Other", "PROGRESS-M 48", tleLine1b, tleLine2b);
    QCOMPARE(
        _loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), records)), errors),
        0);
    std::vector<ParameterListTLEs::TLE> const loaded = tles(_root, {"Satellites"})->getTLEs();
    QCOMPARE(loaded.size(), std::size_t(2));
    QCOMPARE(loaded[1].line0, std::string("PROGRESS-M 48"));
}

void TestConfigLoader::elementsBeforeFirstTleAreNotRecords()
{
    Lines errors;
    QByteArray const records = record("Other", "PROGRESS-M 48", tleLine1b, tleLine2b)
                               + "  <Note>text</Note>\n" + record("TLE", "ISS (ZARYA)", tleLine1, tleLine2)
                               + "  <Note>text</Note>\n";
    QCOMPARE(
        _loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), records)), errors),
        1);
    // The records count from the first "TLE": the note after it is #1.
    QCOMPARE(errors, Lines({"Unexpected structure TLE node #1"}));
    std::vector<ParameterListTLEs::TLE> const loaded = tles(_root, {"Satellites"})->getTLEs();
    QCOMPARE(loaded.size(), std::size_t(1));
    QCOMPARE(loaded[0].line0, std::string("ISS (ZARYA)"));
}

void TestConfigLoader::emptyTleRecordFieldsAreKept()
{
    Lines errors;
    QByteArray const records =
        "  <TLE><Line2>" + tleLine2 + "</Line2><Line0/><Line1>" + tleLine1 + "</Line1></TLE>\n";
    QCOMPARE(
        _loadText(config(fullChildren(record("TLE", "ISS (ZARYA)", tleLine1, tleLine2), records)), errors),
        0);
    std::vector<ParameterListTLEs::TLE> const loaded = tles(_root, {"Satellites"})->getTLEs();
    QCOMPARE(loaded.size(), std::size_t(1));
    QCOMPARE(loaded[0].line0, std::string());
    QCOMPARE(loaded[0].line1, tleLine1.toStdString());
    QCOMPARE(loaded[0].line2, tleLine2.toStdString());
}

// --------------------------------------------------------------- failures

void TestConfigLoader::unreadableFileIsNotOpened()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, _root, path(_dir.filePath("missing.conf"))), 2);
    QCOMPARE(errors, Lines({"XML is not opened"}));
}

void TestConfigLoader::malformedFileIsNotDomDocument()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    QCOMPARE(_loadText(config(fullChildren("<Mode>fast</Mode>", "<Mode>slow</Mod>")), errors), 2);
    QCOMPARE(errors, Lines({"XML is not dom document"}));
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
    QCOMPARE(_loadText(QByteArray(), errors), 2);
    QCOMPARE(errors, Lines({"XML is not dom document", "XML is not dom document"}));
}

void TestConfigLoader::deeplyNestedFileIsNotDomDocument()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    // Far past the depth at which QDom's parser overflows the stack.
    int const depth = 40000;
    QByteArray deep = fullChildren("<Mode>fast</Mode>", "<Mode>slow</Mode>") + " <Deep>";
    for (int i = 0; i < depth; ++i)
        deep += "<x>";
    for (int i = 0; i < depth; ++i)
        deep += "</x>";
    deep += "</Deep>\n";
    QCOMPARE(_loadText(config(deep), errors), 2);
    QCOMPARE(errors, Lines({"XML is not dom document"}));
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
}

void TestConfigLoader::nullRootIsReportedForReadableFile()
{
    ParameterComplex *none = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, none, path(dataPath("sample-full.conf"))), 2);
    QCOMPARE(errors, Lines({"Root parameter is not initialized"}));
    QCOMPARE(none, nullptr);
}

void TestConfigLoader::nullRootWithUnreadableFileReportsNotOpenedFirst()
{
    ParameterComplex *none = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, none, path(_dir.filePath("missing.conf"))), 2);
    QCOMPARE(errors, Lines({"XML is not opened"}));
}

void TestConfigLoader::nullRootWithMalformedFileReportsParseFirst()
{
    ParameterComplex *none = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, none, path(_write("<root>"))), 2);
    QCOMPARE(errors, Lines({"XML is not dom document"}));
}

void TestConfigLoader::otherRootElementChangesNothing()
{
    Lines errors;
    QCOMPARE(_loadText(config(fullChildren()), errors), 0);
    ParameterComplex *const before = _root;
    QCOMPARE(_loadText(config(fullChildren("<Mode>fast</Mode>", "<Mode>slow</Mode>"), "Root"), errors), 2);
    QCOMPARE(_loadText(config(fullChildren("<Mode>fast</Mode>", "<Mode>slow</Mode>"), "config"), errors), 2);
    QCOMPARE(errors, Lines({"Root parameter does not match root XML node",
                            "Root parameter does not match root XML node"}));
    QCOMPARE(_root, before);
    QCOMPARE(_value({"Station", "Mode"}), std::string("fast"));
}

void TestConfigLoader::nullChildIsReportedAndWalkGoesOn()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new FaultySection(&root, "s");
    auto *a = new ParameterSimple(section, "a", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    section->addNullChild();
    auto *b = new ParameterSimple(section, "b", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    ParameterComplex *rootPtr = &root;
    Lines errors;
    QCOMPARE(
        OrvexConfigLib::loadXML_knStruct(errors, rootPtr, path(_write(config(" <s><a>1</a><b>2</b></s>\n")))),
        1);
    QCOMPARE(errors, Lines({"Some child in the node \"->root->s\" is nullptr"}));
    QCOMPARE(a->getValue(), std::string("1"));
    QCOMPARE(b->getValue(), std::string("2"));
}

void TestConfigLoader::emptyKeyChildIsReportedAndWalkGoesOn()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new ParameterComplex(&root, "s", Parameter::VisualParams());
    new ParameterSimple(section, "", Parameter::VisualParams(), ParameterSimple::String,
                        ParameterSimple::Fasets());
    auto *b = new ParameterSimple(section, "b", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    auto *c = new ParameterSimple(&root, "c", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    ParameterComplex *rootPtr = &root;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, rootPtr, path(_write(config(" <s><b>2</b></s>\n")))),
             1);
    QCOMPARE(errors, Lines({"Some child in the node \"->root->s\" has empty key",
                            "Node \"->root->c\" not found in XML"}));
    QCOMPARE(b->getValue(), std::string("2"));
    QCOMPARE(c->getValue(), std::string());
}

void TestConfigLoader::earlierLinesStayInFront()
{
    Lines errors{"first", "second"};
    QCOMPARE(_loadText(config(fullChildren("  <Gain>0.75</Gain>\n", "")), errors), 1);
    QCOMPARE(errors, Lines({"first", "second", "Node \"->root->Station->Gain\" not found in XML"}));
}

void TestConfigLoader::firstCopyCountsWhenLaterCopyFollowsPredecessor_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("expected");
    // The first copy stands early in the file; the later one stands right after the
    // element found just before it (its predecessor in schema order), where the
    // walk looks first.
    QTest::newRow("leaf") << config(fullChildren("  <Name>North dish</Name>\n",
                                                 "  <Mode>slow</Mode>\n  <Name>North dish</Name>\n"))
                          << QStringList({"Station", "Mode"}) << "slow";
    QTest::newRow("section")
        << config(fullChildren().replace(" <Version>", " <Station>\n  <Name>first station</Name>\n"
                                                       "  <Antennas>3</Antennas>\n  <Gain>0.75</Gain>\n"
                                                       "  <Mode>slow</Mode>\n  <Enabled>true</Enabled>\n"
                                                       "  <Workdir>/srv</Workdir>\n </Station>\n <Version>"))
        << QStringList({"Station", "Name"}) << "first station";
}

void TestConfigLoader::firstCopyCountsWhenLaterCopyFollowsPredecessor()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, keys);
    QFETCH(QString, expected);
    Lines errors;
    QCOMPARE(_loadText(text, errors), 0);
    QCOMPARE(errors, Lines());
    std::vector<std::string> path;
    for (QString const &key : keys)
        path.push_back(key.toStdString());
    QCOMPARE(_value(path), expected.toStdString());
}

void TestConfigLoader::manySiblingsStillFindFirstElementOfEachKey()
{
    int const count = 3000;
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new ParameterComplex(&root, "s", Parameter::VisualParams());
    std::vector<ParameterSimple *> leaves;
    for (int i = 0; i < count; ++i)
        leaves.push_back(new ParameterSimple(section, "k" + std::to_string(i), Parameter::VisualParams(),
                                             ParameterSimple::String, ParameterSimple::Fasets()));
    // The file holds each key twice, in reverse order, the first copy with
    // the wanted value; every third key is missing altogether.
    QByteArray children = " <s>\n";
    for (int round = 0; round < 2; ++round) {
        for (int i = count - 1; i >= 0; --i) {
            if (i % 3 == 2)
                continue;
            children += "  <k" + QByteArray::number(i) + ">" + (round == 0 ? "v" : "late")
                        + QByteArray::number(i) + "</k" + QByteArray::number(i) + ">\n";
        }
    }
    children += " </s>\n";
    ParameterComplex *rootPtr = &root;
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, rootPtr, path(_write(config(children)))), 1);
    QCOMPARE(errors.size(), std::size_t(count / 3));
    QCOMPARE(errors.front(), std::string("Node \"->root->s->k2\" not found in XML"));
    for (int i = 0; i < count; ++i) {
        std::string const expected = i % 3 == 2 ? std::string() : "v" + std::to_string(i);
        QCOMPARE(leaves[std::size_t(i)]->getValue(), expected);
    }
}

// ----------------------------------------------------------------- locale

void TestConfigLoader::numbersReadWithDecimalPointUnderGermanLocale()
{
    LocaleGuard const restore;
    QVERIFY2(std::setlocale(LC_ALL, "de_DE.UTF-8"), "the de_DE.UTF-8 locale is not installed");
    // The process now writes one and a half as 1,5.
    QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(","));

    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(dataPath("sample-schema.xsd"))), 0);
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(errors, Lines());
    ParameterSimple *gain = simple(root, {"Station", "Gain"});
    QCOMPARE(gain->getFasets().minValue, 0.5);
    QCOMPARE(gain->getFasets().maxValue, 1.5);

    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, path(dataPath("sample-full.conf"))), 0);
    QCOMPARE(gain->getValue(), std::string("0.75"));
    // 0.5 itself is in range and 1.6 is not; "1,6" reads as 1 and passes.
    std::string const file05 = path(_write(config(fullChildren("<Gain>0.75</Gain>", "<Gain>0.5</Gain>"))));
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, file05), 0);
    QCOMPARE(gain->getValue(), std::string("0.5"));
    std::string const file16 = path(_write(config(fullChildren("<Gain>0.75</Gain>", "<Gain>1.6</Gain>"))));
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, file16), 0);
    QCOMPARE(gain->getValue(), std::string("0.5"));
    std::string const file1comma6 =
        path(_write(config(fullChildren("<Gain>0.75</Gain>", "<Gain>1,6</Gain>"))));
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, file1comma6), 0);
    QCOMPARE(gain->getValue(), std::string("1,6"));
}

QTEST_GUILESS_MAIN(TestConfigLoader)
#include "tst_configloader.moc"
