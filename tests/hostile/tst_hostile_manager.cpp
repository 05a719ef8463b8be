// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Hostile files opened and saved through the main window: the user sees the
// one box the program has for the case, with the engine's lines, and nothing
// else happens — the open file and the tree keep their values, no file is
// written or changed behind the user's back, and nothing hangs.

#include "hostilefiles.h"
#include "hostilewindow.h"
#include "treesnapshot.h"

#include "app/manager.h"
#include "engine/orvexconfiglib_p.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <memory>

using namespace hostile;

namespace {

constexpr qint64 kFewSeconds = 30000;

} // namespace

class TestHostileManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void refusedFileShowsOneErrorBoxAndChangesNothing_data();
    void refusedFileShowsOneErrorBoxAndChangesNothing();
    void oddFileOpensWithoutABox_data();
    void oddFileOpensWithoutABox();
    void externalEntityContentReachesNoValueAndNoSavedFile();
    void fiftyMegabyteConfigurationOpensInSeconds();

    void saveAsToUnwritablePlaceShowsErrorAndKeepsThePath_data();
    void saveAsToUnwritablePlaceShowsErrorAndKeepsThePath();
    void saveOverAPathThatBecameADirectoryShowsError();
    void saveAsToFullDeviceCountsAsSaved();

private:
    QString _write(QString const &name, QByteArray const &bytes);
    Snapshot _values() const { return snapshot(_manager->getRootParameter()); }

    std::unique_ptr<QTemporaryDir> _dir;
    std::unique_ptr<Manager> _manager;
    QString _good;
    QByteArray _goodBytes;
    Snapshot _loaded;
};

QString TestHostileManager::_write(QString const &name, QByteArray const &bytes)
{
    return writeFile(*_dir, name, bytes);
}

void TestHostileManager::initTestCase()
{
    _dir = std::make_unique<QTemporaryDir>();
    QVERIFY(_dir->isValid());
    _goodBytes = shippedConfig();
    _good = _write(QStringLiteral("good.conf"), _goodBytes);
    QVERIFY(!_good.isEmpty());

    Boxes boxes;
    _manager = std::make_unique<Manager>();
    QVERIFY(_manager->hasSchema());
    _manager->show();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
}

// Every case starts with the good file open and saved.
void TestHostileManager::init()
{
    Boxes boxes;
    boxes.choose(_good);
    _manager->sl_open();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(_manager->getConfigPath(), _good);
    QVERIFY(_manager->isSaved());
    _loaded = _values();
    QCOMPARE(_loaded.value(siteNamePath()), QStringList { siteName() });
}

void TestHostileManager::cleanupTestCase()
{
    _manager.reset();
    QCOMPARE(readFile(_good), _goodBytes);
}

// ------------------------------------------------------------------ open

void TestHostileManager::refusedFileShowsOneErrorBoxAndChangesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");

    QString const notDom = QStringLiteral("XML is not dom document\n");
    QByteArray const renamed = renamedConfig();
    QTest::newRow("empty file") << QByteArray() << notDom;
    QTest::newRow("binary garbage") << readFile(fixture(QStringLiteral("garbage.bin"))) << notDom;
    QTest::newRow("truncated XML") << renamed.left(renamed.indexOf("</Observatory>")) << notDom;
    QTest::newRow("UTF-16 said to be UTF-8")
        << QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromUtf8(renamed)) << notDom;
    QTest::newRow("nested 100,000 deep") << deepConfig(100000) << notDom;
    QTest::newRow("nested one level too deep") << deepConfig(OrvexConfigLib::_maxNesting) << notDom;
    QTest::newRow("billion laughs")
        << configWithDoctype(billionLaughsDoctype("root"), "&lol9;") << notDom;
    QTest::newRow("root of another name")
        << QByteArray(renamed).replace("<root>", "<Root>").replace("</root>", "</Root>")
        << QStringLiteral("Root parameter does not match root XML node\n");
}

