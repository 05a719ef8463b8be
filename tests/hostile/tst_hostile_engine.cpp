// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Hostile files through the engine: each is refused with the engine's own
// lines, or read without harm, and nothing else happens — no crash, no hang,
// no network, no local file read behind the user's back, and a refused
// configuration leaves every value of the tree as it was.

#include "hostilefiles.h"
#include "treesnapshot.h"

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "model/parameter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>
#include <string>
#include <vector>

using namespace hostile;

using Lines = std::vector<std::string>;
Q_DECLARE_METATYPE(Lines)

namespace {

// Generous for the sanitizer build; a parser that loops or backtracks
// exponentially blows through it by orders of magnitude.
constexpr qint64 kFewSeconds = 20000;

std::string _path(QString const &path)
{
    return path.toStdString();
}

QString _joined(Lines const &lines)
{
    QStringList texts;
    for (std::string const &line : lines)
        texts << QString::fromStdString(line);
    return texts.join(QLatin1String(" | "));
}

// The depth of the first element with this tag, the document element at 1.
int _depthOf(QByteArray const &document, QString const &tag)
{
    QXmlStreamReader reader(document);
    int depth = 0;
    while (!reader.atEnd()) {
        QXmlStreamReader::TokenType const token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (reader.qualifiedName() == tag)
                return depth;
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
        }
    }
    return -1;
}

// The shipped schema with a chain of unknown elements inside the first
// xs:appinfo, so that the file nests exactly `depth` deep.
QByteArray _schemaNested(int depth)
{
    QByteArray schema = shippedSchema();
    int const chain = depth - _depthOf(schema, QStringLiteral("xs:appinfo"));
    QByteArray const tag = "<xs:appinfo>";
    return schema.insert(schema.indexOf(tag) + tag.size(),
        QByteArray("<deep>").repeated(chain) + QByteArray("</deep>").repeated(chain));
}

// Where deepDocument(100000) first nests too deep: at the end of the first
// start tag past the limit, on its second line.
std::string _deepDocumentTooDeepAt()
{
    QByteArray const document = deepDocument(100000);
    return locationLine(
        document, document.indexOf('\n') + 1 + 3 * (OrvexConfigLib::_maxNesting + 1));
}

// The location line for _schemaNested(_maxNesting + 1): just past the
// first start tag of the chain that goes one level too deep.
std::string _schemaTooDeepAt()
{
    QByteArray const schema = _schemaNested(OrvexConfigLib::_maxNesting + 1);
    int const appinfoEnd = schema.indexOf("<xs:appinfo>") + 12;
    int const tooDeep
        = OrvexConfigLib::_maxNesting + 1 - _depthOf(schema, QStringLiteral("xs:appinfo"));
    return locationLine(schema, appinfoEnd + 6 * tooDeep);
}

} // namespace

class TestHostileEngine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void refusedConfigurationLeavesTreeUntouched_data();
    void refusedConfigurationLeavesTreeUntouched();
    void directoryAsConfigurationIsNotOpened();
    void configurationNestedUpToTheLimitLoads();
    void invalidUtf8IsReadWithReplacementCharacters();
    void utf16ConfigurationThatSaysSoLoadsLikeUtf8();
    void externalEntityReachesNoValue_data();
    void externalEntityReachesNoValue();
    void fiftyMegabyteConfigurationLoadsInSeconds();
    void undeclaredEntityReadsAsEmptyValue();
    void blankOnlyValueIsWrittenButReadBackEmpty_data();
    void blankOnlyValueIsWrittenButReadBackEmpty();
    void nulCharacterStaysInTheTreeAndEndsTheWrittenValue_data();
    void nulCharacterStaysInTheTreeAndEndsTheWrittenValue();

    void writerRefusesTargetThatCannotBeCreated_data();
    void writerRefusesTargetThatCannotBeCreated();
    void writerReportsSuccessOnAFullDevice();

    void validatorRefusesConfigurationNestedTooDeep();
    void validatorNeverFetchesTheSchemaHintOfAConfiguration();

    void refusedSchemaGivesNoTree_data();
    void refusedSchemaGivesNoTree();
    void schemaNestedUpToTheLimitLoads();
    void schemaImportingRemoteLocationIsNeverFetched_data();
    void schemaImportingRemoteLocationIsNeverFetched();
    void externalEntityInSchemaReachesNoText();
    void schemaThousandSectionsDeepBuildsLoadsAndWrites();

