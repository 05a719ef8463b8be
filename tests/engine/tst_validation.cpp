// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "enginefixture.h"
#include "golden.h"

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "model/parameter.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <memory>

using namespace enginefixture;

namespace {

// A schema of seven lines and more whose seventh line closes an element with
// the wrong tag.
QByteArray const brokenOnLine7 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
                                 "  <xs:element name=\"root\">\n"
                                 "    <xs:complexType>\n"
                                 "      <xs:sequence>\n"
                                 "        <xs:element name=\"a\"><xs:simpleType><xs:restriction "
                                 "base=\"xs:string\"/></xs:simpleType></xs:element>\n"
                                 "        <xs:element name=\"b\"><xs:simpleType><xs:restriction "
                                 "base=\"xs:string\"/></xs:simpleType></xs:elemnt>\n"
                                 "      </xs:sequence>\n"
                                 "    </xs:complexType>\n"
                                 "  </xs:element>\n"
                                 "</xs:schema>\n";

// A schema that takes a type from `location` (an include without namespace,
// or an import of one) and uses it on line 8 when `useType` is set.
QByteArray schemaReaching(QByteArray const &location, bool import, bool useType)
{
    QByteArray const reach =
        import ? "  <xs:import namespace=\"urn:orvex:types\" schemaLocation=\"" + location + "\"/>\n"
               : "  <xs:include schemaLocation=\"" + location + "\"/>\n";
    QByteArray const base = !useType ? "xs:string" : import ? "t:StationType" : "StationType";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" xmlns:t=\"urn:orvex:types\">\n"
           + reach
           + "  <xs:element name=\"root\">\n"
             "    <xs:complexType>\n"
             "      <xs:sequence>\n"
             "        <xs:element name=\"Station\">\n"
             "          <xs:simpleType><xs:restriction base=\""
           + base
           + "\"/></xs:simpleType>\n"
             "        </xs:element>\n"
             "      </xs:sequence>\n"
             "    </xs:complexType>\n"
             "  </xs:element>\n"
             "</xs:schema>\n";
}

QByteArray typesSchema(bool import)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xs:schema "
           "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\""
           + QByteArray(import ? " targetNamespace=\"urn:orvex:types\"" : "")
           + ">\n  <xs:simpleType name=\"StationType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
             "</xs:schema>\n";
}

// An HTTP server on the loopback, in a thread of its own (Qt's schema
// classes fetch synchronously and block the thread that asks), which serves
// the types schema to whoever asks and counts the connections. Had a request
// left the engine, it would be counted here before the engine returned, and
// answered, so the outcome would differ too.
class CountingServer : public QThread
{
public:
    CountingServer()
    {
        start();
        _listening.acquire();
    }
    ~CountingServer() override
    {
        quit();
        wait();
    }

    QByteArray url(QByteArray const &file) const
    {
        return "http://127.0.0.1:" + QByteArray::number(_port) + "/" + file;
    }
    bool isListening() const { return _port != 0; }

    std::atomic<int> connections{0};

protected:
    void run() override
    {
        QTcpServer server;
        if (server.listen(QHostAddress::LocalHost))
            _port = server.serverPort();
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this, &server] {
            while (QTcpSocket *socket = server.nextPendingConnection()) {
                ++connections;
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                    socket->readAll();
                    QByteArray const body = typesSchema(false);
                    socket->write("HTTP/1.0 200 OK\r\nContent-Type: application/xml\r\nContent-Length: "
                                  + QByteArray::number(body.size()) + "\r\n\r\n" + body);
                    socket->disconnectFromHost();
                });
            }
        });
        _listening.release();
        exec();
    }

private:
    QSemaphore _listening;
    quint16 _port = 0;
};

} // namespace

class TestValidation : public QObject
{
    Q_OBJECT

private:
    QString _write(QByteArray const &text, QString const &suffix = QStringLiteral("xsd"));

    QTemporaryDir _dir;
    int _files = 0;

private slots:
    void validSchemaGivesZeroAndNoLine();
    void missingSchemaGivesOneLineWithoutLocation();
    void schemaSyntaxErrorOnLine7IsLocatedThere();
    void schemaThatIsNotValidIsReportedWithLocation();
    void schemaVerdictGivesLinesInOrder_data();
    void schemaVerdictGivesLinesInOrder();
    void deeplyNestedSchemaIsNotLoadedWithDepthLocation();

