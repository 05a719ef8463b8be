// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/checkertle.h"

#include "tlelines.h"

#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <vector>

using namespace TleLines;

namespace {

const QByteArray name = bytes(issName);
const QByteArray line1 = bytes(issLine1);
const QByteArray line2 = bytes(issLine2);
const QByteArray otherName = bytes(jpssName);
const QByteArray otherLine1 = bytes(jpssLine1);
const QByteArray otherLine2 = bytes(jpssLine2);
const QByteArray wrongLine1 = bytes(withWrongCheckDigit(issLine1));
const QByteArray wrongLine2 = bytes(withWrongCheckDigit(issLine2, 4));
// A name as long as a data line.
const QByteArray longName = name.leftJustified(69, ' ');

const QString summary0 = "0 problem-free TLEs were parsed.";
const QString summary1 = "1 problem-free TLEs were parsed.";
const QString summary2 = "2 problem-free TLEs were parsed.";

QString lineFault(int line)
{
    return QString("TextLine #%1 is not TLE line.").arg(line);
}

QByteArray lines(const QByteArrayList &list)
{
    return list.join('\n');
}

CheckerTLE::TLE record(const QByteArray &line0, const QByteArray &line1, const QByteArray &line2)
{
    return CheckerTLE::TLE{line0.toStdString(), line1.toStdString(), line2.toStdString()};
}

// Three entries per record, so that records compare as one list.
QByteArrayList flatten(const std::vector<CheckerTLE::TLE> &tles)
{
    QByteArrayList list;
    for (const CheckerTLE::TLE &tle : tles)
        list << bytes(tle.line0) << bytes(tle.line1) << bytes(tle.line2);
    return list;
}

void addParseColumns()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QByteArrayList>("records");
}

// Runs the parser on the row's text and compares result, messages and records.
void verifyParse()
{
    QFETCH(QByteArray, text);
    QFETCH(int, result);
    QFETCH(QStringList, messages);
    QFETCH(QByteArrayList, records);
    std::vector<std::string> actualMessages;
    std::vector<CheckerTLE::TLE> tles;
    QCOMPARE(CheckerTLE::parseTLEs(actualMessages, tles, text.toStdString()), result);
    QCOMPARE(toList(actualMessages), messages);
    QCOMPARE(flatten(tles), records);
}

void addWriteColumns()
{
    QTest::addColumn<QByteArrayList>("records");
    QTest::addColumn<bool>("check");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("messages");
}

std::vector<CheckerTLE::TLE> unflatten(const QByteArrayList &list)
{
    std::vector<CheckerTLE::TLE> tles;
    for (int i = 0; i + 2 < list.size(); i += 3)
        tles.push_back(record(list[i], list[i + 1], list[i + 2]));
    return tles;
}

void verifyWrite()
{
    QFETCH(QByteArrayList, records);
    QFETCH(bool, check);
    QFETCH(QByteArray, text);
    QFETCH(QStringList, messages);
    std::vector<std::string> actualMessages;
    std::string actualText = "text from before";
    QCOMPARE(CheckerTLE::TLEs2text(actualMessages, actualText, unflatten(records), check), 0);
    QCOMPARE(bytes(actualText), text);
    QCOMPARE(toList(actualMessages), messages);
}

} // namespace

