// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include "golden.h"

#include <QtTest>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace QTest {
template <>
inline char *toString(std::string const &text)
{
    return toString(QString::fromStdString(text));
}
} // namespace QTest

// The schema, default configurations and examples that ship with the program.
// Their shape is pinned down here, so that a change to them is a deliberate one.

namespace {

QString const _dataDir = QStringLiteral(ORVEX_SOURCE_DATA_DIR);
QString const _schemaPath = _dataDir + QStringLiteral("/default/schema-userconf.xsd");
QStringList const _services{"tracking", "survey", "photometry"};
std::string const _newestVersion = "2.0";

using Strings = std::vector<std::string>;
using Tree = std::unique_ptr<ParameterComplex>;

char const *const _typeNames[] = {"Integer",  "Decimal",  "Boolean",    "String",
                                  "Dirpath",  "Filepath", "Email",      "Password",
                                  "HeaderKeys", "FilterKeys", "TLE"};

QStringList _toStringList(Strings const &texts)
{
    QStringList list;
    for (std::string const &text : texts)
        list << QString::fromStdString(text);
    return list;
}

Tree _loadSchema(Strings &errors)
{
    ParameterComplex *root = nullptr;
    if (OrvexConfigLib::loadXSD(errors, root, _schemaPath.toStdString()) != 0)
        return Tree();
    return Tree(root);
}

// Finds a node by its keys below the root, joined by "/".
Parameter *_find(ParameterComplex const *root, QString const &path)
{
    Parameter *node = nullptr;
    ParameterComplex const *section = root;
    for (QString const &key : path.split(QLatin1Char('/'))) {
        if (!section)
            return nullptr;
        node = nullptr;
        for (Parameter *child : section->getChildrenPtrs())
            if (child && child->getParameterKey() == key.toStdString())
                node = child;
        if (!node)
            return nullptr;
        section = node->getGlobalType() == Parameter::GlobalType::Complex
                      ? static_cast<ParameterComplex const *>(node)
                      : nullptr;
    }
    return node;
}

template <class T>
T *_findAs(ParameterComplex const *root, QString const &path)
{
    return dynamic_cast<T *>(_find(root, path));
}

QString _describe(Parameter const *node)
{
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Complex:
        return QStringLiteral("section");
    case Parameter::GlobalType::Simple:
        return QStringLiteral("leaf ")
               + _typeNames[static_cast<ParameterSimple const *>(node)->getSimpleType()];
    case Parameter::GlobalType::List: {
        auto const *list = static_cast<ParameterList const *>(node);
        return QStringLiteral("list %1 of %2")
            .arg(QString::fromLatin1(_typeNames[list->getSimpleType()]),
                 QString::fromStdString(list->getListKey()));
    }
    case Parameter::GlobalType::ListTLEs:
        return QStringLiteral("TLE list of ")
               + QString::fromStdString(static_cast<ParameterListTLEs const *>(node)->getListKey());
    }
    return QString();
}

