// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl describe and search on the shipped schema: what the schema says of
// a parameter, and where a word stands, in plain lines and in JSON.
#include "ctlprocess.h"

#include <QJsonArray>
#include <QtTest>

using namespace CtlProcess;

namespace {

QStringList _texts(QJsonValue const &array)
{
    QStringList texts;
    for (QJsonValue const &value : array.toArray())
        texts << value.toString();
    return texts;
}

// The text after "  Field: " in describe's plain lines; empty when absent.
QString _field(QStringList const &lines, QString const &name)
{
    QString const prefix = QStringLiteral("  ") + name + QStringLiteral(": ");
    for (QString const &line : lines)
        if (line.startsWith(prefix))
            return line.mid(prefix.size());
    return QString();
}

QJsonValue _number(double value)
{
    return QJsonValue(value);
}

} // namespace

class TestOrvexctlDescribe : public QObject
{
    Q_OBJECT

private slots:
    void describeTellsKindTypeAndBounds_data();
    void describeTellsKindTypeAndBounds();
    void describePlainAgreesWithJson_data();
    void describePlainAgreesWithJson();
    void describeGivesDefaultOfEachService();
    void describeTellsServicesOfRestrictingSection();
    void describeRefusesUnknownPath_data();
    void describeRefusesUnknownPath();

    void searchLooksAtEveryField_data();
    void searchLooksAtEveryField();
    void searchIgnoresCase();
    void searchPlainAgreesWithJson();
    void searchWithoutMatchIsRemark();
};

void TestOrvexctlDescribe::describeTellsKindTypeAndBounds_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QJsonValue>("minimum");
    QTest::addColumn<QJsonValue>("maximum");
    QTest::addColumn<QStringList>("enumeration");
    QJsonValue const none(QJsonValue::Null);
    QTest::newRow("range") << "Camera/Gain"
                           << "value"
                           << "xs:integer" << _number(0) << _number(600) << QStringList();
    QTest::newRow("decimal range")
        << "Camera/ExposureTime"
        << "value"
        << "xs:decimal" << _number(0.001) << _number(3600) << QStringList();
    QTest::newRow("enumeration") << "Camera/Binning"
                                 << "value"
                                 << "xs:integer" << none << none
                                 << QStringList { "1", "2", "3", "4" };
    QTest::newRow("list") << "Survey/Filters"
                          << "list"
                          << "filterKeysType" << _number(1) << none << QStringList();
    QTest::newRow("list without minimum") << "Paths/CatalogFiles"
                                          << "list"
                                          << "FilepathType" << _number(0) << none << QStringList();
    QTest::newRow("TLE list") << "Tracking/Satellites"
                              << "tle-list"
                              << "TLEType" << none << none << QStringList();
    QTest::newRow("section") << "Camera/Cooling"
                             << "section"
                             << "" << none << none << QStringList();
}

void TestOrvexctlDescribe::describeTellsKindTypeAndBounds()
{
    QFETCH(QString, path);
    QFETCH(QString, kind);
    QFETCH(QString, type);
    QFETCH(QJsonValue, minimum);
    QFETCH(QJsonValue, maximum);
    QFETCH(QStringList, enumeration);
    Run const result = run({ QStringLiteral("describe"), path, QStringLiteral("--json") });
    QCOMPARE(result.status, 0);
    QCOMPARE(result.err, QByteArray());
    QJsonObject const document = CtlProcess::document(result);
    QCOMPARE(document.value(QLatin1String("path")).toString(), path);
    QCOMPARE(document.value(QLatin1String("kind")).toString(), kind);
    QCOMPARE(document.value(QLatin1String("type")).toString(), type);
    QCOMPARE(document.value(QLatin1String("minimum")), minimum);
    QCOMPARE(document.value(QLatin1String("maximum")), maximum);
    QCOMPARE(_texts(document.value(QLatin1String("enumeration"))), enumeration);
    for (char const *field : { "name", "unit", "documentation", "source", "services", "importance",
             "visible", "defaults" })
        QVERIFY2(document.contains(QLatin1String(field)), field);
}

