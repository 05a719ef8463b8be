// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Start-up of the main window: the window itself, the schema, and the lists
// of supported versions and services read from its first two children.

#include "managertestkit.h"

#include "app/manager.h"
#include "engine/orvexconfiglib.h"
#include "navigation/paramstree.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <vector>

using namespace ManagerTest;

namespace {

QStringList _texts(const QList<Version> &versions)
{
    QStringList texts;
    for (const Version &version : versions)
        texts << QString::fromStdString(version.getString());
    return texts;
}

QString _engineText(const QString &schema)
{
    std::vector<std::string> lines;
    ParameterComplex *root = nullptr;
    OrvexConfigLib::loadXSD(lines, root, schema.toStdString());
    return _toText(lines);
}

QDomElement _leaf(QDomDocument &document, const QString &name, const QString &base)
{
    QDomElement element = document.createElement(QStringLiteral("xs:element"));
    element.setAttribute(QStringLiteral("name"), name);
    QDomElement simpleType = document.createElement(QStringLiteral("xs:simpleType"));
    QDomElement restriction = document.createElement(QStringLiteral("xs:restriction"));
    restriction.setAttribute(QStringLiteral("base"), base);
    simpleType.appendChild(restriction);
    element.appendChild(simpleType);
    return element;
}

// Gives a declaration a complex type in place of its simple type; with
// listed, its sequence carries minOccurs and so makes a list.
void _makeComplex(QDomElement declaration, bool listed)
{
    QDomDocument document = declaration.ownerDocument();
    declaration.removeChild(declaration.firstChildElement(QStringLiteral("xs:simpleType")));
    QDomElement complexType = document.createElement(QStringLiteral("xs:complexType"));
    QDomElement sequence = document.createElement(QStringLiteral("xs:sequence"));
    if (listed) {
        sequence.setAttribute(QStringLiteral("minOccurs"), QStringLiteral("0"));
        sequence.setAttribute(QStringLiteral("maxOccurs"), QStringLiteral("unbounded"));
        QDomElement item = document.createElement(QStringLiteral("xs:element"));
        item.setAttribute(QStringLiteral("name"), QStringLiteral("Item"));
        item.setAttribute(QStringLiteral("type"), QStringLiteral("xs:string"));
        sequence.appendChild(item);
    } else {
        sequence.appendChild(
            _leaf(document, QStringLiteral("Number"), QStringLiteral("xs:string")));
    }
    complexType.appendChild(sequence);
    declaration.appendChild(complexType);
}

// Replaces the restriction of a leaf declaration: a range when withRange,
// else no facet at all.
void _replaceFacets(QDomElement declaration, bool withRange)
{
    QDomDocument document = declaration.ownerDocument();
    QDomElement restriction = declaration.firstChildElement(QStringLiteral("xs:simpleType"))
                                  .firstChildElement(QStringLiteral("xs:restriction"));
    while (!restriction.firstChildElement().isNull())
        restriction.removeChild(restriction.firstChildElement());
    if (!withRange)
        return;
    restriction.setAttribute(QStringLiteral("base"), QStringLiteral("xs:decimal"));
    for (const auto &bound : { qMakePair(QStringLiteral("xs:minInclusive"), QStringLiteral("1")),
             qMakePair(QStringLiteral("xs:maxInclusive"), QStringLiteral("3")) }) {
        QDomElement facet = document.createElement(bound.first);
        facet.setAttribute(QStringLiteral("value"), bound.second);
        restriction.appendChild(facet);
    }
}

} // namespace

class TestManagerStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void shippedSchemaGivesTitleIconAndSize();
    void windowCannotBeMadeSmallerThanMinimum();
    void constructorDoesNotShowWindow();
    void startsClosedWithoutConfiguration();
    void schemaIsFoundBesideProgramWhateverWorkingDirectory();
    void refusedSchemaIsReportedBeforeAnyWindow_data();
    void refusedSchemaIsReportedBeforeAnyWindow();
    void failingStartupCheckIsReported_data();
    void failingStartupCheckIsReported();
    void newestVersionIsGreatestNotLastListed();
    void duplicateVersionsAreKept();
    void equalVersionsKeepFirstText_data();
    void equalVersionsKeepFirstText();
    void onlyZeroVersionsLeaveNewestAtZero();
    void emptyServiceListReachesServiceDialog();
};

