// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Opening and creating configurations: the tests of version and service, the
// refusals, the command New, and the update of an older file to the newest
// version, the whole way from opening it to saving an edit.

#include "managertestkit.h"

#include "app/manager.h"
#include "engine/orvexconfiglib.h"
#include "golden.h"
#include "model/parameter.h"
#include "navigation/paramstree.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <vector>

using namespace ManagerTest;

namespace {

const QString kUpdateWarning
    = QStringLiteral("The current working version of the user config is %1.\n"
                     "You are loaading an oldest version %2.\n"
                     "The manager try to update your config file.");

// The key paths ("Station/Enabled") of the one-value leaves below node.
void _rec_leafPaths(const ParameterComplex *node, const QString &prefix, QStringList &paths)
{
    for (const Parameter *child : node->getChildrenPtrs()) {
        const QString path = prefix + QString::fromStdString(child->getParameterKey());
        if (child->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_leafPaths(
                static_cast<const ParameterComplex *>(child), path + QLatin1Char('/'), paths);
        else if (child->getGlobalType() == Parameter::GlobalType::Simple)
            paths << path;
    }
}

} // namespace

class TestManagerOpen : public ManagerFixture
{
    Q_OBJECT

public:
    TestManagerOpen() : ManagerFixture(false) {}

private slots:
    void openingNewestVersionShowsNoBox();
    void openDialogCancelledChangesNothing();
    void refusedFileLeavesOldPathInTitleWithWidgetsDisabled_data();
    void refusedFileLeavesOldPathInTitleWithWidgetsDisabled();
    void firstLoadRefusesUnlistedVersionOrService_data();
    void firstLoadRefusesUnlistedVersionOrService();
    void unlistedValuesPassAfterGoodFile_data();
    void unlistedValuesPassAfterGoodFile();
    void newConfigurationHasNoFileNameUntilSaved();
    void newDialogCancelledChangesNothing();
    void newTakesServiceFromDefaultFile();
    void newFromServiceWithoutDefaultEndsClosed();

    void olderFileIsUpdatedEditedAndSaved();
    void fileListedLastButOlderIsUpdated();
    void updateGivesNewParameterTheDefaultValue();
    void updateKeepsUserValues();
    void updateDropsUndeclaredElements();
    void updateKeepsDefaultItemsOfMissingList();
    void updatedFileOpensWithoutBox();
    void captionHasNoMarkAfterUpdate();
    void shippedExampleIsUpdatedThroughOpen();

private:
    // Opens the file through the menu; modals answers the file dialog.
    void _open(Modals &modals, const QString &path);
    // Opens a copy of alpha-old.conf, confirming the warning; returns its path.
    QString _openOld(Modals &modals);

};

void TestManagerOpen::_open(Modals &modals, const QString &path)
{
    modals.choose(path);
    _window->actOpen->trigger();
}

QString TestManagerOpen::_openOld(Modals &modals)
{
    const QString path = copyInto(fixture(QStringLiteral("alpha-old.conf")), _dir->path());
    modals.choose(path);
    modals.ok();
    _window->actOpen->trigger();
    return path;
}

void TestManagerOpen::openingNewestVersionShowsNoBox()
{
    const QString path = copyInto(fixture(QStringLiteral("alpha-current.conf")), _dir->path());
    const QByteArray before = readAll(path);
    Modals modals;
    modals.choose(path);
    _window->actOpen->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    const ModalAnswerer::Seen dialog = modals.seen().at(0);
    QCOMPARE(dialog.className, QStringLiteral("QFileDialog"));
    QCOMPARE(dialog.title, QStringLiteral("Open Config File"));
    QCOMPARE(dialog.directory, QDir(confDir()).absolutePath());
    QCOMPARE(dialog.nameFilters,
        QStringList({ "Orvex Config File (*.conf)", "XML file (*.xml)", "All files (*)" }));

    QCOMPARE(_manager->getConfigPath(), QDir::toNativeSeparators(path));
    QCOMPARE(_manager->getService(), QStringLiteral("ALPHA"));
    QCOMPARE(_manager->getConfigVersion().getString(), std::string("2.0"));
    QCOMPARE(_window->parameter(QStringLiteral("Station/StationTitle"))->getValue(),
        std::string("Current station"));
    QCOMPARE(readAll(path), before); // not rewritten
    QCOMPARE(_manager->windowTitle(), caption(path, false));
}

void TestManagerOpen::openDialogCancelledChangesNothing()
{
    const QString path = copyInto(fixture(QStringLiteral("beta-current.conf")), _dir->path());
    {
        Modals modals;
        _open(modals, path);
        VERIFY_MODALS_DONE(modals);
    }
    const QStringList rows = _window->rowTexts();
    Modals modals;
    modals.cancel();
    _window->actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QCOMPARE(_window->rowTexts(), rows);
    QVERIFY2(
        _window->wrongEnabledState(true).isEmpty(), qPrintable(_window->wrongEnabledState(true)));
}

void TestManagerOpen::refusedFileLeavesOldPathInTitleWithWidgetsDisabled_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");