void TestOrvexctlDescribe::describePlainAgreesWithJson_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("allowed");
    QTest::newRow("range") << "Camera/Gain"
                           << "from 0 to 600, or empty";
    QTest::newRow("enumeration") << "Camera/Binning"
                                 << "one of 1 | 2 | 3 | 4";
    QTest::newRow("list") << "Tracking/PriorityNoradIds"
                          << "at least 1 item, each from 1 to 9999999, or empty";
    QTest::newRow("hidden") << "Version"
                            << "one of 1.0 | 1.1 | 2.0";
}

void TestOrvexctlDescribe::describePlainAgreesWithJson()
{
    QFETCH(QString, path);
    QFETCH(QString, allowed);
    Run const plain = run({ QStringLiteral("describe"), path });
    QJsonObject const document
        = CtlProcess::document(run({ QStringLiteral("describe"), path, QStringLiteral("--json") }));
    QCOMPARE(plain.status, 0);
    QStringList const lines = CtlProcess::lines(plain.out);
    QCOMPARE(lines.first(), path);
    QCOMPARE(_field(lines, QStringLiteral("Allowed")), allowed);
    QCOMPARE(document.value(QLatin1String("allowed")).toString(), allowed);
    QCOMPARE(
        _field(lines, QStringLiteral("Name")), document.value(QLatin1String("name")).toString());
    QCOMPARE(
        _field(lines, QStringLiteral("Unit")), document.value(QLatin1String("unit")).toString());
    QCOMPARE(_field(lines, QStringLiteral("Documentation")),
        document.value(QLatin1String("documentation")).toString());
    QCOMPARE(_field(lines, QStringLiteral("Importance")).toInt(),
        document.value(QLatin1String("importance")).toInt());
    QCOMPARE(_field(lines, QStringLiteral("Visible")),
        QLatin1String(document.value(QLatin1String("visible")).toBool() ? "yes" : "no"));
    QVERIFY(!document.value(QLatin1String("name")).toString().isEmpty());
}

void TestOrvexctlDescribe::describeGivesDefaultOfEachService()
{
    for (QString const &path : { QStringLiteral("Camera/Gain"), QStringLiteral("Survey/Filters"),
             QStringLiteral("Tracking/Satellites") }) {
        Run const result = run({ QStringLiteral("describe"), path, QStringLiteral("--json") });
        QJsonObject const defaults
            = CtlProcess::document(result).value(QLatin1String("defaults")).toObject();
        QCOMPARE(defaults.keys(), (QStringList { "photometry", "survey", "tracking" }));
        for (QString const &service : defaults.keys()) {
            QJsonObject const got = CtlProcess::document(run({ QStringLiteral("get"),
                shippedDefault(service), path, QStringLiteral("--json") }));
            QJsonValue const expected = got.contains(QLatin1String("value"))
                ? got.value(QLatin1String("value"))
                : got.contains(QLatin1String("values")) ? got.value(QLatin1String("values"))
                                                        : got.value(QLatin1String("sets"));
            QVERIFY(!expected.isUndefined());
            QCOMPARE(defaults.value(service), expected);
        }
        Run const plain = run({ QStringLiteral("describe"), path });
        QCOMPARE(CtlProcess::lines(plain.out).filter(QStringLiteral("  Default (")).size(), 3);
    }
}

void TestOrvexctlDescribe::describeTellsServicesOfRestrictingSection()
{
    Run const plain = run({ QStringLiteral("describe"), QStringLiteral("Survey/Tiling/Overlap") });
    QCOMPARE(_field(lines(plain.out), QStringLiteral("Services")),
        QStringLiteral("survey (of the section Survey)"));
    QJsonObject const document = CtlProcess::document(run({ QStringLiteral("describe"),
        QStringLiteral("Survey/Tiling/Overlap"), QStringLiteral("--json") }));
    QCOMPARE(_texts(document.value(QLatin1String("services"))), QStringList { "survey" });
    Run const unrestricted = run({ QStringLiteral("describe"), QStringLiteral("Camera/Gain") });
    QCOMPARE(_field(lines(unrestricted.out), QStringLiteral("Services")), QStringLiteral("all"));
}

void TestOrvexctlDescribe::describeRefusesUnknownPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("unknown leaf") << "Camera/Nothing";
    QTest::newRow("below a leaf") << "Camera/Gain/More";
    QTest::newRow("empty") << "";
}

