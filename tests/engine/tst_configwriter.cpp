// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "enginefixture.h"
#include "golden.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"
#include "parambuilders.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <memory>

using namespace enginefixture;

namespace {

std::string const tleLine1 = "1 25544U 98067A   04005.51955591  .00019728  00000-0  19085-3 0  9701";
std::string const tleLine2 = "2 25544  51.6297  78.4979 0006431 344.6528 119.5204 15.66405366292649";
std::string const tleLine1b = "1 27873U 03039A   04004.82500000  .00018733  00000-0  18171-3 0  1068";
std::string const tleLine2b = "2 27873  51.6298  82.0291 0006742 342.9757 161.9609 15.66375652 20143";

std::unique_ptr<ParameterComplex> newRoot(std::string const &key = "root")
{
    return std::make_unique<ParameterComplex>(nullptr, key, Parameter::VisualParams());
}

ParameterSimple *newLeaf(ParameterComplex *parent, std::string const &key, std::string const &value,
                         Parameter::VisualParams const &visual = Parameter::VisualParams())
{
    auto *leaf = new ParameterSimple(parent, key, visual, ParameterSimple::String, ParameterSimple::Fasets());
    leaf->setValue(value);
    return leaf;
}

ParameterList *newList(ParameterComplex *parent, std::string const &key, std::string const &listKey,
                       Lines const &items)
{
    auto *list = new ParameterList(parent, key, listKey, Parameter::VisualParams(), ParameterSimple::String,
                                   builders::atLeast(0));
    list->setValues(items);
    return list;
}

ParameterListTLEs *newTLEs(ParameterComplex *parent, std::string const &key, std::string const &listKey,
                           std::vector<ParameterListTLEs::TLE> const &records)
{
    auto *list = new ParameterListTLEs(parent, key, listKey, Parameter::VisualParams());
    list->setTLEs(records);
    return list;
}

// Switches the codec that text streams take by default, for one test.
class LocaleCodecGuard
{
public:
    explicit LocaleCodecGuard(QByteArray const &name) : _saved(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~LocaleCodecGuard() { QTextCodec::setCodecForLocale(_saved); }

private:
    QTextCodec *_saved;
};

} // namespace

class TestConfigWriter : public QObject
{
    Q_OBJECT

private:
    QString _file(QString const &name) { return _dir.filePath(name); }
    void _compareWithGolden(QString const &written, QString const &golden);

    QTemporaryDir _dir;

private slots:
    void exampleShapeIsPrintedLineByLine();
    void treeWithoutChildrenGivesEmptyRoot();
    void emptyValueSectionAndListsGiveElementsWithoutContent();
    void markupCharactersAreEscapedAndComeBack();
    void tleRecordsArePrintedAndComeBack();
    void loadedSampleIsWrittenAsItWasRead();
    void writtenSampleValidatesAgainstSchema();
    void hiddenAndOtherServiceParametersAreWritten();
    void listItemsTakeListKeyAsTag();
    void tleListWithOtherKeyComesBackEmpty();
    void valuesAreNotCheckedAgainstFacets();
    void textStopsAtFirstNulByte();
    void streamUsesDefaultCodec();
    void nonAsciiComesBackWithUtf8Codec();

    void directoryThatDoesNotExistIsNotCreated();
    void nullRootLeavesEmptyFile();
    void emptyRootKeyLeavesEmptyFile();
    void nullChildIsLeftOutWithLine();
    void emptyKeyChildIsLeftOutWithLine();
    void faultLinesComeInWalkOrder();
    void earlierLinesStayInFront();
};

void TestConfigWriter::_compareWithGolden(QString const &written, QString const &golden)
{
    QString failure;
    QVERIFY2(matchesGolden(readFile(written), dataPath(QStringLiteral("golden/") + golden), &failure),
             qPrintable(failure));
}

void TestConfigWriter::exampleShapeIsPrintedLineByLine()
{
    auto root = newRoot();
    newLeaf(root.get(), "a", "1");
    auto *s = new ParameterComplex(root.get(), "s", Parameter::VisualParams());
    newLeaf(s, "b", "2");
    newList(root.get(), "l", "i", {"x", "y"});
    Lines errors;
    QString const file = _file("shape.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(readFile(file), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                        "<root>\n"
                                        " <a>1</a>\n"
                                        " <s>\n"
                                        "  <b>2</b>\n"
                                        " </s>\n"
                                        " <l>\n"
                                        "  <i>x</i>\n"
                                        "  <i>y</i>\n"
                                        " </l>\n"
                                        "</root>\n"));
    _compareWithGolden(file, "shape.conf");
}