class TstCheckerTLE : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void emptyTextIsRefusedAndRecordsKept();
    void lineFeedsOnlyGiveNoRecords_data();
    void lineFeedsOnlyGiveNoRecords();
    void namedSetGivesOneRecord_data();
    void namedSetGivesOneRecord();
    void dataLinesWithoutNameGiveEmptyName_data();
    void dataLinesWithoutNameGiveEmptyName();
    void emptyLinesBetweenSetsAreIgnored_data();
    void emptyLinesBetweenSetsAreIgnored();
    void emptyLineInsideSetIsLineFault_data();
    void emptyLineInsideSetIsLineFault();
    void failedCheckNamesTextLineAndSetLine_data();
    void failedCheckNamesTextLineAndSetLine();
    void dataLinesAreTestedOnlyForFormAndDigits_data();
    void dataLinesAreTestedOnlyForFormAndDigits();
    void secondNameLineIsLineFault();
    void nameOfSixtyNineBytesRunsIntoNextSet_data();
    void nameOfSixtyNineBytesRunsIntoNextSet();
    void incompleteSetAtEndDependsOnFinalLineFeed_data();
    void incompleteSetAtEndDependsOnFinalLineFeed();
    void nameAloneWithoutLineFeedIsDroppedSilently();
    void overlongLinesAreLineFaults_data();
    void overlongLinesAreLineFaults();
    void nameLineKeepsCarriageReturn();
    void faultDoesNotStopParse();
    void parseAppendsMessagesAndReplacesRecords();
    void realCatalogParsesAndWritesBack();
    void crlfFileGivesLineFaults();
    void verificationFileGivesNoRecords();

    void checkGivesVerdict_data();
    void checkGivesVerdict();
    void checkReplacesMessage();

    void writerPutsEmptyLineBetweenSets_data();
    void writerPutsEmptyLineBetweenSets();
    void writerSeparatesByIndexAfterRefusal_data();
    void writerSeparatesByIndexAfterRefusal();
    void writerWritesUncheckedRecordsAsTheyStand_data();
    void writerWritesUncheckedRecordsAsTheyStand();
    void writerAppendsToMessages();

    void loadReadsFileByteForByte();
    void loadReadsDataFile();
    void loadOfEmptyFileGivesEmptyText();
    void loadOfUnreadableFileIsRefused_data();
    void loadOfUnreadableFileIsRefused();

private:
    QTemporaryDir _dir;
};

void TstCheckerTLE::initTestCase()
{
    QVERIFY(_dir.isValid());
}

// ---- parseTLEs ------------------------------------------------------------

void TstCheckerTLE::emptyTextIsRefusedAndRecordsKept()
{
    std::vector<std::string> messages = {"earlier"};
    std::vector<CheckerTLE::TLE> tles = {record(name, line1, line2)};
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, std::string()), 2);
    QCOMPARE(toList(messages), QStringList({"earlier", "TLEs text is empty."}));
    QCOMPARE(flatten(tles), QByteArrayList({name, line1, line2}));
}

void TstCheckerTLE::lineFeedsOnlyGiveNoRecords_data()
{
    addParseColumns();
    QTest::newRow("one") << QByteArray("\n") << 0 << QStringList{summary0} << QByteArrayList();
    QTest::newRow("three") << QByteArray("\n\n\n") << 0 << QStringList{summary0}
                           << QByteArrayList();
    QTest::newRow("forty") << QByteArray(40, '\n') << 0 << QStringList{summary0}
                           << QByteArrayList();
}

void TstCheckerTLE::lineFeedsOnlyGiveNoRecords()
{
    verifyParse();
}

void TstCheckerTLE::namedSetGivesOneRecord_data()
{
    addParseColumns();
    const QByteArrayList set = {name, line1, line2};
    // "TLEs" stays plural for one.
    QTest::newRow("no final line feed") << lines(set) << 0 << QStringList{summary1} << set;
    QTest::newRow("final line feed") << lines(set) + "\n" << 0 << QStringList{summary1} << set;
    QTest::newRow("two sets") << lines({name, line1, line2, "", otherName, otherLine1, otherLine2})
                              << 0 << QStringList{summary2}
                              << QByteArrayList{name,      line1,      line2,
                                                otherName, otherLine1, otherLine2};
    QTest::newRow("name of one byte") << lines({"X", line1, line2}) << 0 << QStringList{summary1}
                                      << QByteArrayList{"X", line1, line2};
    QTest::newRow("name of 68 bytes")
        << lines({name.leftJustified(68, '-'), line1, line2}) << 0 << QStringList{summary1}
        << QByteArrayList{name.leftJustified(68, '-'), line1, line2};
}

void TstCheckerTLE::namedSetGivesOneRecord()
{
    verifyParse();
}

void TstCheckerTLE::dataLinesWithoutNameGiveEmptyName_data()
{
    addParseColumns();
    QTest::newRow("alone") << lines({line1, line2}) << 0 << QStringList{summary1}
                           << QByteArrayList{"", line1, line2};
    QTest::newRow("between empty lines")
        << lines({"", "", line1, line2, "", ""}) << 0 << QStringList{summary1}
        << QByteArrayList{"", line1, line2};
    QTest::newRow("before a named set")
        << lines({line1, line2, "", otherName, otherLine1, otherLine2}) << 0
        << QStringList{summary2}
        << QByteArrayList{"", line1, line2, otherName, otherLine1, otherLine2};
}