// One line per node below the root, depth first, in schema order.
void _rec_listNodes(QStringList &lines, QString const &prefix, ParameterComplex const *node)
{
    for (Parameter const *child : node->getChildrenPtrs()) {
        QString const path = prefix + QString::fromStdString(child->getParameterKey());
        lines << path + QStringLiteral(" | ") + _describe(child);
        if (child->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_listNodes(lines, path + QLatin1Char('/'),
                           static_cast<ParameterComplex const *>(child));
    }
}

void _rec_collect(std::vector<Parameter const *> &nodes, ParameterComplex const *node)
{
    for (Parameter const *child : node->getChildrenPtrs()) {
        nodes.push_back(child);
        if (child->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_collect(nodes, static_cast<ParameterComplex const *>(child));
    }
}

// The element-set check digit: digits count as themselves, a minus sign as 1.
bool _checksumHolds(std::string const &line)
{
    if (line.size() != 69)
        return false;
    int sum = 0;
    for (std::size_t i = 0; i < 68; ++i) {
        if (line[i] >= '0' && line[i] <= '9')
            sum += line[i] - '0';
        else if (line[i] == '-')
            sum += 1;
    }
    return line[68] - '0' == sum % 10;
}

QByteArray _readFile(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestShippedSchema : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void schemaLoadsWithoutRemarks();
    void firstChildrenAreVersionAndService();
    void everyNodeStandsInSchemaOrder();
    void nodeKindsAreCounted();
    void sectionsNestThreeDeep();
    void facetsOfLeavesAndLists();
    void annotationsReachTheTree();
    void serviceSectionsAreVisibleForTheirServiceOnly();
    void everyNodeHasDisplayName();
    void shippedFilesAreValidForQtValidator_data();
    void shippedFilesAreValidForQtValidator();
    void defaultConfigurationRoundTripsByteForByte_data();
    void defaultConfigurationRoundTripsByteForByte();
    void exampleLacksOnlyParametersNewInNewestVersion();
    void exampleOverDefaultsKeepsUserValues();
    void elementSetsOfExamplesAreIntact();

private:
    Tree _root;
};

void TestShippedSchema::initTestCase()
{
    Strings errors;
    _root = _loadSchema(errors);
    QVERIFY2(_root, qPrintable(_toStringList(errors).join('\n')));
}

void TestShippedSchema::schemaLoadsWithoutRemarks()
{
    Strings errors;
    ParameterComplex *root = nullptr;
    QCOMPARE(OrvexConfigLib::loadXSD(errors, root, _schemaPath.toStdString()), 0);
    Tree const owned(root);
    QCOMPARE(_toStringList(errors), QStringList());
    QVERIFY(root != nullptr);
    QCOMPARE(QString::fromStdString(root->getParameterKey()), QStringLiteral("root"));
}

void TestShippedSchema::firstChildrenAreVersionAndService()
{
    std::vector<Parameter *> const children = _root->getChildrenPtrs();
    QVERIFY(children.size() >= 4);

    auto const *version = dynamic_cast<ParameterSimple const *>(children[0]);
    QVERIFY(version && version->getGlobalType() == Parameter::GlobalType::Simple);
    QCOMPARE(QString::fromStdString(version->getParameterKey()), QStringLiteral("Version"));
    QCOMPARE(version->getFasets().kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(_toStringList(version->getFasets().enumeration),
             QStringList({"1.0", "1.1", "2.0"}));
    QCOMPARE(version->getFasets().enumeration.back(), _newestVersion);

    auto const *service = dynamic_cast<ParameterSimple const *>(children[1]);
    QVERIFY(service && service->getGlobalType() == Parameter::GlobalType::Simple);
    QCOMPARE(QString::fromStdString(service->getParameterKey()), QStringLiteral("Service"));
    QCOMPARE(service->getFasets().kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(_toStringList(service->getFasets().enumeration), _services);
}

void TestShippedSchema::everyNodeStandsInSchemaOrder()
{
    QStringList const expected{
        "Version | leaf String",
        "Service | leaf String",
        "Observatory | section",
        "Observatory/SiteName | leaf String",
        "Observatory/Site | section",
        "Observatory/Site/Latitude | leaf Decimal",
        "Observatory/Site/Longitude | leaf Decimal",
        "Observatory/Site/Altitude | leaf Decimal",
        "Observatory/Site/Horizon | section",
        "Observatory/Site/Horizon/MinElevation | leaf Decimal",
        "Observatory/Site/Horizon/HorizonMaskFile | leaf Filepath",
        "Observatory/Contact | section",
        "Observatory/Contact/OperatorEmail | leaf Email",
        "Observatory/Contact/NotifyOnFailure | leaf Boolean",
        "Paths | section",
        "Paths/DataDir | leaf Dirpath",
        "Paths/LogDir | leaf Dirpath",
        "Paths/CatalogFiles | list Filepath of File",
        "Paths/DebugDumpDir | leaf Dirpath",
        "Camera | section",
        "Camera/Model | leaf String",
        "Camera/Binning | leaf Integer",
        "Camera/Gain | leaf Integer",
        "Camera/ExposureTime | leaf Decimal",
        "Camera/Cooling | section",
        "Camera/Cooling/CoolerEnabled | leaf Boolean",
        "Camera/Cooling/SetPoint | leaf Decimal",
        "Camera/FitsHeader | section",
        "Camera/FitsHeader/ObjectKey | leaf HeaderKeys",
        "Camera/FitsHeader/ExtraHeaderKeys | list HeaderKeys of Key",
        "Tracking | section",
        "Tracking/Satellites | TLE list of TLE",
        "Tracking/PriorityNoradIds | list Integer of NoradId",
        "Tracking/MinPassElevation | leaf Decimal",
        "Tracking/PredictionHours | leaf Integer",
        "Tracking/MinPassDuration | leaf Integer",
        "Survey | section",
        "Survey/Filters | list FilterKeys of Filter",
        "Survey/MaxAirmass | leaf Decimal",
        "Survey/VisitsPerField | leaf Integer",
        "Survey/Tiling | section",
        "Survey/Tiling/FieldWidth | leaf Decimal",
        "Survey/Tiling/Overlap | leaf Decimal",
        "Photometry | section",
        "Photometry/FilterKey | leaf FilterKeys",
        "Photometry/ComparisonStars | list String of Star",
        "Photometry/Aperture | section",
        "Photometry/Aperture/Radius | leaf Decimal",
        "Photometry/Aperture/AnnulusInner | leaf Decimal",
        "Photometry/Aperture/AnnulusOuter | leaf Decimal",
        "Photometry/ZeroPoint | leaf Decimal",
        "Archive | section",
        "Archive/UploadEnabled | leaf Boolean",
        "Archive/Account | leaf String",
        "Archive/Password | leaf Password",
        "Archive/RetentionDays | leaf Integer",
    };
    QStringList actual;
    _rec_listNodes(actual, QString(), _root.get());
    QCOMPARE(actual, expected);
}

void TestShippedSchema::nodeKindsAreCounted()
{
    std::vector<Parameter const *> nodes;
    _rec_collect(nodes, _root.get());

    int sections = 0;
    int tleLists = 0;
    std::map<int, int> leaves;
    std::map<int, int> lists;
    for (Parameter const *node : nodes) {
        switch (node->getGlobalType()) {
        case Parameter::GlobalType::Complex:
            ++sections;
            break;
        case Parameter::GlobalType::Simple:
            ++leaves[static_cast<ParameterSimple const *>(node)->getSimpleType()];
            break;
        case Parameter::GlobalType::List:
            ++lists[static_cast<ParameterSimple const *>(node)->getSimpleType()];
            break;
        case Parameter::GlobalType::ListTLEs:
            ++tleLists;
            break;
        }
    }

    QCOMPARE(int(nodes.size()), 56);
    QCOMPARE(sections, 14);
    QCOMPARE(tleLists, 1);
    std::map<int, int> const expectedLeaves{
        {ParameterSimple::Integer, 6},  {ParameterSimple::Decimal, 14},
        {ParameterSimple::Boolean, 3},  {ParameterSimple::String, 5},
        {ParameterSimple::Dirpath, 3},  {ParameterSimple::Filepath, 1},
        {ParameterSimple::Email, 1},    {ParameterSimple::Password, 1},
        {ParameterSimple::HeaderKeys, 1}, {ParameterSimple::FilterKeys, 1},
    };
    QVERIFY(leaves == expectedLeaves);
    std::map<int, int> const expectedLists{
        {ParameterSimple::Integer, 1},    {ParameterSimple::String, 1},
        {ParameterSimple::Filepath, 1},   {ParameterSimple::HeaderKeys, 1},
        {ParameterSimple::FilterKeys, 1},
    };
    QVERIFY(lists == expectedLists);
}

void TestShippedSchema::sectionsNestThreeDeep()
{
    std::vector<Parameter const *> nodes;
    _rec_collect(nodes, _root.get());
    unsigned int deepestSection = 0;
    for (Parameter const *node : nodes)
        if (node->getGlobalType() == Parameter::GlobalType::Complex)
            deepestSection = std::max(deepestSection, node->getLevel());
    QVERIFY(deepestSection >= 3);

    Parameter const *horizon = _find(_root.get(), "Observatory/Site/Horizon");
    QVERIFY(horizon);
    QCOMPARE(horizon->getLevel(), 3u);
    QCOMPARE(_find(_root.get(), "Observatory/Site/Horizon/MinElevation")->getLevel(), 4u);
}

void TestShippedSchema::facetsOfLeavesAndLists()
{
    auto const fasetsOf = [this](QString const &path) {
        auto const *leaf = _findAs<ParameterSimple>(_root.get(), path);
        return leaf ? leaf->getFasets() : ParameterSimple::Fasets();
    };

    ParameterSimple::Fasets const binning = fasetsOf("Camera/Binning");
    QCOMPARE(binning.kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(_toStringList(binning.enumeration), QStringList({"1", "2", "3", "4"}));

    ParameterSimple::Fasets const model = fasetsOf("Camera/Model");
    QCOMPARE(model.kind, int(ParameterSimple::FasetEnumeration));
    QCOMPARE(model.enumeration.size(), std::size_t(3));

    ParameterSimple::Fasets const gain = fasetsOf("Camera/Gain");
    QCOMPARE(gain.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(gain.minValue, 0.0);
    QCOMPARE(gain.maxValue, 600.0);

    ParameterSimple::Fasets const latitude = fasetsOf("Observatory/Site/Latitude");
    QCOMPARE(latitude.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(latitude.minValue, -90.0);
    QCOMPARE(latitude.maxValue, 90.0);

    // Only a lower limit is written: the upper one stays at its default.
    ParameterSimple::Fasets const altitude = fasetsOf("Observatory/Site/Altitude");
    QCOMPARE(altitude.kind, int(ParameterSimple::FasetRange));
    QCOMPARE(altitude.minValue, -500.0);
    QCOMPARE(altitude.maxValue, 9999999.9);

    ParameterSimple::Fasets const exposure = fasetsOf("Camera/ExposureTime");
    QCOMPARE(exposure.minValue, 0.001);
    QCOMPARE(exposure.maxValue, 3600.0);

    // Patterns of the named types serve the validator only.
    for (QString const path : {"Paths/DataDir", "Observatory/Contact/OperatorEmail",
                               "Archive/Password", "Camera/FitsHeader/ObjectKey",
                               "Photometry/FilterKey", "Observatory/SiteName"}) {
        ParameterSimple::Fasets const fasets = fasetsOf(path);
        QVERIFY2(fasets.kind == ParameterSimple::FasetNone, qPrintable(path));
        QVERIFY2(fasets.enumeration.empty(), qPrintable(path));
    }

    std::map<QString, double> const minOccurs{
        {"Paths/CatalogFiles", 0},       {"Camera/FitsHeader/ExtraHeaderKeys", 0},
        {"Tracking/PriorityNoradIds", 1}, {"Survey/Filters", 1},
        {"Photometry/ComparisonStars", 0},
    };
    for (auto const &entry : minOccurs) {
        ParameterSimple::Fasets const fasets = fasetsOf(entry.first);
        QVERIFY2(fasets.kind == ParameterSimple::FasetRange, qPrintable(entry.first));
        QVERIFY2(fasets.minValue == entry.second, qPrintable(entry.first));
        QVERIFY2(fasets.maxValue == 9999999.9, qPrintable(entry.first));
    }

    auto const *satellites = _findAs<ParameterListTLEs>(_root.get(), "Tracking/Satellites");
    QVERIFY(satellites);
    QCOMPARE(satellites->getListKey(), std::string("TLE"));
    QCOMPARE(satellites->getSimpleType(), ParameterSimple::TLE);
    QCOMPARE(satellites->getFasets().kind, int(ParameterSimple::FasetNone));
}

void TestShippedSchema::annotationsReachTheTree()
{
    std::vector<Parameter const *> nodes;
    _rec_collect(nodes, _root.get());

    QStringList generalPage, bold, hidden;
    for (Parameter const *node : nodes) {
        Parameter::VisualParams const visual = node->getVisualParams();
        QString const key = QString::fromStdString(node->getParameterKey());
        if (visual.importance == 0)
            generalPage << key;
        else if (visual.importance == 1)
            bold << key;
        else
            QVERIFY2(visual.importance == 2, qPrintable(key));
        if (!visual.isvisible)
            hidden << key;
    }
    QCOMPARE(generalPage, QStringList({"SiteName", "OperatorEmail", "DataDir"}));
    QCOMPARE(bold, QStringList({"Latitude", "Longitude", "ExposureTime"}));
    QCOMPARE(hidden, QStringList({"Version", "Service", "DebugDumpDir"}));

    Parameter::VisualParams const latitude =
        _find(_root.get(), "Observatory/Site/Latitude")->getVisualParams();
    QCOMPARE(latitude.name_en, std::string("Latitude"));
    QCOMPARE(latitude.dimension, std::string("deg"));
    QVERIFY(!latitude.documentation.empty());
    QCOMPARE(latitude.source, std::string("https://en.wikipedia.org/wiki/World_Geodetic_System"));

    // A link to further reading and no text of its own.
    Parameter::VisualParams const model = _find(_root.get(), "Camera/Model")->getVisualParams();
    QVERIFY(model.documentation.empty());
    QVERIFY(!model.source.empty());

    Parameter::VisualParams const gain = _find(_root.get(), "Camera/Gain")->getVisualParams();
    QVERIFY(!gain.documentation.empty());
    QVERIFY(gain.source.empty());
    QVERIFY(gain.dimension.empty());

    QCOMPARE(_find(_root.get(), "Camera/Cooling/SetPoint")->getVisualParams().dimension,
             std::string("\xC2\xB0" "C"));
    QCOMPARE(_find(_root.get(), "Tracking/Satellites")->getVisualParams().source,
             std::string("https://celestrak.org/columns/v04n03/"));
}

void TestShippedSchema::serviceSectionsAreVisibleForTheirServiceOnly()
{
    std::map<QString, QString> const owners{
        {"Tracking", "tracking"}, {"Survey", "survey"}, {"Photometry", "photometry"}};
    for (auto const &owner : owners) {
        auto const *section = _findAs<ParameterComplex>(_root.get(), owner.first);
        QVERIFY(section);
        QCOMPARE(_toStringList(section->getVisualParams().services), QStringList{owner.second});
        for (QString const &service : _services)
            QCOMPARE(section->isVisible_rec(service.toStdString()), service == owner.second);
    }
    for (QString const shared : {"Observatory", "Paths", "Camera", "Archive"}) {
        auto const *section = _findAs<ParameterComplex>(_root.get(), shared);
        QVERIFY(section);
        for (QString const &service : _services)
            QVERIFY2(section->isVisible_rec(service.toStdString()), qPrintable(shared));
    }
}

void TestShippedSchema::everyNodeHasDisplayName()
{
    std::vector<Parameter const *> nodes;
    _rec_collect(nodes, _root.get());
    for (Parameter const *node : nodes)
        QVERIFY2(!node->getVisualParams().name_en.empty(), node->getParameterKey().c_str());
}

void TestShippedSchema::shippedFilesAreValidForQtValidator_data()
{
    QTest::addColumn<QString>("path");

    int count = 0;
    for (QString const folder : {"default", "conf"}) {
        QDir const dir(_dataDir + QLatin1Char('/') + folder);
        for (QString const &name : dir.entryList({"*.conf"}, QDir::Files, QDir::Name)) {
            QTest::newRow(qPrintable(folder + QLatin1Char('/') + name)) << dir.filePath(name);
            ++count;
        }
    }
    QCOMPARE(count, 6);
}

void TestShippedSchema::shippedFilesAreValidForQtValidator()
{
    QFETCH(QString, path);
    Strings errors;
    int const status =
        OrvexConfigLib::validateXML(errors, _schemaPath.toStdString(), path.toStdString());
    QVERIFY2(status == 0, qPrintable(_toStringList(errors).join('\n')));
}

void TestShippedSchema::defaultConfigurationRoundTripsByteForByte_data()
{
    QTest::addColumn<QString>("service");
    for (QString const &service : _services)
        QTest::newRow(qPrintable(service)) << service;
}

void TestShippedSchema::defaultConfigurationRoundTripsByteForByte()
{
    QFETCH(QString, service);
    QString const path = _dataDir + QStringLiteral("/default/") + service
                         + QStringLiteral("-default.conf");

    // A fresh tree holds no values, so any value the facets refused would be
    // written back empty and show up in the comparison.
    Strings errors;
    Tree tree = _loadSchema(errors);
    QVERIFY(tree);
    ParameterComplex *root = tree.get();
    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, path.toStdString()), 0);
    QCOMPARE(_toStringList(errors), QStringList());

    QCOMPARE(_findAs<ParameterSimple>(root, "Version")->getValue(), _newestVersion);
    QCOMPARE(QString::fromStdString(_findAs<ParameterSimple>(root, "Service")->getValue()),
             service);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString const written = dir.filePath(QStringLiteral("written.conf"));
    QCOMPARE(OrvexConfigLib::writeXML(errors, root, written.toStdString()), 0);
    QString failure;
    QVERIFY2(matchesGolden(_readFile(written), path, &failure), qPrintable(failure));
}

void TestShippedSchema::exampleLacksOnlyParametersNewInNewestVersion()
{
    Strings errors;
    Tree tree = _loadSchema(errors);
    QVERIFY(tree);
    ParameterComplex *root = tree.get();
    std::string const example = (_dataDir + QStringLiteral("/conf/example.conf")).toStdString();

    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, example), 1);
    QCOMPARE(_toStringList(errors),
             QStringList({"Node \"->root->Camera->FitsHeader->ExtraHeaderKeys\" not found in XML",
                          "Node \"->root->Tracking->MinPassDuration\" not found in XML",
                          "Node \"->root->Archive\" not found in XML"}));
    QCOMPARE(_findAs<ParameterSimple>(root, "Version")->getValue(), std::string("1.1"));
    QCOMPARE(_findAs<ParameterSimple>(root, "Service")->getValue(), std::string("tracking"));
}

void TestShippedSchema::exampleOverDefaultsKeepsUserValues()
{
    Strings errors;
    Tree tree = _loadSchema(errors);
    QVERIFY(tree);
    ParameterComplex *root = tree.get();
    QString const defaults = _dataDir + QStringLiteral("/default/tracking-default.conf");
    QString const example = _dataDir + QStringLiteral("/conf/example.conf");

    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, defaults.toStdString()), 0);
    auto const valueOf = [root](QString const &path) {
        return QString::fromStdString(_findAs<ParameterSimple>(root, path)->getValue());
    };
    QStringList const userKeys{"Observatory/SiteName", "Camera/Gain", "Camera/Model",
                               "Tracking/PredictionHours"};
    QStringList defaultValues;
    for (QString const &path : userKeys)
        defaultValues << valueOf(path);

    QCOMPARE(OrvexConfigLib::loadXML_knStruct(errors, root, example.toStdString()), 1);

    // The user's values win; what the old file lacks keeps the default.
    QCOMPARE(valueOf("Observatory/SiteName"), QStringLiteral("Orvex Remote Station"));
    QCOMPARE(valueOf("Camera/Gain"), QStringLiteral("120"));
    QCOMPARE(valueOf("Camera/Model"), QStringLiteral("ZWO ASI6200MM Pro"));
    QCOMPARE(valueOf("Tracking/PredictionHours"), QStringLiteral("48"));
    for (int i = 0; i < userKeys.size(); ++i)
        QVERIFY2(valueOf(userKeys[i]) != defaultValues[i], qPrintable(userKeys[i]));

    QCOMPARE(valueOf("Tracking/MinPassDuration"), QStringLiteral("60"));
    QCOMPARE(valueOf("Archive/RetentionDays"), QStringLiteral("30"));
    QCOMPARE(_toStringList(_findAs<ParameterList>(root, "Camera/FitsHeader/ExtraHeaderKeys")
                               ->getValues()),
             QStringList({"OBSERVER", "TELESCOP", "INSTRUME"}));
    QCOMPARE(_toStringList(_findAs<ParameterList>(root, "Tracking/PriorityNoradIds")->getValues()),
             QStringList({"25544", "33591"}));

    std::vector<ParameterListTLEs::TLE> const tles =
        _findAs<ParameterListTLEs>(root, "Tracking/Satellites")->getTLEs();
    QStringList names;
    for (ParameterListTLEs::TLE const &tle : tles)
        names << QString::fromStdString(tle.line0);
    QCOMPARE(names, QStringList({"ISS (ZARYA)", "NOAA 19", "AQUA"}));
}

void TestShippedSchema::elementSetsOfExamplesAreIntact()
{
    QStringList const files{"/conf/example.conf", "/default/tracking-default.conf"};
    for (QString const &file : files) {
        Strings errors;
        Tree tree = _loadSchema(errors);
        QVERIFY(tree);
        ParameterComplex *root = tree.get();
        OrvexConfigLib::loadXML_knStruct(errors, root, (_dataDir + file).toStdString());
        std::vector<ParameterListTLEs::TLE> const tles =
            _findAs<ParameterListTLEs>(root, "Tracking/Satellites")->getTLEs();
        QVERIFY2(!tles.empty(), qPrintable(file));
        for (ParameterListTLEs::TLE const &tle : tles) {
            QVERIFY2(_checksumHolds(tle.line1), tle.line1.c_str());
            QVERIFY2(_checksumHolds(tle.line2), tle.line2.c_str());
            QCOMPARE(tle.line1.substr(0, 2), std::string("1 "));
            QCOMPARE(tle.line2.substr(0, 2), std::string("2 "));
            QCOMPARE(tle.line1.substr(2, 5), tle.line2.substr(2, 5));
        }
    }
}

QTEST_GUILESS_MAIN(TestShippedSchema)

#include "tst_shippedschema.moc"
