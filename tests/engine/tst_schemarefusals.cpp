// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Schemas the reader refuses, what it leaves behind then, and how its
// messages name a place in the tree.

#include "schemafixture.h"

#include <QtTest>

using namespace enginefixture;

class TestSchemaRefusals : public QObject, private SchemaFiles
{
    Q_OBJECT

private slots:
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

// -------------------------------------------------------------- failures

void TestSchemaRefusals::rootWithCapitalIsNotOrvexSchema()
{
    Loaded const loaded = _load(schema(leaf("a", "xs:string"), QByteArray(), "Root"));
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
    QVERIFY(!loaded.root);
}

void TestSchemaRefusals::firstTopLevelElementMustBeRoot()
{
    Loaded const loaded =
        _load(schema(leaf("a", "xs:string"), QByteArray(), "config")
                  .replace("</xs:schema>", "  <xs:element name=\"root\" type=\"xs:string\"/>\n"
                                           "</xs:schema>"));
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
}

void TestSchemaRefusals::schemaWithoutElementIsNotOrvexSchema()
{
    Loaded const loaded =
        _load("<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
              + namedTypes() + "</xs:schema>\n");
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not orvex schema"}));
}

void TestSchemaRefusals::failureLeavesRootUntouched()
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

void TestSchemaRefusals::successDoesNotDeleteEarlierTree()
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

void TestSchemaRefusals::invalidSchemaIsRefusedBeforeReading()
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

void TestSchemaRefusals::readerRefusesTextThatIsNotXml()
{
    Loaded const loaded =
        _read("<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"><xs:element name=\"root\">");
    QCOMPARE(loaded.status, 2);
    QCOMPARE(loaded.errors, Lines({"XSD schema is not dom document"}));
    QVERIFY(!loaded.root);
}

void TestSchemaRefusals::readerRefusesUnreadableFile()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    QCOMPARE(OrvexConfigLib::_readSchema(errors, root, path(_dir.filePath("nowhere.xsd"))), 2);
    QCOMPARE(errors, Lines({"XSD schema is not dom document"}));
    QVERIFY(!root);
}

void TestSchemaRefusals::readerRefusesDeeplyNestedSchema()
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

void TestSchemaRefusals::loadRefusesDeeplyNestedSchemaAtItsDepth()
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

void TestSchemaRefusals::nestingScanIgnoresMarkupInCommentsQuotesAndCData()
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

void TestSchemaRefusals::nestingScanReadsWideEncodings()
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


void TestSchemaRefusals::hierarchyGivesQuotedPath()
{
    QCOMPARE(OrvexConfigLib::_hierarchy(nullptr), std::string("\"\""));
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *a = new ParameterComplex(&root, "a", Parameter::VisualParams());
    auto *b = new ParameterSimple(a, "b", Parameter::VisualParams(), ParameterSimple::String,
                                  ParameterSimple::Fasets());
    QCOMPARE(OrvexConfigLib::_hierarchy(&root), std::string("\"->root\""));
    QCOMPARE(OrvexConfigLib::_hierarchy(b), std::string("\"->root->a->b\""));
}

QTEST_GUILESS_MAIN(TestSchemaRefusals)
#include "tst_schemarefusals.moc"