void TstCheckerTLE::dataLinesWithoutNameGiveEmptyName()
{
    verifyParse();
}

void TstCheckerTLE::emptyLinesBetweenSetsAreIgnored_data()
{
    addParseColumns();
    const QByteArrayList both = {name, line1, line2, otherName, otherLine1, otherLine2};
    for (int empty : {0, 1, 2, 7}) {
        QByteArrayList text = {name, line1, line2};
        for (int i = 0; i < empty; ++i)
            text << "";
        text << otherName << otherLine1 << otherLine2;
        const QByteArray tag = QByteArray::number(empty) + " empty lines";
        QTest::newRow(tag.constData()) << lines(text) << 0 << QStringList{summary2} << both;
    }
}

void TstCheckerTLE::emptyLinesBetweenSetsAreIgnored()
{
    verifyParse();
}

void TstCheckerTLE::emptyLineInsideSetIsLineFault_data()
{
    addParseColumns();
    // The data lines after the fault start a group of their own.
    QTest::newRow("between name and line 1")
        << lines({name, "", line1, line2}) << 1 << QStringList{lineFault(1), summary1}
        << QByteArrayList{"", line1, line2};
    QTest::newRow("between line 1 and line 2, text ends")
        << lines({name, line1, "", line2}) << 1 << QStringList{lineFault(2), summary0}
        << QByteArrayList();
    QTest::newRow("between line 1 and line 2, line feed at the end")
        << lines({name, line1, "", line2}) + "\n"
        << 1 << QStringList{lineFault(2), lineFault(4), summary0} << QByteArrayList();
    QTest::newRow("between line 1 and line 2, set follows")
        << lines({name, line1, "", line1, line2}) << 1 << QStringList{lineFault(2), summary1}
        << QByteArrayList{"", line1, line2};
}

void TstCheckerTLE::emptyLineInsideSetIsLineFault()
{
    verifyParse();
}

void TstCheckerTLE::failedCheckNamesTextLineAndSetLine_data()
{
    addParseColumns();
    // The first number is the text line of the second data line, the second the line
    // within the set.
    QTest::newRow("wrong digit in line 1")
        << lines({name, wrongLine1, line2}) << 1
        << QStringList{"Line #2. TLE is not valid. Line #1 is not TLE line.", summary0}
        << QByteArrayList();
    QTest::newRow("wrong digit in line 2")
        << lines({name, line1, wrongLine2}) << 1
        << QStringList{"Line #2. TLE is not valid. Line #2 is not TLE line.", summary0}
        << QByteArrayList();
    QTest::newRow("both wrong, line 1 named")
        << lines({name, wrongLine1, wrongLine2}) << 1
        << QStringList{"Line #2. TLE is not valid. Line #1 is not TLE line.", summary0}
        << QByteArrayList();
    QTest::newRow("unnamed, after other lines")
        << lines({"", "", line1, wrongLine2}) << 1
        << QStringList{"Line #3. TLE is not valid. Line #2 is not TLE line.", summary0}
        << QByteArrayList();
    QTest::newRow("69 bytes of text as line 1")
        << lines({name, QByteArray(69, 'x'), line2}) << 1
        << QStringList{"Line #2. TLE is not valid. Line #1 is not TLE line.", summary0}
        << QByteArrayList();
    QTest::newRow("good set after a failed one")
        << lines({name, wrongLine1, line2, "", otherName, otherLine1, otherLine2}) << 1
        << QStringList{"Line #2. TLE is not valid. Line #1 is not TLE line.", summary1}
        << QByteArrayList{otherName, otherLine1, otherLine2};
}

void TstCheckerTLE::failedCheckNamesTextLineAndSetLine()
{
    verifyParse();
}

void TstCheckerTLE::dataLinesAreTestedOnlyForFormAndDigits_data()
{
    addParseColumns();
    QTest::newRow("lines swapped") << lines({name, line2, line1}) << 0 << QStringList{summary1}
                                   << QByteArrayList{name, line2, line1};
    QTest::newRow("two lines numbered 2")
        << lines({line2, otherLine2}) << 0 << QStringList{summary1}
        << QByteArrayList{"", line2, otherLine2};
    QTest::newRow("catalog numbers differ")
        << lines({line1, otherLine2}) << 0 << QStringList{summary1}
        << QByteArrayList{"", line1, otherLine2};
}