private:
    QString _write(QString const &name, QByteArray const &bytes);
    int _load(Lines &lines, QString const &path);

    std::unique_ptr<QTemporaryDir> _dir;
    ParameterComplex *_root = nullptr;
    Snapshot _loaded;
};

QString TestHostileEngine::_write(QString const &name, QByteArray const &bytes)
{
    return writeFile(*_dir, name, bytes);
}

int TestHostileEngine::_load(Lines &lines, QString const &path)
{
    return OrvexConfigLib::loadXML_knStruct(lines, _root, _path(path));
}

void TestHostileEngine::initTestCase()
{
    _dir = std::make_unique<QTemporaryDir>();
    QVERIFY(_dir->isValid());
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, _root, _path(shippedSchemaPath())), 0);
    QVERIFY(_root);
}

// Every case starts from the values of the shipped configuration.
void TestHostileEngine::init()
{
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, _root, _path(shippedConfigPath())), 0);
    _loaded = snapshot(_root);
    QCOMPARE(_loaded.value(siteNamePath()), QStringList { siteName() });
}

void TestHostileEngine::cleanupTestCase()
{
    delete _root;
    _root = nullptr;
}

// ------------------------------------------------------------ configurations

void TestHostileEngine::refusedConfigurationLeavesTreeUntouched_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Lines>("expected");

    Lines const notDom { "XML is not dom document" };
    QByteArray const renamed = renamedConfig();
    QTest::newRow("empty file") << QByteArray() << notDom;
    QTest::newRow("binary garbage") << readFile(fixture(QStringLiteral("garbage.bin"))) << notDom;
    QTest::newRow("truncated XML") << renamed.left(renamed.indexOf("</Observatory>")) << notDom;
    QTest::newRow("only a declaration")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") << notDom;
    // UTF-16 with a byte order mark, but the declaration still says UTF-8.
    QTest::newRow("UTF-16 said to be UTF-8")
        << QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromUtf8(renamed)) << notDom;
    QTest::newRow("nested 100,000 deep") << deepConfig(100000) << notDom;
    QTest::newRow("nested one level too deep") << deepConfig(OrvexConfigLib::_maxNesting) << notDom;
    QTest::newRow("billion laughs")
        << configWithDoctype(billionLaughsDoctype("root"), "&lol9;") << notDom;
    QTest::newRow("two root elements") << renamed + "<root/>\n" << notDom;
    QTest::newRow("root of another name")
        << QByteArray(renamed).replace("<root>", "<Root>").replace("</root>", "</Root>")
        << Lines { "Root parameter does not match root XML node" };
}

void TestHostileEngine::refusedConfigurationLeavesTreeUntouched()
{
    QFETCH(QByteArray, content);
    QFETCH(Lines, expected);
    QString const path = _write(QStringLiteral("refused.conf"), content);
    QVERIFY(!path.isEmpty());

    Lines lines { "earlier line" };
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(_load(lines, path), 2);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));

    expected.insert(expected.begin(), "earlier line");
    QCOMPARE(lines, expected);
    QCOMPARE(snapshot(_root), _loaded);
    QCOMPARE(readFile(path), content); // the loader never writes
}

void TestHostileEngine::directoryAsConfigurationIsNotOpened()
{
    Lines lines;
    QCOMPARE(_load(lines, _dir->path()), 2);
    QCOMPARE(lines, Lines { "XML is not opened" });
    QCOMPARE(snapshot(_root), _loaded);
}

// The deepest file the engine takes is read in full, in the sanitizer build
// too, where every level costs more stack.
void TestHostileEngine::configurationNestedUpToTheLimitLoads()
{
    QString const path
        = _write(QStringLiteral("deep.conf"), deepConfig(OrvexConfigLib::_maxNesting - 1));
    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    QCOMPARE(snapshot(_root).value(siteNamePath()),
        QStringList { QStringLiteral("Renamed Observatory") });
}

// Qt's DOM parser turns bytes that aren't UTF-8 into U+FFFD and reports no
// error, so the file loads and a later save writes the replacement
// characters in place of the original bytes.
void TestHostileEngine::invalidUtf8IsReadWithReplacementCharacters()
{
    QString const path = _write(QStringLiteral("latin1.conf"),
        configWithDoctype(QByteArray(), "Orvex \xff\xfe Observatory"));
    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    QCOMPARE(snapshot(_root).value(siteNamePath()),
        QStringList { QStringLiteral("Orvex \uFFFD\uFFFD Observatory") });
}