    QTest::newRow("not xml") << QByteArray("Version = 2.0\nService = ALPHA\n")
                             << QStringLiteral("XML is not dom document\n");
    QTest::newRow("other root element")
        << configWith(QStringLiteral("2.0"), QStringLiteral("ALPHA")).replace("root>", "config>")
        << QStringLiteral("Root parameter does not match root XML node\n");
}

void TestManagerOpen::refusedFileLeavesOldPathInTitleWithWidgetsDisabled()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);

    const QString good = copyInto(fixture(QStringLiteral("alpha-current.conf")), _dir->path());
    {
        Modals modals;
        _open(modals, good);
        VERIFY_MODALS_DONE(modals);
    }
    const QString bad = _dir->filePath(QStringLiteral("refused.conf"));
    QVERIFY(writeAll(bad, content));
    Modals modals;
    modals.choose(bad);
    modals.ok();
    _window->actOpen->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(modals.seen().at(1).text, text);
    // Closed, yet the old path stands in the title.
    QCOMPARE(_manager->getConfigPath(), good);
    QCOMPARE(_manager->windowTitle(), caption(good, false));
    const QString wrong = _window->wrongEnabledState(false);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QVERIFY(_manager->isSaved());
    QCOMPARE(_window->infoText(), QString());
}

void TestManagerOpen::firstLoadRefusesUnlistedVersionOrService_data()
{
    QTest::addColumn<QString>("version"); // null: no element
    QTest::addColumn<QString>("service");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("serviceAfterGood");

    const QString versionFail = QStringLiteral("Fail to check config version");
    const QString serviceFail = QStringLiteral("Fail to check config service");
    QTest::newRow("newer than any listed") << "9.9"
                                           << "ALPHA" << versionFail << "ALPHA";
    QTest::newRow("listed version in another form") << "2.0.0"
                                                    << "ALPHA" << versionFail << "ALPHA";
    QTest::newRow("no Version element") << QString() << "ALPHA" << versionFail << "ALPHA";
    QTest::newRow("service in small letters") << "2.0"
                                              << "alpha" << serviceFail << "BETA";
    QTest::newRow("service with a blank") << "2.0"
                                          << "ALPHA " << serviceFail << "BETA";
    QTest::newRow("no Service element") << "2.0" << QString() << serviceFail << "BETA";
}

void TestManagerOpen::firstLoadRefusesUnlistedVersionOrService()
{
    QFETCH(QString, version);
    QFETCH(QString, service);
    QFETCH(QString, text);

    const QString path = _dir->filePath(QStringLiteral("unlisted.conf"));
    QVERIFY(writeAll(path, configWith(version, service)));
    const QByteArray before = readAll(path);
    Modals modals;
    modals.choose(path);
    modals.ok();
    _window->actOpen->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(1).icon, QMessageBox::Critical);
    QCOMPARE(modals.seen().at(1).text, text);
    QVERIFY(_manager->getConfigPath().isNull());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
    QVERIFY2(
        _window->wrongEnabledState(false).isEmpty(), qPrintable(_window->wrongEnabledState(false)));
    QCOMPARE(readAll(path), before); // never updated, not even downwards
}

void TestManagerOpen::unlistedValuesPassAfterGoodFile_data()
{
    firstLoadRefusesUnlistedVersionOrService_data();
}