// The box is a warning titled "Error!" with the engine's line; the window
// closes what was open and shows the old path in its title.
void TestHostileManager::refusedFileShowsOneErrorBoxAndChangesNothing()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QString const path = _write(QStringLiteral("refused.conf"), content);

    Boxes boxes;
    boxes.choose(path);
    boxes.pressButton(QMessageBox::Ok);
    QElapsedTimer timer;
    timer.start();
    _manager->sl_open();
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));

    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 2);
    QCOMPARE(boxes.seen().at(0).className, QStringLiteral("QFileDialog"));
    QCOMPARE(boxes.seen().at(1).className, QStringLiteral("QMessageBox"));
    QCOMPARE(boxes.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(boxes.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(boxes.seen().at(1).text, text);

    QCOMPARE(_manager->getConfigPath(), _good);
    QCOMPARE(_manager->windowTitle(), caption(_good));
    QVERIFY(!action(_manager.get(), QStringLiteral("&Save"))->isEnabled());
    QCOMPARE(_values(), _loaded);
    QCOMPARE(readFile(path), content);
    QCOMPARE(readFile(_good), _goodBytes);
}

void TestHostileManager::oddFileOpensWithoutABox_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("site");

    QByteArray utf16 = renamedConfig();
    utf16.replace("encoding=\"UTF-8\"", "encoding=\"UTF-16\"");
    QTest::newRow("UTF-16 that says so") << QTextCodec::codecForName("UTF-16")->fromUnicode(
        QString::fromUtf8(utf16)) << QStringLiteral("Renamed Observatory");
    // Qt's DOM parser reads bytes that aren't UTF-8 as U+FFFD, without error.
    QTest::newRow("invalid UTF-8") << configWithDoctype(QByteArray(), "Orvex \xff\xfe Observatory")
                                   << QStringLiteral("Orvex \uFFFD\uFFFD Observatory");
    // A reference to an entity nobody declared is kept as an empty node.
    QTest::newRow("undeclared entity") << configWithDoctype(QByteArray(), "&nowhere;") << QString();
    QTest::newRow("nested to the limit")
        << deepConfig(OrvexConfigLib::_maxNesting - 1) << QStringLiteral("Renamed Observatory");
}

// The file is of the newest version: no box, and no update rewrites it.
void TestHostileManager::oddFileOpensWithoutABox()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, site);
    QString const path = _write(QStringLiteral("odd.conf"), content);

    Boxes boxes;
    boxes.choose(path);
    _manager->sl_open();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);

    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->windowTitle(), caption(path));
    QVERIFY(_manager->isSaved());
    Snapshot expected = _loaded;
    expected[siteNamePath()] = QStringList { site };
    QCOMPARE(_values(), expected);
    QCOMPARE(readFile(path), content);
}

void TestHostileManager::externalEntityContentReachesNoValueAndNoSavedFile()
{
    QString const marker = QStringLiteral("LOCAL-FILE-CONTENT");
    QString const secret = _write(QStringLiteral("secret.txt"), marker.toUtf8() + "\n");
    QByteArray const doctype = "<!DOCTYPE root [\n <!ENTITY secret SYSTEM \""
        + QUrl::fromLocalFile(secret).toEncoded() + "\">\n]>";
    QString const path
        = _write(QStringLiteral("entity.conf"), configWithDoctype(doctype, "&secret;"));

    Boxes boxes;
    boxes.choose(path);
    _manager->sl_open();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(pathsHolding(_values(), marker), QStringList());
    QCOMPARE(_values().value(siteNamePath()), QStringList { QString() });

    Boxes saving;
    _manager->sl_save();
    HOSTILE_VERIFY_BOXES_DONE(saving);
    QByteArray const saved = readFile(path);
    QVERIFY(saved.contains("<SiteName></SiteName>"));
    QVERIFY(!saved.contains(marker.toUtf8()));
    QVERIFY(!saved.contains("DOCTYPE"));
}