    void validConfigurationGivesZero();
    void valueOutsideEnumerationIsLocatedNotQuoted();
    void missingConfigurationIsNotOpenedAtMinusOne();
    void brokenSchemaStopsBeforeConfiguration();
    void deeplyNestedConfigurationIsNotValidWithDepthLocation();
    void earlierLinesStayInFront();

    void messageHandlerKeepsLastMessage();

    void remoteIncludeIsLeftOutLikeMissingLocalOne_data();
    void remoteIncludeIsLeftOutLikeMissingLocalOne();
    void remoteTypesFailLikeMissingLocalOnes_data();
    void remoteTypesFailLikeMissingLocalOnes();
    void localIncludeIsRead();
    void noRequestLeavesTheProcess();

    void loadXSDandXMLFillsTree();
    void loadXSDandXMLRefusesInvalidConfiguration();
    void loadXSDandXMLReportsMissingOptionalNode();
    void updateKeepsOldValuesAndAddsNewParameters();
    void updateMayWriteOverTheOldFile();
    void updateWithOldFileLackingNodeKeepsBaseValue();
    void updateWithBaseLackingNodeFails();
    void updateWithInvalidBaseFails();
    void updateWithUnreadableOldFileFails();
    void updateWithUnwritableTargetFails();
};

QString TestValidation::_write(QByteArray const &text, QString const &suffix)
{
    return writeFile(_dir, QStringLiteral("file-%1.%2").arg(++_files).arg(suffix), text);
}

// ------------------------------------------------------------- the schema

void TestValidation::validSchemaGivesZeroAndNoLine()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(dataPath("sample-schema.xsd"))), 0);
    QCOMPARE(errors, Lines());
}

void TestValidation::missingSchemaGivesOneLineWithoutLocation()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(_dir.filePath("missing.xsd"))), 2);
    QCOMPARE(errors, Lines({"XSD schema is not opened"}));
}

void TestValidation::schemaSyntaxErrorOnLine7IsLocatedThere()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(_write(brokenOnLine7))), 2);
    // Qt's parser stops just past the end tag that doesn't match.
    int const column = brokenOnLine7.split('\n').at(6).indexOf("</xs:elemnt>") + int(qstrlen("</xs:elemnt>"));
    QCOMPARE(errors, Lines({"XSD schema is not load",
                            "file is invalid at: line: 7, column: " + std::to_string(column)}));
}

void TestValidation::schemaThatIsNotValidIsReportedWithLocation()
{
    // Well-formed, but the base type on line 6 doesn't exist.
    Lines errors;
    QByteArray const text = schema(leaf("a", "NoSuchType"));
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(_write(text))), 2);
    QCOMPARE(errors.size(), std::size_t(2));
    // Qt's load answers with the validity, so the first test already says no.
    QCOMPARE(errors[0], std::string("XSD schema is not load"));
    // Just past the start tag of the restriction.
    QByteArray const restriction = "<xs:restriction base=\"NoSuchType\">";
    int const column = text.split('\n').at(5).indexOf(restriction) + restriction.size();
    QCOMPARE(errors[1], "file is invalid at: line: 6, column: " + std::to_string(column));
}

void TestValidation::schemaVerdictGivesLinesInOrder_data()
{
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("loaded and valid") << true << true << 0 << QStringList({"before"});
    QTest::newRow("not loaded") << false << false << 2
                                << QStringList({"before", "XSD schema is not load",
                                                "file is invalid at: line: 3, column: 9"});
    QTest::newRow("loaded, not valid")
        << true << false << 2
        << QStringList({"before", "XSD schema is not valid", "file is invalid at: line: 3, column: 9"});
}

void TestValidation::schemaVerdictGivesLinesInOrder()
{
    QFETCH(bool, loaded);
    QFETCH(bool, valid);
    QFETCH(int, status);
    QFETCH(QStringList, lines);
    Lines errors{"before"};
    QCOMPARE(OrvexConfigLib::_schemaVerdict(errors, loaded, valid, QSourceLocation(QUrl(), 3, 9)), status);
    QStringList got;
    for (std::string const &line : errors)
        got << QString::fromStdString(line);
    QCOMPARE(got, lines);
}