void TstCheckerTLE::dataLinesAreTestedOnlyForFormAndDigits()
{
    verifyParse();
}

void TstCheckerTLE::secondNameLineIsLineFault()
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    const QByteArray text = lines({name, otherName, line1, line2});
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, text.toStdString()), 1);
    QCOMPARE(toList(messages), QStringList({"TextLine #1 is not TLE line.", summary1}));
    // Both names are lost.
    QCOMPARE(flatten(tles), QByteArrayList({"", line1, line2}));
}

void TstCheckerTLE::nameOfSixtyNineBytesRunsIntoNextSet_data()
{
    addParseColumns();
    // The long name is taken for line 1, the real line 1 for line 2, and the real line 2
    // opens the next group.
    const QString failed = "Line #1. TLE is not valid. Line #1 is not TLE line.";
    QTest::newRow("alone") << lines({longName, line1, line2}) << 1 << QStringList{failed, summary0}
                           << QByteArrayList();
    QTest::newRow("empty line before next set")
        << lines({longName, line1, line2, "", otherName, otherLine1, otherLine2}) << 1
        << QStringList{failed, lineFault(3), summary1}
        << QByteArrayList{otherName, otherLine1, otherLine2};
    QTest::newRow("next set follows at once")
        << lines({longName, line1, line2, otherName, otherLine1, otherLine2}) << 1
        << QStringList{failed, lineFault(3), summary1}
        << QByteArrayList{"", otherLine1, otherLine2};
}

void TstCheckerTLE::nameOfSixtyNineBytesRunsIntoNextSet()
{
    verifyParse();
}

void TstCheckerTLE::incompleteSetAtEndDependsOnFinalLineFeed_data()
{
    addParseColumns();
    // After a final line feed one more, empty line is read: it is the fault.
    QTest::newRow("name and line 1, line feed")
        << lines({name, line1}) + "\n"
        << 1 << QStringList{lineFault(2), summary0} << QByteArrayList();
    QTest::newRow("name and line 1")
        << lines({name, line1}) << 0 << QStringList{summary0} << QByteArrayList();
    QTest::newRow("name, line feed")
        << name + "\n"
        << 1 << QStringList{lineFault(1), summary0} << QByteArrayList();
    QTest::newRow("line 1, line feed")
        << line1 + "\n"
        << 1 << QStringList{lineFault(1), summary0} << QByteArrayList();
    QTest::newRow("after a set, line feed")
        << lines({name, line1, line2, "", otherName, otherLine1}) + "\n"
        << 1 << QStringList{lineFault(6), summary1} << QByteArrayList{name, line1, line2};
    QTest::newRow("after a set") << lines({name, line1, line2, "", otherName, otherLine1}) << 0
                                 << QStringList{summary1} << QByteArrayList{name, line1, line2};
}

void TstCheckerTLE::incompleteSetAtEndDependsOnFinalLineFeed()
{
    verifyParse();
}

void TstCheckerTLE::nameAloneWithoutLineFeedIsDroppedSilently()
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, "ISS"), 0);
    QCOMPARE(toList(messages), QStringList({summary0}));
    QVERIFY(tles.empty());
}

void TstCheckerTLE::overlongLinesAreLineFaults_data()
{
    addParseColumns();
    QTest::newRow("carriage returns")
        << name + "\r\n" + line1 + "\r\n" + line2 + "\r\n"
        << 1 << QStringList{lineFault(1), lineFault(2), summary0} << QByteArrayList();
    QTest::newRow("trailing blanks, unnamed")
        << lines({line1 + " ", line2 + " "}) << 1
        << QStringList{lineFault(0), lineFault(1), summary0} << QByteArrayList();
    QTest::newRow("trailing blank on line 2")
        << lines({name, line1, line2 + " "}) << 1 << QStringList{lineFault(2), summary0}
        << QByteArrayList();
    QTest::newRow("long line before a set")
        << lines({QByteArray(200, 'n'), name, line1, line2}) << 1
        << QStringList{lineFault(0), summary1} << QByteArrayList{name, line1, line2};
}

void TstCheckerTLE::overlongLinesAreLineFaults()
{
    verifyParse();
}

void TstCheckerTLE::nameLineKeepsCarriageReturn()
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    const QByteArray text = name + "\r\n" + line1 + "\n" + line2;
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, text.toStdString()), 0);
    QCOMPARE(toList(messages), QStringList({summary1}));
    QCOMPARE(flatten(tles), QByteArrayList({name + "\r", line1, line2}));
}