void TestHostileManager::fiftyMegabyteConfigurationOpensInSeconds()
{
    QByteArray const large
        = largeConfig(50 * 1024 * 1024).replace(siteName(), "Renamed Observatory");
    QString const path = _write(QStringLiteral("large.conf"), large);
    QVERIFY(!path.isEmpty());

    Boxes boxes;
    boxes.choose(path);
    QElapsedTimer timer;
    timer.start();
    _manager->sl_open();
    QVERIFY2(timer.elapsed() < kFewSeconds, qPrintable(QString::number(timer.elapsed())));
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(
        _values().value(siteNamePath()), QStringList { QStringLiteral("Renamed Observatory") });
    QCOMPARE(QFileInfo(path).size(), qint64(large.size()));
}

// ------------------------------------------------------------------ save

void TestHostileManager::saveAsToUnwritablePlaceShowsErrorAndKeepsThePath_data()
{
    QTest::addColumn<QString>("target");

    QString const plainFile = _write(QStringLiteral("plain.txt"), "not a directory\n");
    QString const readOnly = _dir->filePath(QStringLiteral("read-only"));
    QVERIFY(QDir().mkpath(readOnly));
    QVERIFY(QFile::setPermissions(readOnly, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    // Root writes into a read-only directory all the same; beneath a regular
    // file nobody can create anything.
    QFile probe(readOnly + QStringLiteral("/probe"));
    bool const permissionsHold = !probe.open(QIODevice::WriteOnly);
    if (!permissionsHold)
        probe.remove();
    QTest::newRow("read-only directory")
        << (permissionsHold ? readOnly : plainFile) + QStringLiteral("/out.conf");
    QTest::newRow("below a regular file") << plainFile + QStringLiteral("/out.conf");
    QTest::newRow("inside /proc") << QStringLiteral("/proc/orvex-hostile.conf");
}

void TestHostileManager::saveAsToUnwritablePlaceShowsErrorAndKeepsThePath()
{
    QFETCH(QString, target);
    Boxes boxes;
    boxes.choose(target);
    boxes.pressButton(QMessageBox::Ok);
    _manager->sl_saveAs();

    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 2);
    QCOMPARE(boxes.seen().at(0).title, QStringLiteral("Save Config File"));
    QCOMPARE(boxes.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(boxes.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(boxes.seen().at(1).text, QStringLiteral("XML is not created\n"));
    QCOMPARE(_manager->getConfigPath(), _good);
    QCOMPARE(_manager->windowTitle(), caption(_good));
    QVERIFY(_manager->isSaved());
    QVERIFY(!QFileInfo::exists(target));
    QCOMPARE(readFile(_good), _goodBytes);
}

void TestHostileManager::saveOverAPathThatBecameADirectoryShowsError()
{
    QString const path = _write(QStringLiteral("vanishing.conf"), _goodBytes);
    Boxes opening;
    opening.choose(path);
    _manager->sl_open();
    HOSTILE_VERIFY_BOXES_DONE(opening);
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path));

    Boxes boxes;
    boxes.pressButton(QMessageBox::Ok);
    _manager->sl_save();
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().at(0).title, QStringLiteral("Error!"));
    QCOMPARE(boxes.seen().at(0).text, QStringLiteral("XML is not created\n"));
    QCOMPARE(_manager->getConfigPath(), path);
    QVERIFY(QFileInfo(path).isDir());
    QVERIFY(QDir(path).isEmpty());
}

// The writer doesn't test its writes: on a device that takes no byte the
// save "succeeds", with no box, and the state is marked saved.
void TestHostileManager::saveAsToFullDeviceCountsAsSaved()
{
    Boxes boxes;
    boxes.choose(QStringLiteral("/dev/full"));
    boxes.pressButton(QMessageBox::Yes); // the file dialog asks before replacing an existing file
    _manager->sl_saveAs();

    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 2);
    QCOMPARE(boxes.seen().at(1).className, QStringLiteral("QMessageBox"));
    QVERIFY(boxes.seen().at(1).text.contains(QStringLiteral("already exists")));
    QCOMPARE(_manager->getConfigPath(), QStringLiteral("/dev/full"));
    QCOMPARE(_manager->windowTitle(), caption(QStringLiteral("/dev/full")));
    QVERIFY(_manager->isSaved());
    QCOMPARE(_values(), _loaded);
}

QTEST_MAIN(TestHostileManager)

#include "tst_hostile_manager.moc"