void TestValidation::deeplyNestedSchemaIsNotLoadedWithDepthLocation()
{
    // Far past the depth at which Qt's schema parser overflows the stack.
    int const depth = 40000;
    QByteArray text = "<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n";
    for (int i = 0; i < depth; ++i)
        text += "<xs:element name=\"root\"><xs:complexType><xs:sequence>";
    for (int i = 0; i < depth; ++i)
        text += "</xs:sequence></xs:complexType></xs:element>";
    text += "\n</xs:schema>\n";
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(_write(text))), 2);
    // Line 3 holds all of the nesting; the limit is passed within it.
    QCOMPARE(errors.size(), std::size_t(2));
    QCOMPARE(errors[0], std::string("XSD schema is not load"));
    QVERIFY2(QByteArray::fromStdString(errors[1]).startsWith("file is invalid at: line: 3, column: "),
             errors[1].c_str());
    int const column = QByteArray::fromStdString(errors[1]).split(' ').last().toInt();
    QCOMPARE(text.split('\n').at(2).left(column).count('<'), OrvexConfigLib::_maxNesting);
}

// -------------------------------------------------------- configurations

void TestValidation::validConfigurationGivesZero()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(dataPath("sample-schema.xsd")),
                                         path(dataPath("sample-full.conf"))),
             0);
    QCOMPARE(errors, Lines());
}

void TestValidation::valueOutsideEnumerationIsLocatedNotQuoted()
{
    QByteArray text = readFile(dataPath("sample-full.conf"));
    text.replace("<Mode>fast</Mode>", "<Mode>medium</Mode>");
    Lines errors;
    QCOMPARE(
        OrvexConfigLib::validateXML(errors, path(dataPath("sample-schema.xsd")), path(_write(text, "conf"))),
        2);
    int const line = text.left(text.indexOf("<Mode>")).count('\n') + 1;
    QCOMPARE(line, 9);
    // Just past the start tag of the element whose text is refused.
    int const column = text.split('\n').at(line - 1).indexOf("<Mode>") + int(qstrlen("<Mode>"));
    QCOMPARE(errors,
             Lines({"XML is not valid", "file is invalid at: line: 9, column: " + std::to_string(column)}));
}

void TestValidation::missingConfigurationIsNotOpenedAtMinusOne()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(dataPath("sample-schema.xsd")),
                                         path(_dir.filePath("none.conf"))),
             2);
    QCOMPARE(errors, Lines({"XML is not opened", "file is invalid at: line: -1, column: -1"}));
}

void TestValidation::brokenSchemaStopsBeforeConfiguration()
{
    Lines errors;
    QCOMPARE(
        OrvexConfigLib::validateXML(errors, path(_write(brokenOnLine7)), path(_dir.filePath("none.conf"))),
        2);
    QCOMPARE(errors.size(), std::size_t(2));
    QCOMPARE(errors[0], std::string("XSD schema is not load"));
    QVERIFY(QByteArray::fromStdString(errors[1]).startsWith("file is invalid at: line: 7, column: "));

    errors.clear();
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(_dir.filePath("missing.xsd")),
                                         path(dataPath("sample-full.conf"))),
             2);
    QCOMPARE(errors, Lines({"XSD schema is not opened"}));
}

void TestValidation::deeplyNestedConfigurationIsNotValidWithDepthLocation()
{
    // A schema that allows any depth, so that only the depth is wrong.
    QByteArray const recursive =
        "<?xml version=\"1.0\"?>\n"
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
        "  <xs:complexType name=\"T\"><xs:sequence>"
        "<xs:element name=\"x\" type=\"T\" minOccurs=\"0\"/></xs:sequence></xs:complexType>\n"
        "  <xs:element name=\"root\" type=\"T\"/>\n"
        "</xs:schema>\n";
    QString const xsd = _write(recursive);
    QByteArray shallow = "<?xml version=\"1.0\"?>\n<root>";
    for (int i = 0; i < 100; ++i)
        shallow += "<x>";
    for (int i = 0; i < 100; ++i)
        shallow += "</x>";
    shallow += "</root>\n";
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(xsd), path(_write(shallow, "conf"))), 0);

    int const depth = 40000;
    QByteArray deep = "<?xml version=\"1.0\"?>\n<root>\n";
    for (int i = 0; i < depth; ++i)
        deep += "<x>\n";
    for (int i = 0; i < depth; ++i)
        deep += "</x>";
    deep += "</root>\n";
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(xsd), path(_write(deep, "conf"))), 2);
    // <root> is level 1 on line 2; level N+1 stands on line N+2.
    QCOMPARE(errors, Lines({"XML is not valid",
                            "file is invalid at: line: " + std::to_string(OrvexConfigLib::_maxNesting + 2)
                                + ", column: 3"}));
}

