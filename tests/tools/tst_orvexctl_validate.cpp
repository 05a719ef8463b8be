// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl validate over many files and folders: one line per file or
// finding, a summary, and the exit status of the worst file.
#include "ctlprocess.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

using namespace CtlProcess;

class TestOrvexctlValidate : public QObject
{
    Q_OBJECT

private:
    QString _path(QString const &name) const { return _dir->filePath(name); }
    Run _validate(QStringList const &args) const
    {
        return run(_dir->path(), QStringList { QStringLiteral("validate") } + args);
    }

    QScopedPointer<QTemporaryDir> _dir;
    QByteArray _example;

private slots:
    void init();

    void folderGivesSortedLinesAndSummary();
    void findingQuotesItsLineOnStandardError();
    void statusAndSummaryFollowTheFiles_data();
    void statusAndSummaryFollowTheFiles();
    void jsonAgreesWithPlain();
    void folderWithoutConfigurationsIsRemark();
    void refusedSchemaValidatesNothing();
};

// The folder "confs": a good file, one with a value outside an enumeration,
// one cut short, a link that leads nowhere, a good file in a subfolder, and a
// text file that validate passes over.
void TestOrvexctlValidate::init()
{
    _dir.reset(new QTemporaryDir);
    QVERIFY(_dir->isValid());
    _example = readFile(shippedExample());
    QVERIFY(_example.contains("<Binning>2</Binning>"));
    QVERIFY(QDir(_dir->path()).mkpath(QStringLiteral("confs/site")));
    QVERIFY(writeFile(_path(QStringLiteral("confs/good.conf")), _example));
    QVERIFY(writeFile(_path(QStringLiteral("confs/site/north.xml")), _example));
    QByteArray invalid = _example;
    invalid.replace("<Binning>2</Binning>", "<Binning>5</Binning>");
    QVERIFY(writeFile(_path(QStringLiteral("confs/binning.conf")), invalid));
    QVERIFY(writeFile(
        _path(QStringLiteral("confs/cut.conf")), _example.left(_example.indexOf("<Camera>"))));
    QVERIFY(QFile::link(QStringLiteral("gone.conf"), _path(QStringLiteral("confs/lost.conf"))));
    QVERIFY(writeFile(_path(QStringLiteral("confs/notes.txt")), "not a configuration\n"));
}

void TestOrvexctlValidate::folderGivesSortedLinesAndSummary()
{
    Run const result = _validate({ QStringLiteral("confs") });
    QCOMPARE(result.status, 2);
    QStringList const out = lines(result.out);
    QCOMPARE(out.size(), 6);
    int const binningLine = _example.left(_example.indexOf("<Binning>")).count('\n') + 1;
    QVERIFY2(out[0].startsWith(QStringLiteral("confs/binning.conf:%1:").arg(binningLine)),
        qPrintable(out[0]));
    QVERIFY(out[0].contains(QLatin1String("Binning")));
    QVERIFY2(out[1].startsWith(QLatin1String("confs/cut.conf:")), qPrintable(out[1]));
    QCOMPARE(out[2], QStringLiteral("confs/good.conf: valid"));
    QVERIFY2(out[3].startsWith(QLatin1String("confs/lost.conf:0:0: cannot be read")),
        qPrintable(out[3]));
    QCOMPARE(out[4], QStringLiteral("confs/site/north.xml: valid"));
    QCOMPARE(out[5], QStringLiteral("2 valid, 3 invalid"));
    QVERIFY(!result.out.contains("notes.txt"));
}

void TestOrvexctlValidate::findingQuotesItsLineOnStandardError()
{
    Run const result = _validate({ QStringLiteral("confs/binning.conf") });
    QCOMPARE(result.status, 2);
    QVERIFY(result.err.contains("confs/binning.conf is not valid against "));
    QVERIFY(result.err.contains("\nXML is not valid\nfile is invalid at: line: "));
    QVERIFY(result.err.contains(" | <Binning>5</Binning>\n"));
    QVERIFY(result.out.endsWith("\n0 valid, 1 invalid\n"));
}