void TestManagerOpen::unlistedValuesPassAfterGoodFile()
{
    QFETCH(QString, version);
    QFETCH(QString, service);
    QFETCH(QString, serviceAfterGood);

    {
        Modals modals;
        _open(modals, copyInto(fixture(QStringLiteral("beta-current.conf")), _dir->path()));
        VERIFY_MODALS_DONE(modals);
    }
    const QString path = _dir->filePath(QStringLiteral("unlisted.conf"));
    QVERIFY(writeAll(path, configWith(version, service)));
    Modals modals;
    modals.choose(path);
    _window->actOpen->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1); // the file dialog only
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->getConfigVersion().getString(), std::string("2.0"));
    QCOMPARE(_manager->getService(), serviceAfterGood);
    QCOMPARE(
        _window->infoText(), QStringLiteral("Config version: 2.0\tService: ") + serviceAfterGood);
    QVERIFY2(
        _window->wrongEnabledState(true).isEmpty(), qPrintable(_window->wrongEnabledState(true)));

    // Saved, the file states the values of the file before.
    _window->actSave->trigger();
    QCOMPARE(valueInFile(path, QStringLiteral("Version")), QStringLiteral("2.0"));
    QCOMPARE(valueInFile(path, QStringLiteral("Service")), serviceAfterGood);
}

void TestManagerOpen::newConfigurationHasNoFileNameUntilSaved()
{
    QVERIFY(showActive(_manager.get()));
    Modals modals;
    modals.chooseService(0);
    _window->actNew->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(modals.seen().at(0).className, QStringLiteral("DialogNew"));
    QCOMPARE(modals.seen().at(0).title, QStringLiteral("Service select"));

    QVERIFY(_manager->getConfigPath().isNull());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));
    QCOMPARE(_manager->getService(), QStringLiteral("ALPHA"));
    QCOMPARE(_window->parameter(QStringLiteral("Station/StationTitle"))->getValue(),
        std::string("Default station"));
    QCOMPARE(_window->infoText(), QStringLiteral("Config version: 2.0\tService: ALPHA"));
    QVERIFY2(
        _window->wrongEnabledState(true).isEmpty(), qPrintable(_window->wrongEnabledState(true)));
    QCOMPARE(_window->headingText(), QStringLiteral("Station"));

    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    QVERIFY(enabled);
    clickCheckBox(enabled);
    QVERIFY(!_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), QString::fromLatin1(kTitle));

    const QString path = _dir->filePath(QStringLiteral("created.conf"));
    Modals saving;
    saving.choose(path);
    _window->actSave->trigger();
    VERIFY_MODALS_DONE(saving);
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/Enabled")), QStringLiteral("true"));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/StationTitle")),
        QStringLiteral("Default station"));
    // The default file itself is untouched.
    QCOMPARE(readAll(defaultDir() + QStringLiteral("/ALPHA-default.conf")),
        readAll(fixture(QStringLiteral("ALPHA-default.conf"))));
}

void TestManagerOpen::newDialogCancelledChangesNothing()
{
    const QString path = copyInto(fixture(QStringLiteral("beta-current.conf")), _dir->path());
    {
        Modals modals;
        _open(modals, path);
        VERIFY_MODALS_DONE(modals);
    }
    Modals modals;
    modals.cancel();
    _window->actNew->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->getService(), QStringLiteral("BETA"));
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QVERIFY2(
        _window->wrongEnabledState(true).isEmpty(), qPrintable(_window->wrongEnabledState(true)));
}

void TestManagerOpen::newTakesServiceFromDefaultFile()
{
    // A BETA default that says ALPHA inside.
    QVERIFY(writeAll(defaultDir() + QStringLiteral("/BETA-default.conf"),
        configWith(QStringLiteral("2.0"), QStringLiteral("ALPHA"))));
    Modals modals;
    modals.chooseService(1);
    _window->actNew->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(_manager->getService(), QStringLiteral("ALPHA"));
    QCOMPARE(_window->rowTexts(), QStringList({ "Station", "Network", "Satellites" }));
}

void TestManagerOpen::newFromServiceWithoutDefaultEndsClosed()
{
    const QString path = copyInto(fixture(QStringLiteral("alpha-current.conf")), _dir->path());
    {
        Modals modals;
        _open(modals, path);
        VERIFY_MODALS_DONE(modals);
    }
    Modals modals;
    modals.chooseService(2); // GAMMA has no default file
    modals.ok();
    _window->actNew->trigger();

    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Error!"));
    QCOMPARE(modals.seen().at(1).icon, QMessageBox::Warning);
    QCOMPARE(modals.seen().at(1).text, QStringLiteral("XML is not opened\n"));
    QCOMPARE(_manager->getConfigPath(), path);
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QVERIFY2(
        _window->wrongEnabledState(false).isEmpty(), qPrintable(_window->wrongEnabledState(false)));
}

