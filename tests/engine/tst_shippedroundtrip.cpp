// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "enginefixture.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace enginefixture;

namespace {

QString shipped(QString const &relative) { return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/") + relative; }

std::string const schemaPath = path(shipped(QStringLiteral("default/schema-userconf.xsd")));

QStringList defaultFiles()
{
    return QDir(shipped(QStringLiteral("default")))
        .entryList({QStringLiteral("*-default.conf")}, QDir::Files, QDir::Name);
}

} // namespace

class TestShippedRoundTrip : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ParameterComplex> _loadSchema();
    void _checkWithXmllint(QString const &file);

    QTemporaryDir _dir;

private slots:
    void everyServiceHasDefaultFile();
    void defaultFileRoundTrips_data();
    void defaultFileRoundTrips();
    void defaultFileIsInWriterForm_data();
    void defaultFileIsInWriterForm();
    void updateBringsOlderExampleToNewestVersion();
    void newestExampleLoadsWithoutRemarks();
};

std::unique_ptr<ParameterComplex> TestShippedRoundTrip::_loadSchema()
{
    ParameterComplex *root = nullptr;
    Lines errors;
    int const status = OrvexConfigLib::loadXSD(errors, root, schemaPath);
    std::unique_ptr<ParameterComplex> owner(root);
    if (status != 0 || !errors.empty())
        return nullptr;
    return owner;
}

// A second opinion from libxml2, when xmllint is installed (the setup script
// installs it).
void TestShippedRoundTrip::_checkWithXmllint(QString const &file)
{
    QString const xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        return;
    QProcess process;
    process.start(xmllint, {QStringLiteral("--noout"), QStringLiteral("--nonet"), QStringLiteral("--schema"),
                            QString::fromStdString(schemaPath), file});
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
}

void TestShippedRoundTrip::everyServiceHasDefaultFile()
{
    std::unique_ptr<ParameterComplex> root = _loadSchema();
    QVERIFY(root);
    ParameterSimple *service = simple(root.get(), {"Service"});
    QVERIFY(service);
    std::vector<std::string> const services = service->getFasets().enumeration;
    QVERIFY(!services.empty());
    QStringList expected;
    for (std::string const &name : services)
        expected << QString::fromStdString(name) + QStringLiteral("-default.conf");
    expected.sort();
    QCOMPARE(defaultFiles(), expected);
}

void TestShippedRoundTrip::defaultFileRoundTrips_data()
{
    QTest::addColumn<QString>("file");
    QStringList const files = defaultFiles();
    // No default files at all is a failure, not an empty pass.
    if (files.isEmpty())
        QTest::newRow("no default files") << QString();
    for (QString const &name : files)
        QTest::newRow(qPrintable(name)) << shipped(QStringLiteral("default/") + name);
}

void TestShippedRoundTrip::defaultFileRoundTrips()
{
    QFETCH(QString, file);
    QVERIFY2(QFile::exists(file), "no default configuration is shipped");

    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXML(errors, schemaPath, path(file)), 0);
    _checkWithXmllint(file);

    std::unique_ptr<ParameterComplex> first = _loadSchema();
    QVERIFY(first);
    ParameterComplex *firstPtr = first.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, firstPtr, path(file)), 0);
    QString const once = _dir.filePath(QFileInfo(file).baseName() + QStringLiteral("-once.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(errors, first.get(), path(once)), 0);

    std::unique_ptr<ParameterComplex> second = _loadSchema();
    QVERIFY(second);
    ParameterComplex *secondPtr = second.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, secondPtr, path(once)), 0);
    QString const twice = _dir.filePath(QFileInfo(file).baseName() + QStringLiteral("-twice.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(errors, second.get(), path(twice)), 0);
    QCOMPARE(errors, Lines());

    QByteArray const written = readFile(once);
    QVERIFY(!written.isEmpty());
    QCOMPARE(readFile(twice), written);
    QCOMPARE(OrvexConfigLib::validateXML(errors, schemaPath, path(once)), 0);
    QCOMPARE(errors, Lines());
    _checkWithXmllint(once);
}

void TestShippedRoundTrip::defaultFileIsInWriterForm_data() { defaultFileRoundTrips_data(); }

// Opening a default file and saving it unchanged leaves it as it was.
void TestShippedRoundTrip::defaultFileIsInWriterForm()
{
    QFETCH(QString, file);
    QVERIFY2(QFile::exists(file), "no default configuration is shipped");
    std::unique_ptr<ParameterComplex> root = _loadSchema();
    QVERIFY(root);
    ParameterComplex *rootPtr = root.get();
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, rootPtr, path(file)), 0);
    QString const out = _dir.filePath(QFileInfo(file).fileName());
    QCOMPARE(OrvexConfigLib::writeXML(errors, root.get(), path(out)), 0);
    QCOMPARE(readFile(out), readFile(file));
}