void TestOrvexctlValidate::statusAndSummaryFollowTheFiles_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("summary");
    QTest::newRow("one good file")
        << QStringList { "confs/good.conf" } << 0 << "1 valid, 0 invalid";
    QTest::newRow("good folder") << QStringList { "confs/site" } << 0 << "1 valid, 0 invalid";
    QTest::newRow("files and folder") << QStringList { "confs/good.conf", "confs/site",
        "confs/good.conf" } << 0 << "3 valid, 0 invalid";
    QTest::newRow("one invalid") << QStringList { "confs/site", "confs/binning.conf" } << 2
                                 << "1 valid, 1 invalid";
    QTest::newRow("missing file") << QStringList { "confs/good.conf", "nothing.conf" } << 2
                                  << "1 valid, 1 invalid";
    QTest::newRow("dangling link")
        << QStringList { "confs/lost.conf" } << 2 << "0 valid, 1 invalid";
}

void TestOrvexctlValidate::statusAndSummaryFollowTheFiles()
{
    QFETCH(QStringList, args);
    QFETCH(int, status);
    QFETCH(QString, summary);
    Run const result = _validate(args);
    QCOMPARE(result.status, status);
    QCOMPARE(lines(result.out).last(), summary);
    QCOMPARE(result.err.isEmpty(), status == 0);
}

void TestOrvexctlValidate::jsonAgreesWithPlain()
{
    Run const plain = _validate({ QStringLiteral("confs") });
    Run const json = _validate({ QStringLiteral("confs"), QStringLiteral("--json") });
    QCOMPARE(json.status, plain.status);
    QCOMPARE(json.err, plain.err);
    QJsonObject const document = CtlProcess::document(json);
    QCOMPARE(document.value(QLatin1String("valid")).toInt(), 2);
    QCOMPARE(document.value(QLatin1String("invalid")).toInt(), 3);
    QStringList converted;
    for (QJsonValue const &value : document.value(QLatin1String("files")).toArray()) {
        QJsonObject const file = value.toObject();
        QString const name = file.value(QLatin1String("file")).toString();
        QJsonArray const findings = file.value(QLatin1String("messages")).toArray();
        QCOMPARE(file.value(QLatin1String("valid")).toBool(), findings.isEmpty());
        if (findings.isEmpty())
            converted << name + QStringLiteral(": valid");
        for (QJsonValue const &finding : findings) {
            QJsonObject const at = finding.toObject();
            QVERIFY(at.value(QLatin1String("line")).isDouble());
            QVERIFY(at.value(QLatin1String("column")).isDouble());
            converted << QStringLiteral("%1:%2:%3: %4")
                             .arg(name)
                             .arg(at.value(QLatin1String("line")).toInt())
                             .arg(at.value(QLatin1String("column")).toInt())
                             .arg(at.value(QLatin1String("message")).toString());
        }
    }
    converted << QStringLiteral("2 valid, 3 invalid");
    QCOMPARE(converted, lines(plain.out));
    QCOMPARE(
        document.value(QLatin1String("messages")).toArray().size(), messagesOf(plain.err).size());
}

void TestOrvexctlValidate::folderWithoutConfigurationsIsRemark()
{
    QVERIFY(QDir(_dir->path()).mkpath(QStringLiteral("empty")));
    Run const result = _validate({ QStringLiteral("empty") });
    QCOMPARE(result.status, 1);
    QCOMPARE(result.out, QByteArray("0 valid, 0 invalid\n"));
    QVERIFY(result.err.contains("no *.conf or *.xml file"));
}

void TestOrvexctlValidate::refusedSchemaValidatesNothing()
{
    Run const result = _validate(
        { QStringLiteral("confs"), QStringLiteral("--schema"), QStringLiteral("confs/good.conf") });
    QCOMPARE(result.status, 2);
    QVERIFY(result.out.isEmpty());
    QVERIFY(result.err.contains("\nXSD schema is not "));
    QVERIFY(!result.err.contains("binning.conf"));
}

QTEST_GUILESS_MAIN(TestOrvexctlValidate)
#include "tst_orvexctl_validate.moc"