void TestManagerStartup::initTestCase()
{
    // Closing windows here must not end the application.
    QApplication::setQuitOnLastWindowClosed(false);
}

void TestManagerStartup::init()
{
    QVERIFY(installFixtureDefaults());
}

void TestManagerStartup::cleanupTestCase()
{
    QVERIFY(installShippedDefaults());
}

void TestManagerStartup::shippedSchemaGivesTitleIconAndSize()
{
    QVERIFY(installShippedDefaults());
    Modals modals;
    auto manager = makeManager();
    VERIFY_MODALS_DONE(modals);
    QVERIFY(modals.seen().isEmpty());

    QVERIFY(manager->hasSchema());
    QVERIFY(!manager->isVisible());
    QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
    QVERIFY(!manager->windowIcon().isNull());
    QVERIFY(!manager->windowIcon().availableSizes().isEmpty());
    QCOMPARE(manager->minimumSize(), QSize(900, 500));
    QCOMPARE(manager->size(), QSize(900, 500));
    QVERIFY(!manager->getServiceList().isEmpty());
    QVERIFY(manager->getSuppVersions().contains(manager->getNewestVersion()));
}

void TestManagerStartup::windowCannotBeMadeSmallerThanMinimum()
{
    Modals modals;
    auto manager = makeManager();
    manager->resize(300, 200);
    QCOMPARE(manager->size(), QSize(900, 500));
    manager->resize(1200, 400);
    QCOMPARE(manager->size(), QSize(1200, 500));
    manager->show();
    QVERIFY(QTest::qWaitForWindowExposed(manager.get()));
    manager->resize(10, 10);
    QCOMPARE(manager->size(), QSize(900, 500));
    VERIFY_MODALS_DONE(modals);
}

void TestManagerStartup::constructorDoesNotShowWindow()
{
    Modals modals;
    auto manager = makeManager();
    QVERIFY(!manager->isVisible());
    QVERIFY(manager->hasSchema());
    VERIFY_MODALS_DONE(modals);
}

void TestManagerStartup::startsClosedWithoutConfiguration()
{
    Modals modals;
    auto manager = makeManager();
    Window window(manager.get());
    VERIFY_MODALS_DONE(modals);

    QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
    QVERIFY(manager->getConfigPath().isNull());
    QVERIFY(manager->isSaved());
    const QString wrong = window.wrongEnabledState(false);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QCOMPARE(window.infoText(), QString());
    QCOMPARE(window.headingText(), QString());
    QVERIFY(!window.currentPage());
    QVERIFY(!window.tree->getCurrentIndex().isValid());
    // The first build has no service: sections of one service are left out.
    QCOMPARE(window.rowTexts(), QStringList({ "Station", "Network", "Satellites" }));
}

void TestManagerStartup::schemaIsFoundBesideProgramWhateverWorkingDirectory()
{
    QTemporaryDir elsewhere;
    QVERIFY(elsewhere.isValid());
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(elsewhere.path()));
    Modals modals;
    auto manager = makeManager();
    QDir::setCurrent(before);

    VERIFY_MODALS_DONE(modals);
    QVERIFY(manager->hasSchema());
    QCOMPARE(manager->getServiceList(), QList<QString>({ "ALPHA", "BETA", "GAMMA" }));
}

void TestManagerStartup::refusedSchemaIsReportedBeforeAnyWindow_data()
{
    QTest::addColumn<QByteArray>("schema"); // null: no schema file at all
    QTest::addColumn<QString>("firstLine");
    QTest::addColumn<int>("lineCount");

    QTest::newRow("plain text") << QByteArray("This is a note, not a schema.\n")
                                << QStringLiteral("XSD schema is not load") << 2;
    QTest::newRow("xml that is no schema")
        << QByteArray("<?xml version=\"1.0\"?>\n<root>\n <Version>1.0</Version>\n</root>\n")
        << QString() << 2;
    QTest::newRow("schema without a root declaration")
        << readAll(fixture(QStringLiteral("schema-userconf.xsd")))
               .replace("<xs:element name=\"root\">", "<xs:element name=\"Root\">")
        << QStringLiteral("XSD schema is not orvex schema") << 1;
    QTest::newRow("no schema file")
        << QByteArray() << QStringLiteral("XSD schema is not opened") << 1;
}