void TestManagerOpen::olderFileIsUpdatedEditedAndSaved()
{
    QVERIFY(showActive(_manager.get()));

    // 1. Open asks for the file; 2.-4. the values pass the tests, and the
    // version is not the newest: a warning, then the file is rewritten.
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(0).title, QStringLiteral("Open Config File"));
    const ModalAnswerer::Seen warning = modals.seen().at(1);
    QCOMPARE(warning.title, QStringLiteral("Warning!"));
    QCOMPARE(warning.icon, QMessageBox::Warning);
    QCOMPARE(warning.buttons, int(QMessageBox::Ok));
    QCOMPARE(warning.text, kUpdateWarning.arg(QStringLiteral("2.0"), QStringLiteral("1.5")));
    QString failure;
    QVERIFY2(
        matchesGolden(readAll(path), fixture(QStringLiteral("alpha-old-updated.conf")), &failure),
        qPrintable(failure));
    QCOMPARE(_manager->getConfigVersion().getString(), std::string("2.0"));

    // 5.-6. Sections built for the service, first section selected, saved state.
    QCOMPARE(_window->rowTexts(), QStringList({ "Station", "Network", "Satellites" }));
    QCOMPARE(_window->headingText(), QStringLiteral("Station"));
    QCOMPARE(_window->infoText(), QStringLiteral("Config version: 2.0\tService: ALPHA"));
    QCOMPARE(_manager->windowTitle(), caption(path, false));

    // 7. An edit puts the "*" right behind the path.
    QCheckBox *enabled = _window->checkBox(QStringLiteral("Enabled"));
    QVERIFY(enabled);
    QVERIFY(enabled->isChecked());
    clickCheckBox(enabled);
    QCOMPARE(_manager->windowTitle(), path + QStringLiteral("* - Orvex Config Manager"));

    // 8. Save writes the tree and takes the "*" away.
    Modals saving;
    _window->actSave->trigger();
    VERIFY_MODALS_DONE(saving);
    QVERIFY(saving.seen().isEmpty());
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QVERIFY(_manager->isSaved());
    QCOMPARE(readAll(path),
        readAll(fixture(QStringLiteral("alpha-old-updated.conf")))
            .replace("<Enabled>true</Enabled>", "<Enabled>false</Enabled>"));
}

void TestManagerOpen::fileListedLastButOlderIsUpdated()
{
    // 1.5 stands last in the schema's list, after 2.0: still older.
    Modals modals;
    _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QVERIFY(modals.seen().at(1).text.contains(QLatin1String("oldest version 1.5.")));
}

void TestManagerOpen::updateGivesNewParameterTheDefaultValue()
{
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(
        _window->parameter(QStringLiteral("Station/NewFeature"))->getValue(), std::string("true"));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/NewFeature")), QStringLiteral("true"));
    QCOMPARE(valueInFile(path, QStringLiteral("BetaOptions/BetaLevel")), QStringLiteral("1"));
    QCOMPARE(valueInFile(path, QStringLiteral("Version")), QStringLiteral("2.0"));
}

void TestManagerOpen::updateKeepsUserValues()
{
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(
        valueInFile(path, QStringLiteral("Station/StationTitle")), QStringLiteral("My station"));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/Retries")), QStringLiteral("7"));
    QCOMPARE(valueInFile(path, QStringLiteral("Station/AlphaMode")), QStringLiteral("slow"));
    QCOMPARE(
        valueInFile(path, QStringLiteral("Network/Host")), QStringLiteral("observer.example.org"));
    QCOMPARE(valueInFile(path, QStringLiteral("Satellites/TLE/Line0")), QStringLiteral("JPSS-1"));
    QCOMPARE(_window->parameter(QStringLiteral("Station/StationTitle"))->getValue(),
        std::string("My station"));
}

void TestManagerOpen::updateDropsUndeclaredElements()
{
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QVERIFY(readAll(fixture(QStringLiteral("alpha-old.conf"))).contains("<Obsolete>"));
    QVERIFY(valueInFile(path, QStringLiteral("Station/Obsolete")).isNull());
    QVERIFY(valueInFile(path, QStringLiteral("LegacySection/Old")).isNull());
    QVERIFY(!readAll(path).contains("Legacy"));
}