void TestValidation::earlierLinesStayInFront()
{
    Lines errors{"one", "two"};
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(_dir.filePath("missing.xsd"))), 2);
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(dataPath("sample-schema.xsd")),
                                         path(_dir.filePath("none.conf"))),
             2);
    QCOMPARE(errors, Lines({"one", "two", "XSD schema is not opened", "XML is not opened",
                            "file is invalid at: line: -1, column: -1"}));
}

void TestValidation::messageHandlerKeepsLastMessage()
{
    MessageHandler handler;
    QCOMPARE(handler.description, QString());
    QCOMPARE(handler.sourceLocation.line(), qint64(-1));
    QCOMPARE(handler.sourceLocation.column(), qint64(-1));
    QUrl const uri = QUrl::fromLocalFile(_dir.filePath("x.xsd"));
    handler.message(QtWarningMsg, QStringLiteral("first"), QUrl(QStringLiteral("urn:id:1")),
                    QSourceLocation(uri, 2, 5));
    handler.message(QtFatalMsg, QStringLiteral("second"), QUrl(QStringLiteral("urn:id:2")),
                    QSourceLocation(uri, 9, 14));
    QCOMPARE(handler.messageType, QtFatalMsg);
    QCOMPARE(handler.description, QStringLiteral("second"));
    QCOMPARE(handler.sourceLocation.line(), qint64(9));
    QCOMPARE(handler.sourceLocation.column(), qint64(14));
    QCOMPARE(handler.sourceLocation.uri(), uri);
}

// ---------------------------------------------------------------- network

void TestValidation::remoteIncludeIsLeftOutLikeMissingLocalOne_data()
{
    QTest::addColumn<bool>("import");
    QTest::newRow("include") << false;
    QTest::newRow("import") << true;
}

void TestValidation::remoteIncludeIsLeftOutLikeMissingLocalOne()
{
    QFETCH(bool, import);
    // 203.0.113.1 is a documentation address: asked, it would not answer.
    QElapsedTimer timer;
    timer.start();
    for (QByteArray const &location :
         {QByteArray("http://203.0.113.1/types.xsd"), QByteArray("missing-types.xsd")}) {
        Lines errors;
        ParameterComplex *root = nullptr;
        QString const xsd = _write(schemaReaching(location, import, false));
        QCOMPARE(OrvexConfigLib::validateXSD(errors, path(xsd)), 0);
        QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(xsd)), 0);
        std::unique_ptr<ParameterComplex> const owner(root);
        QCOMPARE(errors, Lines());
        QVERIFY(simple(root, {"Station"}));
    }
    QVERIFY2(timer.elapsed() < 10000, "the schema classes waited for the network");
}

void TestValidation::remoteTypesFailLikeMissingLocalOnes_data()
{
    QTest::addColumn<bool>("import");
    QTest::newRow("include") << false;
    QTest::newRow("import") << true;
}

void TestValidation::remoteTypesFailLikeMissingLocalOnes()
{
    QFETCH(bool, import);
    QElapsedTimer timer;
    timer.start();
    Lines remote;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(
                 remote, root, path(_write(schemaReaching("http://203.0.113.1/types.xsd", import, true)))),
             2);
    QVERIFY(!root);
    Lines local;
    QCOMPARE(
        OrvexConfigLib::loadXSD(local, root, path(_write(schemaReaching("missing-types.xsd", import, true)))),
        2);
    QVERIFY2(timer.elapsed() < 10000, "the schema classes waited for the network");
    QCOMPARE(remote, local);
    // The type is used on line 8.
    QCOMPARE(remote.size(), std::size_t(2));
    QCOMPARE(remote[0], std::string("XSD schema is not load"));
    QVERIFY2(QByteArray::fromStdString(remote[1]).startsWith("file is invalid at: line: 8, column: "),
             remote[1].c_str());
}

