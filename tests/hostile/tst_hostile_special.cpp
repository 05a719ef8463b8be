// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Paths that name something other than a regular file: a named pipe that
// nobody writes (an open would wait for a writer for ever), a device that
// never ends (/dev/zero), a socket, and links to them. Each is refused before
// it is opened, as a file that can't be opened is: by the engine, in the
// window, at start-up for the schema, and by orvexctl. A hang here runs into
// the function time-out of this program.

#include "hostilefiles.h"
#include "hostilewindow.h"
#include "treesnapshot.h"

#include "app/manager.h"
#include "engine/orvexconfiglib.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <memory>

using namespace hostile;
using Lines = std::vector<std::string>;

namespace {

QString _schemaPath()
{
    return QCoreApplication::applicationDirPath()
        + QStringLiteral("/orvex/default/schema-userconf.xsd");
}

std::string _path(QString const &path)
{
    return path.toStdString();
}

// A unix socket bound at `path`; its descriptor, or -1.
int _bindSocket(QString const &path)
{
    int const fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    QByteArray const name = QFile::encodeName(path);
    if (fd < 0 || name.size() >= int(sizeof(address.sun_path)))
        return -1;
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    if (::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

} // namespace

class TestHostileSpecial : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void loaderRefusesPathThatIsNoRegularFile_data();
    void loaderRefusesPathThatIsNoRegularFile();
    void schemaThatIsNoRegularFileIsNotOpened_data();
    void schemaThatIsNoRegularFileIsNotOpened();
    void validatorRefusesConfigurationThatIsNoRegularFile_data();
    void validatorRefusesConfigurationThatIsNoRegularFile();
    void loaderStillFollowsLinkToRegularFile();
    void windowRefusesOpeningPathThatIsNoRegularFile_data();
    void windowRefusesOpeningPathThatIsNoRegularFile();
    void windowStartsWithNoSchemaWhenSchemaIsAPipe();
    void orvexctlRefusesConfigurationThatIsNoRegularFile_data();
    void orvexctlRefusesConfigurationThatIsNoRegularFile();

private:
    // The rows of every kind of path: a pipe, a device, a socket, a link to a pipe.
    void _kinds();
    QString _special(QString const &kind) const;

    std::unique_ptr<QTemporaryDir> _dir;
    int _socket = -1;
    ParameterComplex *_root = nullptr;
};

void TestHostileSpecial::initTestCase()
{
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, _root, _path(shippedSchemaPath())), 0);
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, _root, _path(shippedConfigPath())), 0);
}

void TestHostileSpecial::cleanupTestCase()
{
    delete _root;
}

void TestHostileSpecial::init()
{
    _dir = std::make_unique<QTemporaryDir>();
    QVERIFY(_dir->isValid());
    QCOMPARE(
        ::mkfifo(QFile::encodeName(_dir->filePath(QStringLiteral("pipe.conf"))).constData(), 0600),
        0);
    QVERIFY(QFile::link(
        _dir->filePath(QStringLiteral("pipe.conf")), _dir->filePath(QStringLiteral("link.conf"))));
    _socket = _bindSocket(_dir->filePath(QStringLiteral("socket.conf")));
    QVERIFY(_socket >= 0);
}

void TestHostileSpecial::cleanup()
{
    if (_socket >= 0)
        ::close(_socket);
    _socket = -1;
    _dir.reset();
    // The start-up case puts a pipe in the place of the schema.
    QFile::remove(_schemaPath());
    QVERIFY(QFile::copy(shippedSchemaPath(), _schemaPath()));
}

void TestHostileSpecial::_kinds()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("named pipe") << QStringLiteral("pipe.conf");
    QTest::newRow("device") << QStringLiteral("/dev/zero");
    QTest::newRow("socket") << QStringLiteral("socket.conf");
    QTest::newRow("link to a named pipe") << QStringLiteral("link.conf");
}

QString TestHostileSpecial::_special(QString const &kind) const
{
    return kind.startsWith(QLatin1Char('/')) ? kind : _dir->filePath(kind);
}

void TestHostileSpecial::loaderRefusesPathThatIsNoRegularFile_data()
{
    _kinds();
}

void TestHostileSpecial::loaderRefusesPathThatIsNoRegularFile()
{
    QFETCH(QString, kind);
    Snapshot const before = snapshot(_root);
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, _root, _path(_special(kind))), 2);
    QCOMPARE(lines, Lines { "XML is not opened" });
    QCOMPARE(snapshot(_root), before);
}

void TestHostileSpecial::schemaThatIsNoRegularFileIsNotOpened_data()
{
    _kinds();
}

void TestHostileSpecial::schemaThatIsNoRegularFileIsNotOpened()
{
    QFETCH(QString, kind);
    Lines lines;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(lines, root, _path(_special(kind))), 2);
    QCOMPARE(lines, Lines { "XSD schema is not opened" });
    QVERIFY(!root);
}