void TstCheckerTLE::faultDoesNotStopParse()
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    const QByteArray text =
        lines({name, line1, line2, QByteArray(100, 'x'), otherName, otherLine1, wrongLine2, "",
               otherName, otherLine1, otherLine2, "", line1, line2});
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, text.toStdString()), 1);
    QCOMPARE(toList(messages),
             QStringList({lineFault(3), "Line #6. TLE is not valid. Line #2 is not TLE line.",
                          "3 problem-free TLEs were parsed."}));
    QCOMPARE(flatten(tles), QByteArrayList({name, line1, line2, otherName, otherLine1, otherLine2,
                                            "", line1, line2}));
}

void TstCheckerTLE::parseAppendsMessagesAndReplacesRecords()
{
    std::vector<std::string> messages = {"earlier"};
    std::vector<CheckerTLE::TLE> tles = {record("old", "old", "old"), record("", "", "")};
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, lines({name, line1, line2}).toStdString()), 0);
    QCOMPARE(toList(messages), QStringList({"earlier", summary1}));
    QCOMPARE(flatten(tles), QByteArrayList({name, line1, line2}));

    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, "\n"), 0);
    QCOMPARE(toList(messages), QStringList({"earlier", summary1, summary0}));
    QVERIFY(tles.empty());
}

void TstCheckerTLE::realCatalogParsesAndWritesBack()
{
    const QByteArray file = readDataFile("catalog-a.tle");
    QVERIFY(file.endsWith("\n") && !file.contains('\r'));
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, file.toStdString()), 0);
    QCOMPARE(toList(messages), QStringList({"489 problem-free TLEs were parsed."}));
    QCOMPARE(tles.size(), std::size_t(489));
    QCOMPARE(bytes(tles.front().line0), QByteArray("FLOCK 2P-1"));

    // The file is in the writer's own form, but for the line feed at its end.
    std::string text;
    messages.clear();
    QCOMPARE(CheckerTLE::TLEs2text(messages, text, tles, true), 0);
    QCOMPARE(toList(messages), QStringList({"Successfully written 489 TLEs."}));
    QCOMPARE(bytes(text) + "\n", file);
}

void TstCheckerTLE::crlfFileGivesLineFaults()
{
    // Every data line carries its carriage return and is one byte too long; the names
    // are taken and then lost at the fault.
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    const QByteArray file = readDataFile("iss-crlf.tle");
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, file.toStdString()), 1);
    QCOMPARE(toList(messages), QStringList({lineFault(1), lineFault(2), lineFault(4), lineFault(5),
                                            lineFault(7), lineFault(8), summary0}));
    QVERIFY(tles.empty());
}

void TstCheckerTLE::verificationFileGivesNoRecords()
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    const QByteArray file = readDataFile("verification-sets.tle");
    QVERIFY(!file.isEmpty());
    QCOMPARE(CheckerTLE::parseTLEs(messages, tles, file.toStdString()), 1);
    QVERIFY(tles.empty());
    QCOMPARE(QString::fromStdString(messages.back()), summary0);
    // Lines of 70 bytes and more never reach the check of a group.
    for (std::size_t i = 0; i + 1 < messages.size(); ++i)
        QVERIFY2(messages[i].rfind("TextLine #", 0) == 0, messages[i].c_str());
}

// ---- _checkTLE -------------------------------------------------------------