void TestHostileEngine::utf16ConfigurationThatSaysSoLoadsLikeUtf8()
{
    QByteArray renamed = renamedConfig();
    renamed.replace("encoding=\"UTF-8\"", "encoding=\"UTF-16\"");
    QString const path = _write(QStringLiteral("utf16.conf"),
        QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromUtf8(renamed)));
    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    Snapshot expected = _loaded;
    expected[siteNamePath()] = QStringList { QStringLiteral("Renamed Observatory") };
    QCOMPARE(snapshot(_root), expected);
}

void TestHostileEngine::externalEntityReachesNoValue_data()
{
    QTest::addColumn<QByteArray>("doctype");
    QTest::addColumn<QByteArray>("siteText");
    QTest::addColumn<QString>("siteValue");

    QByteArray const secret
        = QUrl::fromLocalFile(_dir->filePath(QStringLiteral("secret.txt"))).toEncoded();
    QByteArray const dtd
        = QUrl::fromLocalFile(_dir->filePath(QStringLiteral("secret.dtd"))).toEncoded();
    // The reference is kept as an element child without text: the value
    // becomes empty.
    QTest::newRow("general entity")
        << "<!DOCTYPE root [\n <!ENTITY secret SYSTEM \"" + secret + "\">\n]>"
        << QByteArray("&secret;") << QString();
    QTest::newRow("parameter entity")
        << "<!DOCTYPE root [\n <!ENTITY % outside SYSTEM \"" + dtd + "\">\n %outside;\n]>"
        << QByteArray("&secret;") << QString();
    QTest::newRow("external subset")
        << "<!DOCTYPE root SYSTEM \"" + dtd + "\">" << siteName() << QString::fromUtf8(siteName());
}