void TestHostileSpecial::validatorRefusesConfigurationThatIsNoRegularFile_data()
{
    _kinds();
}

void TestHostileSpecial::validatorRefusesConfigurationThatIsNoRegularFile()
{
    QFETCH(QString, kind);
    Lines lines;
    QCOMPARE(
        OrvexConfigLib::validateXML(lines, _path(shippedSchemaPath()), _path(_special(kind))), 2);
    QCOMPARE(lines, (Lines { "XML is not opened", "file is invalid at: line: -1, column: -1" }));
}

// A link is followed: what counts is what it points to.
void TestHostileSpecial::loaderStillFollowsLinkToRegularFile()
{
    QString const file = writeFile(*_dir, QStringLiteral("renamed.conf"), renamedConfig());
    QString const link = _dir->filePath(QStringLiteral("renamed-link.conf"));
    QVERIFY(QFile::link(file, link));
    Lines lines;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, _root, _path(link)), 0);
    QCOMPARE(QString::fromStdString(leafAt(_root, { "Observatory", "SiteName" })->getValue()),
        QStringLiteral("Renamed Observatory"));
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(lines, _root, _path(shippedConfigPath())), 0);
    QCOMPARE(lines, Lines {});
}

void TestHostileSpecial::windowRefusesOpeningPathThatIsNoRegularFile_data()
{
    _kinds();
}

void TestHostileSpecial::windowRefusesOpeningPathThatIsNoRegularFile()
{
    QFETCH(QString, kind);
    std::unique_ptr<Manager> manager;
    {
        Boxes boxes;
        manager = std::make_unique<Manager>();
        HOSTILE_VERIFY_BOXES_DONE(boxes);
    }
    Boxes boxes;
    boxes.choose(_special(kind));
    boxes.pressButton(QMessageBox::Ok);
    manager->sl_open();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 2);
    QCOMPARE(boxes.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(boxes.seen().at(1).text, QStringLiteral("XML is not opened\n"));
    QVERIFY(manager->getConfigPath().isEmpty());
    QCOMPARE(manager->windowTitle(), QStringLiteral("Orvex Config Manager"));
    QVERIFY(!action(manager.get(), QStringLiteral("&Save"))->isEnabled());
}

void TestHostileSpecial::windowStartsWithNoSchemaWhenSchemaIsAPipe()
{
    QVERIFY(QFile::remove(_schemaPath()));
    QCOMPARE(::mkfifo(QFile::encodeName(_schemaPath()).constData(), 0600), 0);

    verifyStartWithUnopenedSchema();
}

void TestHostileSpecial::orvexctlRefusesConfigurationThatIsNoRegularFile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("message");
    // What goes to standard output; "%1" stands for the path.
    QTest::addColumn<QString>("out");
    // The command's own first line names the file; the engine's line follows.
    QByteArray const notOpened = "\nXML is not opened\n";
    QTest::newRow("list a named pipe")
        << QStringLiteral("pipe.conf") << QStringLiteral("list") << notOpened << QString();
    QTest::newRow("list a device")
        << QStringLiteral("/dev/zero") << QStringLiteral("list") << notOpened << QString();
    QTest::newRow("list a socket")
        << QStringLiteral("socket.conf") << QStringLiteral("list") << notOpened << QString();
    QTest::newRow("validate a named pipe")
        << QStringLiteral("pipe.conf") << QStringLiteral("validate") << notOpened
        << QStringLiteral("%1:0:0: cannot be read: is no regular file\n0 valid, 1 invalid\n");
    QTest::newRow("validate a device")
        << QStringLiteral("/dev/zero") << QStringLiteral("validate") << notOpened
        << QStringLiteral("%1:0:0: cannot be read: is no regular file\n0 valid, 1 invalid\n");
    QTest::newRow("import OMM records from a named pipe")
        << QStringLiteral("pipe.conf") << QStringLiteral("tle-import")
        << QByteArray(" cannot be read\n") << QString();
}

void TestHostileSpecial::orvexctlRefusesConfigurationThatIsNoRegularFile()
{
    QFETCH(QString, kind);
    QFETCH(QString, command);
    QFETCH(QByteArray, message);
    QFETCH(QString, out);
    QProcess process;
    process.start(QStringLiteral(ORVEXCTL_PATH), { command, _special(kind) });
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QByteArray const err = process.readAllStandardError();
    QCOMPARE(process.exitCode(), 2);
    QVERIFY2(err.startsWith("orvexctl: ") && err.contains(message), err.constData());
    QCOMPARE(process.readAllStandardOutput(),
        out.isEmpty() ? QByteArray() : out.arg(_special(kind)).toUtf8());
}

QTEST_MAIN(TestHostileSpecial)

#include "tst_hostile_special.moc"