void TstCheckerTLE::checkGivesVerdict_data()
{
    QTest::addColumn<QByteArray>("line0");
    QTest::addColumn<QByteArray>("line1");
    QTest::addColumn<QByteArray>("line2");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("message");
    const QString ok = "TLE validated successfully.";
    const QString nameTooLong = "Line #0 has size > 69.";
    const QString notLine1 = "Line #1 is not TLE line.";
    const QString notLine2 = "Line #2 is not TLE line.";
    QTest::newRow("named set") << name << line1 << line2 << true << ok;
    QTest::newRow("no name") << QByteArray() << line1 << line2 << true << ok;
    QTest::newRow("name of 69 bytes") << longName << line1 << line2 << true << ok;
    QTest::newRow("name of 70 bytes") << longName + "x" << line1 << line2 << false << nameTooLong;
    QTest::newRow("long name before bad line")
        << longName + "x" << wrongLine1 << line2 << false << nameTooLong;
    QTest::newRow("wrong digit in line 1") << name << wrongLine1 << line2 << false << notLine1;
    QTest::newRow("short line 1") << name << line1.left(68) << line2 << false << notLine1;
    QTest::newRow("empty line 1") << name << QByteArray() << line2 << false << notLine1;
    QTest::newRow("both wrong") << name << wrongLine1 << wrongLine2 << false << notLine1;
    QTest::newRow("wrong digit in line 2") << name << line1 << wrongLine2 << false << notLine2;
    QTest::newRow("visible byte after line 2") << name << line1 << line2 + "x" << false << notLine2;
    // Only form and check digits count.
    QTest::newRow("carriage return after line 1") << name << line1 + "\r" << line2 << true << ok;
    QTest::newRow("lines swapped") << name << line2 << line1 << true << ok;
    QTest::newRow("two lines numbered 2") << name << line2 << otherLine2 << true << ok;
    QTest::newRow("catalog numbers differ") << name << line1 << otherLine2 << true << ok;
}

void TstCheckerTLE::checkGivesVerdict()
{
    QFETCH(QByteArray, line0);
    QFETCH(QByteArray, line1);
    QFETCH(QByteArray, line2);
    QFETCH(bool, valid);
    QFETCH(QString, message);
    std::string actual;
    QCOMPARE(_checkTLE(actual, record(line0, line1, line2)), valid);
    QCOMPARE(QString::fromStdString(actual), message);
}

void TstCheckerTLE::checkReplacesMessage()
{
    std::string message = "a message from before";
    QVERIFY(_checkTLE(message, record(name, line1, line2)));
    QCOMPARE(QString::fromStdString(message), QString("TLE validated successfully."));
    QVERIFY(!_checkTLE(message, record(name, line1, wrongLine2)));
    QCOMPARE(QString::fromStdString(message), QString("Line #2 is not TLE line."));
}

// ---- TLEs2text -------------------------------------------------------------

void TstCheckerTLE::writerPutsEmptyLineBetweenSets_data()
{
    addWriteColumns();
    const QByteArrayList three = {name,       line1,     line2,      "",        otherLine1,
                                  otherLine2, otherName, otherLine1, otherLine2};
    // An empty name writes no line, and no line feed follows the last set.
    const QByteArray text = lines(
        {name, line1, line2, "", otherLine1, otherLine2, "", otherName, otherLine1, otherLine2});
    QTest::newRow("three, unchecked")
        << three << false << text << QStringList{"Successfully written 3 TLEs."};
    QTest::newRow("three, checked")
        << three << true << text << QStringList{"Successfully written 3 TLEs."};
    QTest::newRow("one") << QByteArrayList{name, line1, line2} << false
                         << lines({name, line1, line2})
                         << QStringList{"Successfully written 1 TLEs."};
    QTest::newRow("none") << QByteArrayList() << false << QByteArray()
                          << QStringList{"Successfully written 0 TLEs."};
    QTest::newRow("none, checked")
        << QByteArrayList() << true << QByteArray() << QStringList{"Successfully written 0 TLEs."};
}

void TstCheckerTLE::writerPutsEmptyLineBetweenSets()
{
    verifyWrite();
}

void TstCheckerTLE::writerSeparatesByIndexAfterRefusal_data()
{
    addWriteColumns();
    // The count names every set handed in, the refused ones too.
    QTest::newRow("first of two refused")
        << QByteArrayList{name, wrongLine1, line2, otherName, otherLine1, otherLine2} << true
        << "\n\n" + lines({otherName, otherLine1, otherLine2})
        << QStringList{"TLE #0 is not valid. Line #1 is not TLE line.",
                       "Successfully written 2 TLEs."};
    QTest::newRow("middle of three refused")
        << QByteArrayList{name,       line1,     line2,      name,      line1,
                          wrongLine2, otherName, otherLine1, otherLine2}
        << true << lines({name, line1, line2, "", otherName, otherLine1, otherLine2})
        << QStringList{"TLE #1 is not valid. Line #2 is not TLE line.",
                       "Successfully written 3 TLEs."};
    QTest::newRow("last of two refused")
        << QByteArrayList{name, line1, line2, longName + "x", line1, line2} << true
        << lines({name, line1, line2})
        << QStringList{"TLE #1 is not valid. Line #0 has size > 69.",
                       "Successfully written 2 TLEs."};
    QTest::newRow("all refused") << QByteArrayList{name, wrongLine1, line2, name, line1, wrongLine2}
                                 << true << QByteArray()
                                 << QStringList{"TLE #0 is not valid. Line #1 is not TLE line.",
                                                "TLE #1 is not valid. Line #2 is not TLE line.",
                                                "Successfully written 2 TLEs."};
}