void TestShippedRoundTrip::updateBringsOlderExampleToNewestVersion()
{
    QString const example =
        writeFile(_dir, QStringLiteral("example.conf"), readFile(shipped("conf/example.conf")));
    QVERIFY(!example.isEmpty());

    // The base is the default file of the example's own service.
    std::unique_ptr<ParameterComplex> probe = _loadSchema();
    QVERIFY(probe);
    ParameterComplex *probePtr = probe.get();
    Lines errors;
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, probePtr, path(example)), 1);
    std::string const service = simple(probe.get(), {"Service"})->getValue();
    QCOMPARE(service, std::string("tracking"));
    QCOMPARE(simple(probe.get(), {"Version"})->getValue(), std::string("1.1"));
    QString const base =
        shipped(QStringLiteral("default/%1-default.conf").arg(QString::fromStdString(service)));

    errors.clear();
    QCOMPARE(OrvexConfigLib::updateXML(errors, schemaPath, path(base), path(example), path(example)), 0);
    // What 2.0 added is reported in the order of the schema, and taken from the base.
    QCOMPARE(errors, Lines({"Node \"->root->Camera->FitsHeader->ExtraHeaderKeys\" not found in XML",
                            "Node \"->root->Tracking->MinPassDuration\" not found in XML",
                            "Node \"->root->Archive\" not found in XML"}));

    errors.clear();
    QCOMPARE(OrvexConfigLib::validateXML(errors, schemaPath, path(example)), 0);
    _checkWithXmllint(example);
    std::unique_ptr<ParameterComplex> updated = _loadSchema();
    QVERIFY(updated);
    ParameterComplex *updatedPtr = updated.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, updatedPtr, path(example)), 0);
    QCOMPARE(errors, Lines());
    ParameterComplex *u = updated.get();

    // New parameters at the values of the default file.
    QCOMPARE(list(u, {"Camera", "FitsHeader", "ExtraHeaderKeys"})->getValues(),
             Lines({"OBSERVER", "TELESCOP", "INSTRUME"}));
    QCOMPARE(simple(u, {"Tracking", "MinPassDuration"})->getValue(), std::string("60"));
    QCOMPARE(simple(u, {"Archive", "UploadEnabled"})->getValue(), std::string("false"));
    QCOMPARE(simple(u, {"Archive", "RetentionDays"})->getValue(), std::string("30"));
    QCOMPARE(simple(u, {"Archive", "Account"})->getValue(), std::string());

    // The example's own values kept; the version is the caller's to set.
    QCOMPARE(simple(u, {"Version"})->getValue(), std::string("1.1"));
    QCOMPARE(simple(u, {"Observatory", "SiteName"})->getValue(), std::string("Orvex Remote Station"));
    QCOMPARE(simple(u, {"Observatory", "Site", "Horizon", "MinElevation"})->getValue(), std::string("12.5"));
    QCOMPARE(simple(u, {"Observatory", "Contact", "NotifyOnFailure"})->getValue(), std::string("false"));
    QCOMPARE(simple(u, {"Camera", "Model"})->getValue(), std::string("ZWO ASI6200MM Pro"));
    QCOMPARE(simple(u, {"Tracking", "PredictionHours"})->getValue(), std::string("48"));
    QCOMPARE(list(u, {"Paths", "CatalogFiles"})->getValues(),
             Lines({"/data/catalogs/ucac4.cat", "/data/catalogs/gaia-dr3-bright.csv"}));
    QCOMPARE(list(u, {"Tracking", "PriorityNoradIds"})->getValues(), Lines({"25544", "33591"}));
    std::vector<ParameterListTLEs::TLE> const satellites = tles(u, {"Tracking", "Satellites"})->getTLEs();
    QCOMPARE(satellites.size(), std::size_t(3));
    QCOMPARE(satellites[1].line0, std::string("NOAA 19"));
    QCOMPARE(satellites[2].line1,
             std::string("1 27424U 02022A   18020.92068319  .00000130  00000-0  38943-4 0  9999"));
}

void TestShippedRoundTrip::newestExampleLoadsWithoutRemarks()
{
    QString const example = shipped(QStringLiteral("conf/photometry-example.conf"));
    Lines errors;
    QCOMPARE(OrvexConfigLib::validateXML(errors, schemaPath, path(example)), 0);
    std::unique_ptr<ParameterComplex> root = _loadSchema();
    QVERIFY(root);
    ParameterComplex *rootPtr = root.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, rootPtr, path(example)), 0);
    QCOMPARE(errors, Lines());
    QCOMPARE(simple(root.get(), {"Service"})->getValue(), std::string("photometry"));
    _checkWithXmllint(example);
}

QTEST_GUILESS_MAIN(TestShippedRoundTrip)
#include "tst_shippedroundtrip.moc"