void TestHostileEngine::externalEntityReachesNoValue()
{
    QFETCH(QByteArray, doctype);
    QFETCH(QByteArray, siteText);
    QFETCH(QString, siteValue);
    QString const marker = QStringLiteral("LOCAL-FILE-CONTENT");
    QVERIFY(!_write(QStringLiteral("secret.txt"), marker.toUtf8() + "\n").isEmpty());
    QVERIFY(!_write(QStringLiteral("secret.dtd"), "<!ENTITY secret \"" + marker.toUtf8() + "\">\n")
                 .isEmpty());
    QString const path
        = _write(QStringLiteral("entity.conf"), configWithDoctype(doctype, siteText));

    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    Snapshot const values = snapshot(_root);
    QCOMPARE(pathsHolding(values, marker), QStringList());
    QCOMPARE(values.value(siteNamePath()), QStringList { siteValue });

    QString const written = _dir->filePath(QStringLiteral("written.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(lines, _root, _path(written)), 0);
    QVERIFY(!readFile(written).contains(marker.toUtf8()));
}

void TestHostileEngine::fiftyMegabyteConfigurationLoadsInSeconds()
{
    QByteArray const large
        = largeConfig(50 * 1024 * 1024).replace(siteName(), "Renamed Observatory");
    QVERIFY(large.size() >= 50 * 1024 * 1024);
    QString const path = _write(QStringLiteral("large.conf"), large);
    QVERIFY(!path.isEmpty());

    Lines lines;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(_load(lines, path), 0);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(lines, Lines {});
    QCOMPARE(snapshot(_root).value(siteNamePath()),
        QStringList { QStringLiteral("Renamed Observatory") });
}

// Qt's DOM parser keeps a reference to an entity that nobody declared as an
// empty node instead of refusing the file: the value becomes empty.
void TestHostileEngine::undeclaredEntityReadsAsEmptyValue()
{
    QString const path
        = _write(QStringLiteral("undeclared.conf"), configWithDoctype(QByteArray(), "&nowhere;"));
    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    Snapshot expected = _loaded;
    expected[siteNamePath()] = QStringList { QString() };
    QCOMPARE(snapshot(_root), expected);
}

// Writer and loader agree on every value but the documented exceptions; a
// value of blanks alone is not among them. Qt's DOM parser drops text that
// is only white space unless it is told to report it, which the loader
// doesn't: such a value comes back empty, from a saved file as from any
// other. Found by the configuration fuzzer.
void TestHostileEngine::blankOnlyValueIsWrittenButReadBackEmpty_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("blanks") << QStringLiteral("   ");
    QTest::newRow("tab") << QStringLiteral("\t");
    QTest::newRow("line feed") << QStringLiteral("\n");
}

void TestHostileEngine::blankOnlyValueIsWrittenButReadBackEmpty()
{
    QFETCH(QString, value);
    ParameterSimple *const site = leafAt(_root, { "Observatory", "SiteName" });
    QVERIFY(site);
    QVERIFY(site->setValue(value.toStdString()));

    QString const written = _dir->filePath(QStringLiteral("blank.conf"));
    Lines lines;
    QCOMPARE(OrvexConfigLib::writeXML(lines, _root, _path(written)), 0);
    QVERIFY(readFile(written).contains("<SiteName>" + value.toUtf8() + "</SiteName>"));
    QVERIFY(site->setValue("something else"));
    QCOMPARE(_load(lines, written), 0);
    QCOMPARE(lines, Lines {});
    // The writer keeps the blanks, but the DOM parser drops text made only of
    // white space, so the loader reads the element as empty. Kept as it is:
    // both sides work exactly as the reader and writer are meant to.
    QCOMPARE(QString::fromStdString(site->getValue()), QString());
}

// Qt's DOM parser lets a NUL byte through into the text. The tree keeps it;
// the writer passes values to Qt as C strings, so the saved value ends there.
// The TLE row is what the configuration fuzzer found first.
void TestHostileEngine::nulCharacterStaysInTheTreeAndEndsTheWrittenValue_data()
{
    QTest::addColumn<QByteArray>("original");
    QTest::addColumn<QByteArray>("withNul");
    QTest::addColumn<QString>("keyPath");
    QTest::addColumn<int>("index");

    QTest::newRow("leaf") << siteName() << QByteArray("Orvex\0Observatory", 17)
                          << QString::fromUtf8(siteNamePath()) << 0;
    QByteArray const line2
        = "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614";
    QTest::newRow("TLE data line") << line2 << QByteArray(line2).replace(13, 1, QByteArray(1, '\0'))
                                   << QStringLiteral("->root->Tracking->Satellites") << 2;
}

void TestHostileEngine::nulCharacterStaysInTheTreeAndEndsTheWrittenValue()
{
    QFETCH(QByteArray, original);
    QFETCH(QByteArray, withNul);
    QFETCH(QString, keyPath);
    QFETCH(int, index);
    QByteArray config = shippedConfig();
    QVERIFY(config.contains(">" + original + "<"));
    config.replace(">" + original + "<", ">" + withNul + "<");
    QString const path = _write(QStringLiteral("nul.conf"), config);

    Lines lines;
    QCOMPARE(_load(lines, path), 0);
    QCOMPARE(lines, Lines {});
    QCOMPARE(snapshot(_root).value(keyPath).value(index),
        QString::fromUtf8(withNul.constData(), withNul.size()));

    QString const written = _dir->filePath(QStringLiteral("nul-written.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(lines, _root, _path(written)), 0);
    QByteArray const file = readFile(written);
    QVERIFY(file.contains(">" + withNul.left(withNul.indexOf('\0')) + "<"));
    QVERIFY(!file.contains('\0'));
}

// ------------------------------------------------------------------ writer

void TestHostileEngine::writerRefusesTargetThatCannotBeCreated_data()
{
    QTest::addColumn<QString>("target");
    QString const plainFile = _write(QStringLiteral("plain.txt"), "not a directory\n");
    // Beneath a regular file and inside /proc nothing can be created, not
    // even by root, for whom permissions are no obstacle.
    QTest::newRow("a directory") << _dir->path();
    QTest::newRow("below a regular file") << plainFile + QStringLiteral("/out.conf");
    QTest::newRow("in a directory that doesn't exist")
        << _dir->filePath(QStringLiteral("none/out.conf"));
    QTest::newRow("inside /proc") << QStringLiteral("/proc/orvex-hostile.conf");
    QTest::newRow("empty path") << QString();
}

void TestHostileEngine::writerRefusesTargetThatCannotBeCreated()
{
    QFETCH(QString, target);
    QStringList const before
        = QDir(_dir->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    Lines lines;
    QCOMPARE(OrvexConfigLib::writeXML(lines, _root, _path(target)), 2);
    QCOMPARE(lines, Lines { "XML is not created" });
    QCOMPARE(QDir(_dir->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
}

// The writer doesn't test its writes: a device that takes no byte counts as
// a successful save.
void TestHostileEngine::writerReportsSuccessOnAFullDevice()
{
    QVERIFY(QFile::exists(QStringLiteral("/dev/full")));
    Lines lines;
    QCOMPARE(OrvexConfigLib::writeXML(lines, _root, "/dev/full"), 0);
    QCOMPARE(lines, Lines {});
}

// --------------------------------------------------------------- validator

void TestHostileEngine::validatorRefusesConfigurationNestedTooDeep()
{
    QString const path = _write(QStringLiteral("deep.conf"), deepDocument(100000));
    Lines lines;
    QCOMPARE(OrvexConfigLib::validateXML(lines, _path(shippedSchemaPath()), _path(path)), 2);
    QCOMPARE(lines, (Lines { "XML is not valid", _deepDocumentTooDeepAt() }));
}

void TestHostileEngine::validatorNeverFetchesTheSchemaHintOfAConfiguration()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QByteArray const url
        = "http://127.0.0.1:" + QByteArray::number(server.serverPort()) + "/hint.xsd";
    QByteArray config = shippedConfig();
    config.replace("<root>",
        "<root xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:noNamespaceSchemaLocation=\""
            + url + "\">");
    QString const path = _write(QStringLiteral("hinted.conf"), config);

    Lines lines;
    QCOMPARE(OrvexConfigLib::validateXML(lines, _path(shippedSchemaPath()), _path(path)), 0);
    QCOMPARE(lines, Lines {});
    // A request would have reached the listening socket's queue before the
    // validator returned.
    QVERIFY(!server.waitForNewConnection(100));
}

// ----------------------------------------------------------------- schemas

void TestHostileEngine::refusedSchemaGivesNoTree_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Lines>("expected");

    QByteArray const schema = shippedSchema();
    QTest::newRow("empty file") << QByteArray()
                                << Lines { "XSD schema is not load",
                                       "file is invalid at: line: 1, column: 0" };
    QTest::newRow("binary garbage")
        << readFile(fixture(QStringLiteral("garbage.bin")))
        << Lines { "XSD schema is not load", "file is invalid at: line: 1, column: 2" };
    QByteArray const truncated = schema.left(schema.indexOf("<xs:element name=\"Service\">"));
    QTest::newRow("truncated XML")
        << truncated
        << Lines { "XSD schema is not load", locationLine(truncated, truncated.size()) };
    QTest::newRow("nested 100,000 deep")
        << deepDocument(100000) << Lines { "XSD schema is not load", _deepDocumentTooDeepAt() };
    QTest::newRow("nested one level too deep") << _schemaNested(
        OrvexConfigLib::_maxNesting + 1) << Lines { "XSD schema is not load", _schemaTooDeepAt() };
    // Qt's schema reader stops where the expansion passes its limit.
    QByteArray const laughs = schemaWithDoctype(billionLaughsDoctype("xs:schema"), "&lol9;");
    QTest::newRow("billion laughs")
        << laughs
        << Lines { "XSD schema is not load", locationLine(laughs, laughs.indexOf("&lol9;") + 6) };
}

void TestHostileEngine::refusedSchemaGivesNoTree()
{
    QFETCH(QByteArray, content);
    QFETCH(Lines, expected);
    QString const path = _write(QStringLiteral("refused.xsd"), content);

    ParameterComplex *root = _root; // a tree from before stays where it is
    Lines lines;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(OrvexConfigLib::loadXSD(lines, root, _path(path)), 2);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(lines == expected,
        qPrintable(_joined(lines) + QStringLiteral(" instead of ") + _joined(expected)));
    QCOMPARE(root, _root);
}

void TestHostileEngine::schemaNestedUpToTheLimitLoads()
{
    QString const path
        = _write(QStringLiteral("deep.xsd"), _schemaNested(OrvexConfigLib::_maxNesting));
    ParameterComplex *root = nullptr;
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, root, _path(path)), 0);
    std::unique_ptr<ParameterComplex> const tree(root);
    QCOMPARE(lines, Lines {});
    QCOMPARE(visualTexts(root), visualTexts(_root));
}

void TestHostileEngine::schemaImportingRemoteLocationIsNeverFetched_data()
{
    QTest::addColumn<QByteArray>("declaration");
    QTest::newRow("import") << QByteArray("<xs:import namespace=\"http://example.org/remote\" "
                                          "schemaLocation=\"%1\"/>");
    QTest::newRow("include") << QByteArray("<xs:include schemaLocation=\"%1\"/>");
    QTest::newRow("redefine") << QByteArray("<xs:redefine schemaLocation=\"%1\"/>");
}

// The schema stays what it is without the remote part, and no request
// leaves the process.
void TestHostileEngine::schemaImportingRemoteLocationIsNeverFetched()
{
    QFETCH(QByteArray, declaration);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QByteArray const url
        = "http://127.0.0.1:" + QByteArray::number(server.serverPort()) + "/remote.xsd";
    QString const path
        = _write(QStringLiteral("remote.xsd"), schemaWithTopLevel(declaration.replace("%1", url)));

    ParameterComplex *root = nullptr;
    Lines lines;
    QElapsedTimer timer;
    timer.start();
    int const status = OrvexConfigLib::loadXSD(lines, root, _path(path));
    std::unique_ptr<ParameterComplex> const tree(root);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(status == 0, qPrintable(_joined(lines)));
    QCOMPARE(lines, Lines {});
    QCOMPARE(visualTexts(root), visualTexts(_root));
    QVERIFY(!server.waitForNewConnection(100));
}

void TestHostileEngine::externalEntityInSchemaReachesNoText()
{
    QString const marker = QStringLiteral("LOCAL-FILE-CONTENT");
    QString const secret = _write(QStringLiteral("secret.txt"), marker.toUtf8() + "\n");
    QByteArray const doctype = "<!DOCTYPE xs:schema [\n <!ENTITY secret SYSTEM \""
        + QUrl::fromLocalFile(secret).toEncoded() + "\">\n]>";
    QString const path
        = _write(QStringLiteral("entity.xsd"), schemaWithDoctype(doctype, "&secret;"));

    ParameterComplex *root = nullptr;
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, root, _path(path)), 0);
    std::unique_ptr<ParameterComplex> const tree(root);
    QCOMPARE(lines, Lines {});
    QStringList const texts = visualTexts(root);
    QCOMPARE(texts.filter(marker), QStringList());
    QCOMPARE(texts.size(), visualTexts(_root).size());
}