void TestConfigWriter::treeWithoutChildrenGivesEmptyRoot()
{
    auto root = newRoot();
    Lines errors;
    QString const file = _file("empty-root.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    _compareWithGolden(file, "empty-root.conf");
}

void TestConfigWriter::emptyValueSectionAndListsGiveElementsWithoutContent()
{
    auto root = newRoot();
    newLeaf(root.get(), "a", "");
    new ParameterComplex(root.get(), "s", Parameter::VisualParams());
    newList(root.get(), "l", "i", {});
    newTLEs(root.get(), "t", "TLE", {});
    Lines errors;
    QString const file = _file("empty-parts.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QCOMPARE(errors, Lines());
    _compareWithGolden(file, "empty-parts.conf");
}

void TestConfigWriter::markupCharactersAreEscapedAndComeBack()
{
    // QDom escapes '>' only where it would close a character data section.
    std::string const value = "if a < b && c > d then \"quoted\" and 'single' ]]>";
    Lines const items{"<tag attr=\"v\"/>", "&amp; stays literal"};
    std::string const name = "R&D <1>";
    auto root = newRoot();
    newLeaf(root.get(), "a", value);
    newList(root.get(), "l", "i", items);
    newTLEs(root.get(), "t", "TLE", {{name, tleLine1, tleLine2}});
    Lines errors;
    QString const file = _file("special-characters.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    _compareWithGolden(file, "special-characters.conf");

    auto again = newRoot();
    ParameterSimple *a = newLeaf(again.get(), "a", "before");
    ParameterList *l = newList(again.get(), "l", "i", {});
    ParameterListTLEs *t = newTLEs(again.get(), "t", "TLE", {});
    ParameterComplex *againPtr = again.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, againPtr, path(file)), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(a->getValue(), value);
    QCOMPARE(l->getValues(), items);
    QCOMPARE(t->getTLEs().size(), std::size_t(1));
    QCOMPARE(t->getTLEs()[0].line0, name);
}

void TestConfigWriter::tleRecordsArePrintedAndComeBack()
{
    auto root = newRoot();
    newTLEs(root.get(), "Satellites", "TLE",
            {{"ISS (ZARYA)", tleLine1, tleLine2}, {"", tleLine1b, tleLine2b}});
    Lines errors;
    QString const file = _file("tles.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    _compareWithGolden(file, "tles.conf");

    auto again = newRoot();
    ParameterListTLEs *t = newTLEs(again.get(), "Satellites", "TLE", {});
    ParameterComplex *againPtr = again.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, againPtr, path(file)), 0);
    QCOMPARE(errors, Lines());
    std::vector<ParameterListTLEs::TLE> const records = t->getTLEs();
    QCOMPARE(records.size(), std::size_t(2));
    QCOMPARE(records[0].line0, std::string("ISS (ZARYA)"));
    QCOMPARE(records[0].line1, tleLine1);
    QCOMPARE(records[0].line2, tleLine2);
    QCOMPARE(records[1].line0, std::string());
    QCOMPARE(records[1].line1, tleLine1b);
    QCOMPARE(records[1].line2, tleLine2b);
}

void TestConfigWriter::loadedSampleIsWrittenAsItWasRead()
{
    Lines errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, path(dataPath("sample-full.conf"))), 0);
    QString const file = _file("sample-full.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root, path(file)), 0);
    QCOMPARE(errors, Lines());
    QString failure;
    QVERIFY2(matchesGolden(readFile(file), dataPath("sample-full.conf"), &failure), qPrintable(failure));
}

void TestConfigWriter::writtenSampleValidatesAgainstSchema()
{
    Lines errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(dataPath("sample-schema.xsd"))), 0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, path(dataPath("sample-full.conf"))), 0);
    simple(root, {"Station", "Mode"})->setValue("slow");
    list(root, {"Hosts"})->setValues({});
    QString const file = _file("sample-edited.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root, path(file)), 0);
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(dataPath("sample-schema.xsd")), path(file)), 0);
    QCOMPARE(errors, Lines());
}