void TestOrvexctlDescribe::describeRefusesUnknownPath()
{
    QFETCH(QString, path);
    Run const plain = run({ QStringLiteral("describe"), path });
    QCOMPARE(plain.status, 2);
    QVERIFY(plain.out.isEmpty());
    QCOMPARE(plain.err, "orvexctl: the schema has no parameter " + path.toUtf8() + '\n');
    Run const json = run({ QStringLiteral("describe"), path, QStringLiteral("--json") });
    QCOMPARE(json.status, 2);
    QJsonObject const document = CtlProcess::document(json);
    QCOMPARE(document.keys(), QStringList { "messages" });
    QCOMPARE(_texts(document.value(QLatin1String("messages"))), messagesOf(plain.err));
}

void TestOrvexctlDescribe::searchLooksAtEveryField_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("services");
    QTest::newRow("key") << "NoradIds"
                         << "Tracking/PriorityNoradIds"
                         << "key"
                         << "tracking";
    QTest::newRow("display name") << "culmination"
                                  << "Tracking/MinPassElevation"
                                  << "name"
                                  << "tracking";
    QTest::newRow("unit") << "arcmin"
                          << "Survey/Tiling/FieldWidth"
                          << "unit"
                          << "survey";
    QTest::newRow("documentation") << "driver's own units"
                                   << "Camera/Gain"
                                   << "documentation"
                                   << "";
    QTest::newRow("non-ASCII unit") << "°c"
                                    << "Camera/Cooling/SetPoint"
                                    << "unit"
                                    << "";
}

void TestOrvexctlDescribe::searchLooksAtEveryField()
{
    QFETCH(QString, text);
    QFETCH(QString, path);
    QFETCH(QString, where);
    QFETCH(QString, services);
    Run const json = run({ QStringLiteral("search"), text, QStringLiteral("--json") });
    QCOMPARE(json.status, 0);
    QJsonArray const matches = CtlProcess::document(json).value(QLatin1String("matches")).toArray();
    QJsonObject found;
    for (QJsonValue const &match : matches)
        if (match.toObject().value(QLatin1String("path")).toString() == path)
            found = match.toObject();
    QVERIFY2(!found.isEmpty(), json.out.constData());
    QVERIFY(_texts(found.value(QLatin1String("where"))).contains(where));
    QCOMPARE(_texts(found.value(QLatin1String("services"))).join(QLatin1Char(',')), services);
}

void TestOrvexctlDescribe::searchIgnoresCase()
{
    Run const lower = run({ QStringLiteral("search"), QStringLiteral("gain") });
    Run const upper = run({ QStringLiteral("search"), QStringLiteral("GAIN") });
    QCOMPARE(lower.status, 0);
    QCOMPARE(upper.out, lower.out);
    QVERIFY(lower.out.startsWith("Camera/Gain  Gain  [all]\n"));
}

void TestOrvexctlDescribe::searchPlainAgreesWithJson()
{
    Run const plain = run({ QStringLiteral("search"), QStringLiteral("filter") });
    Run const json
        = run({ QStringLiteral("search"), QStringLiteral("filter"), QStringLiteral("--json") });
    QCOMPARE(json.status, plain.status);
    QStringList converted;
    for (QJsonValue const &value :
        CtlProcess::document(json).value(QLatin1String("matches")).toArray()) {
        QJsonObject const match = value.toObject();
        QStringList const services = _texts(match.value(QLatin1String("services")));
        converted << match.value(QLatin1String("path")).toString() + QStringLiteral("  ")
                + match.value(QLatin1String("name")).toString() + QStringLiteral("  [")
                + (services.isEmpty() ? QStringLiteral("all") : services.join(QStringLiteral(", ")))
                + QLatin1Char(']');
    }
    QCOMPARE(converted, lines(plain.out));
    // Parameters of restricted services, which the window's search box leaves out.
    QVERIFY(plain.out.contains("Survey/Filters  Filter sequence  [survey]\n"));
    QVERIFY(plain.out.contains("Photometry/FilterKey  Filter  [photometry]\n"));
}

void TestOrvexctlDescribe::searchWithoutMatchIsRemark()
{
    Run const result = run({ QStringLiteral("search"), QStringLiteral("no-such-word") });
    QCOMPARE(result.status, 1);
    QVERIFY(result.out.isEmpty());
    QCOMPARE(result.err, QByteArray("orvexctl: no parameter matches \"no-such-word\"\n"));
}

QTEST_GUILESS_MAIN(TestOrvexctlDescribe)
#include "tst_orvexctl_describe.moc"