void TestHostileEngine::schemaThousandSectionsDeepBuildsLoadsAndWrites()
{
    int const sections = 1000;
    QString const schema = _write(QStringLiteral("nested.xsd"), nestedSchema(sections));
    QString const config
        = _write(QStringLiteral("nested.conf"), nestedConfig(sections, "bottom", "top"));

    QElapsedTimer timer;
    timer.start();
    ParameterComplex *root = nullptr;
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, root, _path(schema)), 0);
    std::unique_ptr<ParameterComplex> const tree(root);
    QCOMPARE(lines, Lines {});

    Parameter *node = root;
    for (int level = 1; level <= sections; ++level) {
        auto *section = dynamic_cast<ParameterComplex *>(node);
        QVERIFY(section);
        QCOMPARE(int(section->getChildrenPtrs().size()), level == 1 ? 4 : 1);
        node = section->getChildrenPtrs()[level == 1 ? 2 : 0];
        QCOMPARE(node->getParameterKey(), nestedSectionKey(level).toStdString());
        QCOMPARE(node->getLevel(), unsigned(level));
    }

    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, root, _path(config)), 0);
    QCOMPARE(lines, Lines {});
    Snapshot const values = snapshot(root);
    QCOMPARE(pathsHolding(values, QStringLiteral("bottom")).size(), 1);
    QCOMPARE(pathsHolding(values, QStringLiteral("bottom")).first().count(QStringLiteral("->")),
        sections + 2);

    QString const written = _dir->filePath(QStringLiteral("nested-written.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(lines, root, _path(written)), 0);
    ParameterComplex *again = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, again, _path(schema)), 0);
    std::unique_ptr<ParameterComplex> const second(again);
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, again, _path(written)), 0);
    QCOMPARE(lines, Lines {});
    QCOMPARE(snapshot(again), values);
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(TestHostileEngine)

#include "tst_hostile_engine.moc"