void TestValidation::localIncludeIsRead()
{
    for (bool import : {false, true}) {
        QString const types =
            writeFile(_dir, import ? "types-import.xsd" : "types-include.xsd", typesSchema(import));
        QVERIFY(!types.isEmpty());
        Lines errors;
        ParameterComplex *root = nullptr;
        QString const xsd = _write(schemaReaching(QFileInfo(types).fileName().toUtf8(), import, true));
        QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(xsd)), 0);
        std::unique_ptr<ParameterComplex> const owner(root);
        QCOMPARE(errors, Lines());
        QVERIFY(simple(root, {"Station"}));
    }
}

void TestValidation::noRequestLeavesTheProcess()
{
    CountingServer server;
    QVERIFY(server.isListening());
    QString const xsd = _write(schemaReaching(server.url("types.xsd"), false, true));
    Lines errors;
    ParameterComplex *root = nullptr;
    // Served, the include would make the schema valid; refused, it doesn't.
    QCOMPARE(OrvexConfigLib::validateXSD(errors, path(xsd)), 2);
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, path(xsd)), 2);
    QVERIFY(!root);

    // The schema hints of a configuration aren't fetched either.
    QString const plain = _write(schemaReaching(server.url("types.xsd"), false, false));
    QByteArray const config =
        "<?xml version=\"1.0\"?>\n<root xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:noNamespaceSchemaLocation=\""
        + server.url("hint.xsd")
        + "\" "
          "xsi:schemaLocation=\"urn:orvex:types "
        + server.url("ns-hint.xsd")
        + "\">\n"
          " <Station>dish</Station>\n</root>\n";
    QString const conf = _write(config, "conf");
    errors.clear();
    QCOMPARE(OrvexConfigLib::validateXML(errors, path(plain), path(conf)), 0);
    QCOMPARE(OrvexConfigLib::loadXSDandXML(errors, root, path(plain), path(conf)), 0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(errors, Lines());
    QCOMPARE(simple(root, {"Station"})->getValue(), std::string("dish"));

    QCOMPARE(server.connections.load(), 0);
}

// ---------------------------------------------------- validated operations

void TestValidation::loadXSDandXMLFillsTree()
{
    Lines errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSDandXML(errors, root, path(dataPath("sample-schema.xsd")),
                                           path(dataPath("sample-full.conf"))),
             0);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(errors, Lines());
    QCOMPARE(simple(root, {"Station", "Mode"})->getValue(), std::string("fast"));
    QCOMPARE(list(root, {"Hosts"})->getValues(), Lines({"alpha", "beta"}));
}

void TestValidation::loadXSDandXMLRefusesInvalidConfiguration()
{
    QByteArray text = readFile(dataPath("sample-full.conf"));
    text.replace("<Antennas>3</Antennas>", "<Antennas>30</Antennas>");
    Lines errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSDandXML(errors, root, path(dataPath("sample-schema.xsd")),
                                           path(_write(text, "conf"))),
             2);
    QVERIFY(!root);
    QCOMPARE(errors.size(), std::size_t(2));
    QCOMPARE(errors[0], std::string("XML is not valid"));
    QVERIFY(QByteArray::fromStdString(errors[1]).startsWith("file is invalid at: line: 7, column: "));

    errors.clear();
    QCOMPARE(OrvexConfigLib::loadXSDandXML(errors, root, path(dataPath("sample-schema.xsd")),
                                           path(_dir.filePath("none.conf"))),
             2);
    QVERIFY(!root);
    QCOMPARE(errors, Lines({"XML is not opened", "file is invalid at: line: -1, column: -1"}));
}

void TestValidation::loadXSDandXMLReportsMissingOptionalNode()
{
    QByteArray text = readFile(dataPath("update-base.conf"));
    text.replace(" <Archive>/srv/archive</Archive>\n", "");
    Lines errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSDandXML(errors, root, path(dataPath("update-schema.xsd")),
                                           path(_write(text, "conf"))),
             1);
    std::unique_ptr<ParameterComplex> const owner(root);
    QCOMPARE(errors, Lines({"Node \"->root->Archive\" not found in XML"}));
    QCOMPARE(simple(root, {"Station", "Name"})->getValue(), std::string("default dish"));
}