void TestManagerOpen::updateKeepsDefaultItemsOfMissingList()
{
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(itemsInFile(path, QStringLiteral("Network/Ports")), QStringList({ "8080", "8081" }));
    auto *ports
        = dynamic_cast<ParameterList *>(_window->parameter(QStringLiteral("Network/Ports")));
    QVERIFY(ports);
    QCOMPARE(ports->getValues(), std::vector<std::string>({ "8080", "8081" }));
}

void TestManagerOpen::updatedFileOpensWithoutBox()
{
    QString path;
    {
        Modals modals;
        path = _openOld(modals);
        VERIFY_MODALS_DONE(modals);
    }
    const QByteArray updated = readAll(path);
    Modals modals;
    modals.choose(path);
    _window->actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 1);
    QCOMPARE(readAll(path), updated);
    QCOMPARE(_manager->getConfigPath(), path);
}

void TestManagerOpen::captionHasNoMarkAfterUpdate()
{
    Modals modals;
    const QString path = _openOld(modals);
    VERIFY_MODALS_DONE(modals);
    QVERIFY(_manager->isSaved());
    QCOMPARE(_manager->windowTitle(), caption(path, false));
    QVERIFY(!_manager->windowTitle().contains(QLatin1Char('*')));
}

void TestManagerOpen::shippedExampleIsUpdatedThroughOpen()
{
    QVERIFY(installShippedDefaults());
    std::unique_ptr<Manager> manager;
    {
        Modals modals;
        manager = makeManager();
        VERIFY_MODALS_DONE(modals);
    }
    Window window(manager.get());
    const QString example = QStringLiteral(ORVEX_SOURCE_DATA_DIR "/conf/example.conf");
    const QString path = copyInto(example, _dir->path());
    QVERIFY(!path.isEmpty());
    const QString oldVersion = valueInFile(example, QStringLiteral("Version"));
    const QString service = valueInFile(example, QStringLiteral("Service"));
    const QString newest = QString::fromStdString(manager->getNewestVersion().getString());
    QVERIFY(Version(oldVersion.toStdString()) < manager->getNewestVersion());
    const QString defaultPath
        = defaultDir() + QLatin1Char('/') + service + QStringLiteral("-default.conf");

    // What the overlay must give: the default, then the example over it.
    const QString expectedPath = _dir->filePath(QStringLiteral("expected.conf"));
    QStringList leaves;
    {
        std::vector<std::string> lines;
        ParameterComplex *root = nullptr;
        QCOMPARE(OrvexConfigLib::loadXSD(lines, root, schemaPath().toStdString()), 0);
        OrvexConfigLib::loadXML_knStruct(lines, root, defaultPath.toStdString());
        OrvexConfigLib::loadXML_knStruct(lines, root, example.toStdString());
        QVERIFY(dynamic_cast<ParameterSimple *>(root->getChildrenPtrs().front())
                    ->setValue(newest.toStdString()));
        QCOMPARE(OrvexConfigLib::writeXML(lines, root, expectedPath.toStdString()), 0);
        _rec_leafPaths(root, QString(), leaves);
        delete root;
    }

    Modals modals;
    modals.choose(path);
    modals.ok();
    window.actOpen->trigger();
    VERIFY_MODALS_DONE(modals);
    QCOMPARE(modals.seen().size(), 2);
    QCOMPARE(modals.seen().at(1).title, QStringLiteral("Warning!"));
    QCOMPARE(modals.seen().at(1).text, kUpdateWarning.arg(newest, oldVersion));

    QCOMPARE(readAll(path), readAll(expectedPath));
    QCOMPARE(valueInFile(path, QStringLiteral("Version")), newest);
    int fromDefault = 0;
    for (const QString &leaf : leaves) {
        if (leaf == QLatin1String("Version"))
            continue;
        const QString userValue = valueInFile(example, leaf);
        fromDefault += userValue.isNull() ? 1 : 0;
        QCOMPARE(valueInFile(path, leaf),
            userValue.isNull() ? valueInFile(defaultPath, leaf) : userValue);
    }
    QVERIFY(fromDefault > 0); // the example lacks parameters of the newest version
    QCOMPARE(manager->windowTitle(), caption(path, false));
    QCOMPARE(
        window.infoText(), QStringLiteral("Config version: %1\tService: %2").arg(newest, service));

    Modals again;
    again.choose(path);
    window.actOpen->trigger();
    VERIFY_MODALS_DONE(again);
    QCOMPARE(again.seen().size(), 1);
}

MANAGER_TEST_MAIN(TestManagerOpen)
#include "tst_manager_open.moc"
