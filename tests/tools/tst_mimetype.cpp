// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The type of the configuration files that the package gives the desktop: a
// MIME database is built from the package's definition and Debian's shared
// types in a temporary data directory, and Qt's MIME database, which reads it
// as a desktop does, names the type of files by their content and by their
// extension.
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString const _definition = QStringLiteral(ORVEX_PACKAGING_DIR "/orvex-config-manager.xml");
QString const _desktopEntry
    = QStringLiteral(ORVEX_PACKAGING_DIR "/org.orvex_observatory.ConfigManager.desktop");
QString const _example = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/conf/tracking-example.conf");
QString const _default = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/survey-default.conf");
QString const _type = QStringLiteral("application/x-orvex-config");
// One database of Debian's shared types and ours, as update-mime-database
// makes it on an installed system: Qt matches content within one database.
QString const _sharedTypes = QStringLiteral("/usr/share/mime/packages/freedesktop.org.xml");

QByteArray _read(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestMimeType : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typeOfFile_data();
    void typeOfFile();
    void typeIsAnXmlType();
    void desktopEntryOpensTheTypeOnly();

private:
    QTemporaryDir _data;
};

void TestMimeType::initTestCase()
{
    QVERIFY(_data.isValid());
    QVERIFY(QDir(_data.path()).mkpath(QStringLiteral("mime/packages")));
    QVERIFY(QFile::copy(_definition, _data.filePath("mime/packages/orvex-config-manager.xml")));
    QVERIFY(QFile::copy(_sharedTypes, _data.filePath("mime/packages/freedesktop.org.xml")));
    QProcess update;
    update.start(QStringLiteral("update-mime-database"), { _data.filePath("mime") });
    QVERIFY(update.waitForFinished(60000));
    QCOMPARE(update.exitCode(), 0);
    QVERIFY(QFile::exists(_data.filePath("mime/mime.cache")));
    // Before the first use of QMimeDatabase, which reads the directories once.
    qputenv("XDG_DATA_HOME", QFile::encodeName(_data.path()));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(_data.path()));
}

void TestMimeType::typeOfFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");

    QByteArray const example = _read(_example);
    QVERIFY(example.startsWith("<?xml"));
    QTest::newRow("configuration, *.conf") << "site.conf" << example << _type;
    QTest::newRow("configuration without extension") << "site" << example << _type;
    QTest::newRow("configuration, other extension") << "site.backup" << example << _type;
    QTest::newRow("default configuration") << "survey" << _read(_default) << _type;
    QTest::newRow("other XML without extension")
        << "other" << QByteArray("<?xml version=\"1.0\"?>\n<config><a>1</a></config>\n")
        << "application/xml";
}

void TestMimeType::typeOfFile()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile file(dir.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QCOMPARE(QMimeDatabase().mimeTypeForFile(file.fileName()).name(), expected);
}

void TestMimeType::typeIsAnXmlType()
{
    QMimeType const type = QMimeDatabase().mimeTypeForName(_type);
    QVERIFY(type.isValid());
    QVERIFY(type.inherits(QStringLiteral("application/xml")));
    QCOMPARE(type.comment(), QStringLiteral("Orvex configuration"));
    QVERIFY(type.globPatterns().contains(QStringLiteral("*.conf")));
}

// The program is offered for its own files, not for every XML file.
void TestMimeType::desktopEntryOpensTheTypeOnly()
{
    QList<QByteArray> const lines = _read(_desktopEntry).split('\n');
    QVERIFY(lines.contains("[Desktop Entry]"));
    QVERIFY(lines.contains("MimeType=" + _type.toUtf8() + ';'));
}

QTEST_GUILESS_MAIN(TestMimeType)
#include "tst_mimetype.moc"