void TestValidation::updateKeepsOldValuesAndAddsNewParameters()
{
    Lines errors;
    QString const target = _dir.filePath("updated.conf");
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(dataPath("update-base.conf")), path(dataPath("update-old.conf")),
                                       path(target)),
             0);
    QCOMPARE(errors, Lines({"Node \"->root->Station->Gain\" not found in XML",
                            "Node \"->root->Archive\" not found in XML"}));
    QString failure;
    QVERIFY2(matchesGolden(readFile(target), dataPath("update-expected.conf"), &failure),
             qPrintable(failure));
}

void TestValidation::updateMayWriteOverTheOldFile()
{
    QString const old = writeFile(_dir, "old-in-place.conf", readFile(dataPath("update-old.conf")));
    Lines errors;
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(dataPath("update-base.conf")), path(old), path(old)),
             0);
    QString failure;
    QVERIFY2(matchesGolden(readFile(old), dataPath("update-expected.conf"), &failure), qPrintable(failure));
}

void TestValidation::updateWithOldFileLackingNodeKeepsBaseValue()
{
    QByteArray old = readFile(dataPath("update-old.conf"));
    old.replace("  <Antennas>4</Antennas>\n", "");
    Lines errors{"kept"};
    QString const target = _dir.filePath("lacking.conf");
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(dataPath("update-base.conf")), path(_write(old, "conf")),
                                       path(target)),
             0);
    QCOMPARE(errors, Lines({"kept", "Node \"->root->Station->Antennas\" not found in XML",
                            "Node \"->root->Station->Gain\" not found in XML",
                            "Node \"->root->Archive\" not found in XML"}));
    QVERIFY(readFile(target).contains(
        "  <Name>North dish</Name>\n  <Antennas>1</Antennas>\n  <Gain>1.0</Gain>\n"));
}

void TestValidation::updateWithBaseLackingNodeFails()
{
    QByteArray base = readFile(dataPath("update-base.conf"));
    base.replace(" <Archive>/srv/archive</Archive>\n", "");
    Lines errors;
    QString const target = _dir.filePath("never.conf");
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(_write(base, "conf")), path(dataPath("update-old.conf")),
                                       path(target)),
             2);
    QCOMPARE(errors, Lines({"Node \"->root->Archive\" not found in XML"}));
    QVERIFY(!QFile::exists(target));
}

void TestValidation::updateWithInvalidBaseFails()
{
    QByteArray base = readFile(dataPath("update-base.conf"));
    base.replace("<Version>2.0</Version>", "<Version>3.0</Version>");
    Lines errors;
    QString const target = _dir.filePath("never-invalid.conf");
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(_write(base, "conf")), path(dataPath("update-old.conf")),
                                       path(target)),
             2);
    QCOMPARE(errors.size(), std::size_t(2));
    QCOMPARE(errors[0], std::string("XML is not valid"));
    QVERIFY(QByteArray::fromStdString(errors[1]).startsWith("file is invalid at: line: 3, column: "));
    QVERIFY(!QFile::exists(target));
}

void TestValidation::updateWithUnreadableOldFileFails()
{
    Lines errors;
    QString const target = _dir.filePath("never-old.conf");
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(dataPath("update-base.conf")), path(_dir.filePath("no-old.conf")),
                                       path(target)),
             2);
    QCOMPARE(errors, Lines({"XML is not opened"}));
    QVERIFY(!QFile::exists(target));
}

void TestValidation::updateWithUnwritableTargetFails()
{
    Lines errors;
    QCOMPARE(OrvexConfigLib::updateXML(errors, path(dataPath("update-schema.xsd")),
                                       path(dataPath("update-base.conf")), path(dataPath("update-old.conf")),
                                       path(_dir.filePath("no/dir/new.conf"))),
             2);
    QCOMPARE(errors, Lines({"Node \"->root->Station->Gain\" not found in XML",
                            "Node \"->root->Archive\" not found in XML", "XML is not created"}));
}

QTEST_GUILESS_MAIN(TestValidation)
#include "tst_validation.moc"