void TstCheckerTLE::writerSeparatesByIndexAfterRefusal()
{
    verifyWrite();
}

void TstCheckerTLE::writerWritesUncheckedRecordsAsTheyStand_data()
{
    addWriteColumns();
    QTest::newRow("broken lines") << QByteArrayList{QByteArray(200, 'n'), "broken", ""} << false
                                  << QByteArray(200, 'n') + "\nbroken\n"
                                  << QStringList{"Successfully written 1 TLEs."};
    QTest::newRow("wrong digits, carriage returns")
        << QByteArrayList{name + "\r", wrongLine1 + "\r", wrongLine2, "", "", ""} << false
        << name + "\r\n" + wrongLine1 + "\r\n" + wrongLine2 + "\n\n\n"
        << QStringList{"Successfully written 2 TLEs."};
}

void TstCheckerTLE::writerWritesUncheckedRecordsAsTheyStand()
{
    verifyWrite();
}

void TstCheckerTLE::writerAppendsToMessages()
{
    std::vector<std::string> messages = {"earlier"};
    std::string text;
    const std::vector<CheckerTLE::TLE> tles = {record(name, wrongLine1, line2)};
    QCOMPARE(CheckerTLE::TLEs2text(messages, text, tles, true), 0);
    QCOMPARE(toList(messages),
             QStringList({"earlier", "TLE #0 is not valid. Line #1 is not TLE line.",
                          "Successfully written 1 TLEs."}));
    QCOMPARE(bytes(text), QByteArray());
}

// ---- LoadFromFile ----------------------------------------------------------

void TstCheckerTLE::loadReadsFileByteForByte()
{
    // Longer than any read buffer, with carriage returns, zeros and high bytes.
    QByteArray content;
    for (int i = 0; content.size() < 200000; ++i)
        content +=
            lines({name + "\r", line1, line2}) + QByteArray("\0\xff\n", 3) + QByteArray::number(i);
    const QString path = _dir.filePath("bytes.tle");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();

    std::vector<std::string> messages = {"earlier"};
    std::string text = "text from before";
    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, path.toStdString()), 0);
    QCOMPARE(bytes(text), content);
    QCOMPARE(toList(messages), QStringList({"earlier"}));
}

void TstCheckerTLE::loadReadsDataFile()
{
    std::vector<std::string> messages;
    std::string text;
    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, ORVEX_TEST_DATA_DIR "/tle/iss-crlf.tle"), 0);
    QCOMPARE(bytes(text), readDataFile("iss-crlf.tle"));
    QVERIFY(messages.empty());
}

void TstCheckerTLE::loadOfEmptyFileGivesEmptyText()
{
    const QString path = _dir.filePath("empty.tle");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    std::vector<std::string> messages;
    std::string text = "text from before";
    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, path.toStdString()), 0);
    QCOMPARE(bytes(text), QByteArray());
    QVERIFY(messages.empty());
}

void TstCheckerTLE::loadOfUnreadableFileIsRefused_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("missing file") << _dir.filePath("missing.tle");
    QTest::newRow("missing directory") << _dir.filePath("missing/sets.tle");
    // What a cancelled file dialog hands over.
    QTest::newRow("empty name") << QString();
    QTest::newRow("directory") << _dir.path();
}

void TstCheckerTLE::loadOfUnreadableFileIsRefused()
{
    QFETCH(QString, fileName);
    std::vector<std::string> messages = {"earlier"};
    std::string text = "text from before";
    QCOMPARE(CheckerTLE::LoadFromFile(messages, text, fileName.toStdString()), 2);
    QCOMPARE(QString::fromStdString(text), QString("text from before"));
    QCOMPARE(toList(messages),
             QStringList({"earlier", "The file " + fileName + " cannot be read."}));
}

QTEST_GUILESS_MAIN(TstCheckerTLE)

#include "tst_checkertle.moc"