void TestManagerStartup::refusedSchemaIsReportedBeforeAnyWindow()
{
    QFETCH(QByteArray, schema);
    QFETCH(QString, firstLine);
    QFETCH(int, lineCount);

    if (schema.isNull())
        QVERIFY(QFile::remove(schemaPath()));
    else
        QVERIFY(installSchema(schema));
    const QString expected = _engineText(schemaPath());

    Modals modals;
    QStringList windowsShownWithBox;
    modals.handleWith([&windowsShownWithBox](QWidget *box) {
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (top != box && top->isVisible())
                windowsShownWithBox << QString::fromLatin1(top->metaObject()->className());
        }
        static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click();
    });
    auto manager = makeManager();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    const ModalAnswerer::Seen box = modals.seen().at(0);
    QCOMPARE(box.className, QStringLiteral("QMessageBox"));
    QCOMPARE(box.title, QStringLiteral("Open error"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, int(QMessageBox::Ok));
    QCOMPARE(box.text, expected);
    QStringList lines = box.text.split(QLatin1Char('\n'));
    QCOMPARE(lines.takeLast(), QString()); // a line break behind every line
    QCOMPARE(lines.size(), lineCount);
    if (!firstLine.isEmpty())
        QCOMPARE(lines.first(), firstLine);
    if (lineCount == 2)
        QVERIFY2(lines.at(1).startsWith(QLatin1String("file is invalid at: line: ")),
            qPrintable(lines.at(1)));
    QVERIFY2(windowsShownWithBox.isEmpty(), qPrintable(windowsShownWithBox.join(QLatin1Char(' '))));

    QVERIFY(!manager->hasSchema());
    QVERIFY(!manager->isVisible());
}

void TestManagerStartup::failingStartupCheckIsReported_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("versions");
    QTest::addColumn<QStringList>("services");

    const QString both = QStringLiteral("Init Service lsist And Version fail");
    const QString versionsFail = QStringLiteral("Init List of config versions fail");
    const QString servicesFail = QStringLiteral("Init Service List fail");
    const QStringList fixtureVersions = { "1.0", "2.0", "1.5" };

    {
        QDomDocument schema = fixtureSchema();
        const QList<QDomElement> declarations = rootDeclarations(schema);
        for (int i = 3; i < declarations.size(); ++i)
            declarations.at(i).parentNode().removeChild(declarations.at(i));
        QTest::newRow("three children, the first two right")
            << toBytes(schema) << both << QStringList() << QStringList();
    }
    {
        QDomDocument schema = fixtureSchema();
        const QList<QDomElement> declarations = rootDeclarations(schema);
        declarations.at(0).parentNode().insertBefore(declarations.at(1), declarations.at(0));
        QTest::newRow("Service first, Version second")
            << toBytes(schema) << versionsFail << QStringList() << QStringList();
    }
    {
        QDomDocument schema = fixtureSchema();
        _makeComplex(rootDeclarations(schema).at(0), false);
        QTest::newRow("Version is a section")
            << toBytes(schema) << versionsFail << QStringList() << QStringList();
    }
    {
        QDomDocument schema = fixtureSchema();
        QDomElement service = rootDeclarations(schema).at(1);
        service.setAttribute(QStringLiteral("name"), QStringLiteral("Services"));
        QTest::newRow("second child named Services")
            << toBytes(schema) << servicesFail << QStringList() << QStringList();
    }
    {
        QDomDocument schema = fixtureSchema();
        _makeComplex(rootDeclarations(schema).at(1), true);
        QTest::newRow("Service is a list")
            << toBytes(schema) << servicesFail << QStringList() << QStringList();
    }
    {
        // Service is broken as well; as it is not looked at, one box only.
        QDomDocument schema = fixtureSchema();
        _replaceFacets(rootDeclarations(schema).at(0), true);
        _replaceFacets(rootDeclarations(schema).at(1), false);
        QTest::newRow("Version with a range")
            << toBytes(schema) << versionsFail << QStringList() << QStringList();
    }
    {
        QDomDocument schema = fixtureSchema();
        _replaceFacets(rootDeclarations(schema).at(1), false);
        QTest::newRow("Service without enumeration")
            << toBytes(schema) << servicesFail << fixtureVersions << QStringList();
    }
}