void TestConfigWriter::hiddenAndOtherServiceParametersAreWritten()
{
    Parameter::VisualParams hidden;
    hidden.isvisible = false;
    Parameter::VisualParams surveyOnly;
    surveyOnly.services = {"survey"};
    auto root = newRoot();
    newLeaf(root.get(), "Service", "tracking");
    newLeaf(root.get(), "Hidden", "h", hidden);
    auto *survey = new ParameterComplex(root.get(), "Survey", surveyOnly);
    newLeaf(survey, "Exposure", "12.5");
    Lines errors;
    QString const file = _file("services.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QCOMPARE(readFile(file),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <Service>tracking</Service>\n"
                        " <Hidden>h</Hidden>\n <Survey>\n  <Exposure>12.5</Exposure>\n </Survey>\n"
                        "</root>\n"));
}

void TestConfigWriter::listItemsTakeListKeyAsTag()
{
    auto root = newRoot();
    newList(root.get(), "Hosts", "Host", {"alpha", "beta"});
    Lines errors;
    QString const file = _file("hosts.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QVERIFY(readFile(file).contains(" <Hosts>\n  <Host>alpha</Host>\n  <Host>beta</Host>\n </Hosts>\n"));
}

void TestConfigWriter::tleListWithOtherKeyComesBackEmpty()
{
    auto root = newRoot();
    newTLEs(root.get(), "Satellites", "Set", {{"ISS (ZARYA)", tleLine1, tleLine2}});
    Lines errors;
    QString const file = _file("sets.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QVERIFY(readFile(file).contains(" <Satellites>\n  <Set>\n   <Line0>ISS (ZARYA)</Line0>\n"));

    // The loader finds the first record by the tag "TLE" only.
    auto again = newRoot();
    ParameterListTLEs *t = newTLEs(again.get(), "Satellites", "Set", {{"old", tleLine1b, tleLine2b}});
    ParameterComplex *againPtr = again.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, againPtr, path(file)), 0);
    QCOMPARE(errors, Lines());
    QVERIFY(t->getTLEs().empty());
}

