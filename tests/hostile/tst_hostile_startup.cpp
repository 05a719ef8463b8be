// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Hostile schemas beside the program: a refused one gives the box "Open
// error" with the engine's lines and no window; a schema that reaches for
// the network starts without it; a schema a thousand sections deep makes a
// window that opens and saves its configuration.

#include "hostilefiles.h"
#include "hostilewindow.h"
#include "treesnapshot.h"

#include "app/manager.h"
#include "engine/orvexconfiglib_p.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace hostile;

namespace {

constexpr qint64 kFewSeconds = 60000;

QString _defaultDir()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/orvex/default");
}
QString _schemaPath()
{
    return _defaultDir() + QStringLiteral("/schema-userconf.xsd");
}

bool _install(QString const &path, QByteArray const &bytes)
{
    QFile::remove(path);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestHostileStartup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void refusedSchemaShowsOpenErrorAndNoWindow_data();
    void refusedSchemaShowsOpenErrorAndNoWindow();
    void schemaAtAPathThatIsADirectoryShowsOpenError();
    void schemaImportingRemoteLocationStartsWithoutNetwork();
    void schemaThousandSectionsDeepMakesAWorkingWindow();
};

// Puts the shipped schema back and removes what a case added.
void TestHostileStartup::cleanup()
{
    QDir(_schemaPath()).removeRecursively();
    QVERIFY(_install(_schemaPath(), shippedSchema()));
    QFile::remove(_defaultDir() + QStringLiteral("/deep-default.conf"));
}

void TestHostileStartup::refusedSchemaShowsOpenErrorAndNoWindow_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<QString>("text");

    QByteArray const laughs = schemaWithDoctype(billionLaughsDoctype("xs:schema"), "&lol9;");
    QByteArray const deep = deepDocument(100000);
    QTest::newRow("empty file")
        << QByteArray()
        << QStringLiteral("XSD schema is not load\nfile is invalid at: line: 1, column: 0\n");
    QTest::newRow("binary garbage")
        << readFile(fixture(QStringLiteral("garbage.bin")))
        << QStringLiteral("XSD schema is not load\nfile is invalid at: line: 1, column: 2\n");
    QTest::newRow("nested 100,000 deep")
        << deep
        << QStringLiteral("XSD schema is not load\nfile is invalid at: line: 2, column: %1\n")
               .arg((OrvexConfigLib::_maxNesting + 1) * 3);
    QTest::newRow("billion laughs")
        << laughs
        << QStringLiteral("XSD schema is not load\n%1\n")
               .arg(QString::fromStdString(locationLine(laughs, laughs.indexOf("&lol9;") + 6)));
    QTest::newRow("no root declaration")
        << QByteArray(shippedSchema())
               .replace("<xs:element name=\"root\">", "<xs:element name=\"Root\">")
        << QStringLiteral("XSD schema is not orvex schema\n");
}

void TestHostileStartup::refusedSchemaShowsOpenErrorAndNoWindow()
{
    QFETCH(QByteArray, schema);
    QFETCH(QString, text);
    QVERIFY(_install(_schemaPath(), schema));

    Boxes boxes;
    boxes.pressButton(QMessageBox::Ok);
    QElapsedTimer timer;
    timer.start();
    Manager manager;
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));

    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().at(0).icon, QMessageBox::Critical);
    QCOMPARE(boxes.seen().at(0).title, QStringLiteral("Open error"));
    QCOMPARE(boxes.seen().at(0).text, text);
    QVERIFY(!manager.hasSchema());
    QVERIFY(!manager.isVisible());
    QCOMPARE(readFile(_schemaPath()), schema);
}

void TestHostileStartup::schemaAtAPathThatIsADirectoryShowsOpenError()
{
    QVERIFY(QFile::remove(_schemaPath()));
    QVERIFY(QDir().mkdir(_schemaPath()));

    verifyStartWithUnopenedSchema();
}

void TestHostileStartup::schemaImportingRemoteLocationStartsWithoutNetwork()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QByteArray const url
        = "http://127.0.0.1:" + QByteArray::number(server.serverPort()) + "/remote.xsd";
    QVERIFY(_install(_schemaPath(),
        schemaWithTopLevel("<xs:import namespace=\"http://example.org/remote\" "
                           "schemaLocation=\""
            + url + "\"/>")));

    Boxes boxes;
    Manager manager;
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QVERIFY(manager.hasSchema());
    QCOMPARE(manager.getServiceList(),
        (QList<QString> {
            QStringLiteral("tracking"), QStringLiteral("survey"), QStringLiteral("photometry") }));
    // A request would have reached the listening socket's queue before the
    // constructor returned.
    QVERIFY(!server.waitForNewConnection(100));
}

void TestHostileStartup::schemaThousandSectionsDeepMakesAWorkingWindow()
{
    int const sections = 1000;
    QVERIFY(_install(_schemaPath(), nestedSchema(sections)));
    QVERIFY(_install(_defaultDir() + QStringLiteral("/deep-default.conf"),
        nestedConfig(sections, "bottom", "top")));
    QTemporaryDir dir;
    QString const saved = dir.filePath(QStringLiteral("deep.conf"));

    QElapsedTimer timer;
    timer.start();
    Boxes boxes;
    Manager manager;
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QVERIFY(manager.hasSchema());
    QCOMPARE(manager.getServiceList(), QList<QString> { QStringLiteral("deep") });
    manager.show();

    Boxes creating;
    creating.handleWith([](QWidget *widget) {
        if (auto *dialog = qobject_cast<QDialog *>(widget))
            dialog->accept(); // the only service is chosen already
    });
    manager.sl_newc();
    HOSTILE_VERIFY_BOXES_DONE(creating);
    QCOMPARE(creating.seen().at(0).title, QStringLiteral("Service select"));
    QCOMPARE(manager.getService(), QStringLiteral("deep"));
    QVERIFY(action(&manager, QStringLiteral("&Save"))->isEnabled());
    QCOMPARE(
        pathsHolding(snapshot(manager.getRootParameter()), QStringLiteral("bottom")).size(), 1);

    Boxes saving;
    saving.choose(saved);
    manager.sl_save(); // a new configuration has no path: Save As
    HOSTILE_VERIFY_BOXES_DONE(saving);
    QCOMPARE(manager.getConfigPath(), saved);
    QByteArray const file = readFile(saved);
    // One blank of indentation per level: the leaf sits below the root and
    // all the sections.
    QVERIFY(file.contains("\n" + QByteArray(sections + 1, ' ') + "<Bottom>bottom</Bottom>\n"));
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(TestHostileStartup)

#include "tst_hostile_startup.moc"