void TestManagerStartup::failingStartupCheckIsReported()
{
    QFETCH(QByteArray, schema);
    QFETCH(QString, text);
    QFETCH(QStringList, versions);
    QFETCH(QStringList, services);

    QVERIFY(installSchema(schema));
    Modals modals;
    modals.ok();
    auto manager = makeManager();
    Window window(manager.get());

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(modals.seen().at(0).title, QStringLiteral("Open error"));
    QCOMPARE(modals.seen().at(0).icon, QMessageBox::Critical);
    QCOMPARE(modals.seen().at(0).text, text);

    QCOMPARE(_texts(manager->getSuppVersions()), versions);
    QCOMPARE(QStringList(manager->getServiceList()), services);
    QCOMPARE(
        manager->getNewestVersion().getString(), std::string(versions.isEmpty() ? "0" : "2.0"));
    // Start-up goes on to the closed window.
    QVERIFY(manager->hasSchema());
    QVERIFY(!manager->isVisible());
    QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
    const QString wrong = window.wrongEnabledState(false);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestManagerStartup::newestVersionIsGreatestNotLastListed()
{
    Modals modals;
    auto manager = makeManager();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_texts(manager->getSuppVersions()), QStringList({ "1.0", "2.0", "1.5" }));
    QCOMPARE(manager->getNewestVersion().getString(), std::string("2.0"));
}

void TestManagerStartup::duplicateVersionsAreKept()
{
    QVERIFY(installSchema(schemaWithVersions({ "1.0", "2.0", "1.0", "2.0" })));
    Modals modals;
    auto manager = makeManager();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_texts(manager->getSuppVersions()), QStringList({ "1.0", "2.0", "1.0", "2.0" }));
    QCOMPARE(manager->getNewestVersion().getString(), std::string("2.0"));
}

void TestManagerStartup::equalVersionsKeepFirstText_data()
{
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<QString>("newest");

    QTest::newRow("1.0 before 1.0.0")
        << QStringList({ "0.5", "1.0", "1.0.0" }) << QStringLiteral("1.0");
    QTest::newRow("1.0.0 before 1.0")
        << QStringList({ "1.0.0", "0.5", "1.0" }) << QStringLiteral("1.0.0");
}

void TestManagerStartup::equalVersionsKeepFirstText()
{
    QFETCH(QStringList, listed);
    QFETCH(QString, newest);

    QVERIFY(installSchema(schemaWithVersions(listed)));
    Modals modals;
    auto manager = makeManager();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_texts(manager->getSuppVersions()), listed);
    QCOMPARE(QString::fromStdString(manager->getNewestVersion().getString()), newest);
}

void TestManagerStartup::onlyZeroVersionsLeaveNewestAtZero()
{
    QVERIFY(installSchema(schemaWithVersions({ "0", "0.0" })));
    Modals modals;
    auto manager = makeManager();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_texts(manager->getSuppVersions()), QStringList({ "0", "0.0" }));
    QCOMPARE(manager->getNewestVersion().getString(), std::string("0"));
}

void TestManagerStartup::emptyServiceListReachesServiceDialog()
{
    QDomDocument schema = fixtureSchema();
    _replaceFacets(rootDeclarations(schema).at(1), false);
    QVERIFY(installSchema(toBytes(schema)));
    std::unique_ptr<Manager> manager;
    {
        Modals modals;
        modals.ok(); // "Init Service List fail"
        manager = makeManager();
        VERIFY_MODALS_DONE(modals);
    }
    Window window(manager.get());

    Modals modals;
    int radioButtons = -1;
    modals.handleWith([&radioButtons](QWidget *dialog) {
        radioButtons = dialog->findChildren<QRadioButton *>().size();
        for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
            if (button->text() == QLatin1String("&Ok"))
                button->click();
        }
    });
    modals.ok();
    window.actNew->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(0).className, QStringLiteral("DialogNew"));
    QCOMPARE(radioButtons, 0);
    // No service: the default file "-default.conf" does not exist.
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(1).text, QStringLiteral("XML is not opened\n"));
    QVERIFY(manager->getConfigPath().isNull());
    QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
    const QString wrong = window.wrongEnabledState(false);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

MANAGER_TEST_MAIN(TestManagerStartup)
#include "tst_manager_startup.moc"