void TestConfigWriter::valuesAreNotCheckedAgainstFacets()
{
    ParameterSimple::Fasets const oneToTen = builders::range(1, 10);
    auto root = newRoot();
    auto *count = new ParameterSimple(root.get(), "Count", Parameter::VisualParams(),
                                      ParameterSimple::Integer, oneToTen);
    QVERIFY(count->setValue("7abc"));
    ParameterSimple::Fasets const atLeastThree = builders::atLeast(3);
    auto *items = new ParameterList(root.get(), "Items", "Item", Parameter::VisualParams(),
                                    ParameterSimple::String, atLeastThree);
    items->addValue("only one");
    Lines errors;
    QString const file = _file("facets.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QCOMPARE(errors, Lines());
    QVERIFY(readFile(file).contains(" <Count>7abc</Count>\n <Items>\n  <Item>only one</Item>\n </Items>\n"));
}

void TestConfigWriter::textStopsAtFirstNulByte()
{
    auto root = newRoot();
    newLeaf(root.get(), "a", std::string("abc\0def", 7));
    Lines errors;
    QString const file = _file("nul.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    QVERIFY(readFile(file).contains(" <a>abc</a>\n"));
}

void TestConfigWriter::streamUsesDefaultCodec()
{
    LocaleCodecGuard const latin1("ISO-8859-1");
    auto root = newRoot();
    newLeaf(root.get(), "a",
            "\xC3\x9C"
            "ber");
    Lines errors;
    QString const file = _file("latin1.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    // The declaration says UTF-8 whatever the codec; the text follows the codec.
    QCOMPARE(readFile(file), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <a>\xDC"
                                        "ber</a>\n</root>\n"));
}

void TestConfigWriter::nonAsciiComesBackWithUtf8Codec()
{
    LocaleCodecGuard const utf8("UTF-8");
    std::string const value = "\xC3\x9C"
                              "berwachung \xE2\x84\x96 5";
    auto root = newRoot();
    newLeaf(root.get(), "a", value);
    Lines errors;
    QString const file = _file("utf8.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 0);
    auto again = newRoot();
    ParameterSimple *a = newLeaf(again.get(), "a", "");
    ParameterComplex *againPtr = again.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, againPtr, path(file)), 0);
    QCOMPARE(a->getValue(), value);
}

// --------------------------------------------------------------- failures

void TestConfigWriter::directoryThatDoesNotExistIsNotCreated()
{
    auto root = newRoot();
    newLeaf(root.get(), "a", "1");
    Lines errors;
    QString const file = _file("no/such/dir/out.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 2);
    QCOMPARE(errors, Lines({"XML is not created"}));
    QVERIFY(!QFile::exists(file));
    // The file is opened before the tree is looked at.
    QCOMPARE(OrvexConfigLib::writeXML(errors, nullptr, path(file)), 2);
    QCOMPARE(errors, Lines({"XML is not created", "XML is not created"}));
}

void TestConfigWriter::nullRootLeavesEmptyFile()
{
    QString const file = writeFile(_dir, "existing-null.conf", readFile(dataPath("sample-full.conf")));
    QVERIFY(QFileInfo(file).size() > 0);
    Lines errors;
    QCOMPARE(OrvexConfigLib::writeXML(errors, nullptr, path(file)), 2);
    QCOMPARE(errors, Lines({"Root parameter is not initialized"}));
    QVERIFY(QFile::exists(file));
    QCOMPARE(readFile(file), QByteArray());
}

void TestConfigWriter::emptyRootKeyLeavesEmptyFile()
{
    QString const file = writeFile(_dir, "existing-empty-key.conf", readFile(dataPath("sample-full.conf")));
    auto root = newRoot("");
    newLeaf(root.get(), "a", "1");
    Lines errors;
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 2);
    QCOMPARE(errors, Lines({"Root parameter key is empty"}));
    QCOMPARE(readFile(file), QByteArray());
}

void TestConfigWriter::nullChildIsLeftOutWithLine()
{
    auto root = newRoot();
    auto *s = new FaultySection(root.get(), "s");
    newLeaf(s, "a", "1");
    s->addNullChild();
    newLeaf(s, "b", "2");
    Lines errors;
    QString const file = _file("null-child.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 1);
    QCOMPARE(errors, Lines({"Some child in the node \"->root->s\" is nullptr"}));
    QCOMPARE(readFile(file),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <s>\n  <a>1</a>\n"
                        "  <b>2</b>\n </s>\n</root>\n"));
}

void TestConfigWriter::emptyKeyChildIsLeftOutWithLine()
{
    auto root = newRoot();
    newLeaf(root.get(), "", "lost");
    newLeaf(root.get(), "b", "2");
    Lines errors;
    QString const file = _file("empty-key.conf");
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(file)), 1);
    QCOMPARE(errors, Lines({"Some child in the node \"->root\" has empty key"}));
    QCOMPARE(readFile(file),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <b>2</b>\n</root>\n"));
}

void TestConfigWriter::faultLinesComeInWalkOrder()
{
    auto root = newRoot();
    auto *s = new FaultySection(root.get(), "s");
    auto *inner = new FaultySection(s, "inner");
    newLeaf(inner, "", "x");
    inner->addNullChild();
    s->addNullChild();
    newLeaf(root.get(), "", "y");
    Lines errors;
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(_file("order.conf"))), 1);
    QCOMPARE(errors, Lines({"Some child in the node \"->root->s->inner\" has empty key",
                            "Some child in the node \"->root->s->inner\" is nullptr",
                            "Some child in the node \"->root->s\" is nullptr",
                            "Some child in the node \"->root\" has empty key"}));
}

void TestConfigWriter::earlierLinesStayInFront()
{
    Lines errors{"earlier"};
    QCOMPARE(OrvexConfigLib::writeXML(errors, nullptr, path(_file("earlier.conf"))), 2);
    QCOMPARE(errors, Lines({"earlier", "Root parameter is not initialized"}));
}

QTEST_GUILESS_MAIN(TestConfigWriter)
#include "tst_configwriter.moc"
