// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The TLE editor: the text field of element sets, pasting, typing, loading
// from a file and clearing.

#include "editorfixture.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

#include <algorithm>

using namespace fixture;

namespace {

bool _anyFixedPitchFamily()
{
    const QFontDatabase fonts;
    const QStringList families = fonts.families();
    return std::any_of(families.cbegin(), families.cend(),
                       [&fonts](const QString &family) { return fonts.isFixedPitch(family); });
}

} // namespace

class TestTleEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void tleFieldSetUp();
    void tleFieldEmptyUntilFirstRefresh();
    void tleRefreshShowsSetsAndLeavesClear();
    void tleRefreshOfEmptyListGivesEmptyField();
    void tleRefreshHidesBadRecordButKeepsIt();
    void tlePastedCatalogStored();
    void tlePastedCatalogWithBadSetKeepsGoodOnes();
    void tleLineOfWrongLengthReported();
    void tleOneTypedCharacterVanishes();
    void tleIncompleteSetDependsOnLastLineFeed();
    void tleCharacterTypedIntoDataLine();
    void tleCursorAtStartAfterRewrite();
    void tleCarriageReturnsPass();
    void tleSetWithoutName();
    void tleLoadAppendsAndRepeats();
    void tleLoadWithoutGoodSetWarnsOnce_data();
    void tleLoadWithoutGoodSetWarnsOnce();
    void tleLoadCancelledOrEmptyChangesNothing_data();
    void tleLoadCancelledOrEmptyChangesNothing();
    void tleLoadDecodesLatin1OrUtf8UpToZeroByte();
    void tleClearWarnsExactlyOnce();
    void tleRemovingAllTextWarns();
    void tleTwoEditorsDoNotTellEachOther();

private:
    QTemporaryDir _dir;
};

void TestTleEditor::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
    QVERIFY(_dir.isValid());
}

void TestTleEditor::tleFieldSetUp()
{
    // The button row's layout is first offered to the frame, which already
    // has one; Qt says so and leaves the layout free for the control grid.
    QTest::ignoreMessage(QtWarningMsg, "QLayout: Attempting to add QLayout \"\" to ParamSimple \"\", "
                                       "which already has a layout");
    Tree tree;
    ParamSimple frame(tree.tles(visual("Satellites")), nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    QVERIFY(field);
    QCOMPARE(field->font().family(), QStringLiteral("Console"));
    QCOMPARE(field->font().pointSize(), 8);
    QCOMPARE(field->font().weight(), 50);
    QVERIFY(!field->font().italic());
    // Without a "Console" family the sets still line up in a fixed-pitch face.
    QCOMPARE(field->font().styleHint(), QFont::TypeWriter);
    if (_anyFixedPitchFamily())
        QVERIFY2(QFontInfo(field->font()).fixedPitch(), qPrintable(QFontInfo(field->font()).family()));
    QCOMPARE(field->minimumSize(), QSize(350, 250));
    QCOMPARE(int(field->windowFlags()), 18);
    QCOMPARE(field->lineWrapMode(), QPlainTextEdit::NoWrap);
    QVERIFY(!field->isReadOnly());

    QPushButton *clear = buttonOf(&frame, QStringLiteral("Clear"));
    QPushButton *load = buttonOf(&frame, QStringLiteral("Load from file.."));
    QVERIFY(clear && load);
    QVERIFY(!clear->isEnabled());
    QVERIFY(load->isEnabled());
    QCOMPARE(load->minimumWidth(), 100);
    for (QWidget *w : {static_cast<QWidget *>(field), static_cast<QWidget *>(clear),
                       static_cast<QWidget *>(load)})
        QCOMPARE(w->styleSheet(), QString());
    QCOMPARE(frame.findChildren<QLabel *>().size(), 0); // no title on this control

    QGridLayout *grid = controlGrid(frame);
    QCOMPARE(cellOf(grid, field), QList<int>({1, 0, 1, 1}));
    int row, column, rowSpan, columnSpan;
    bool buttonsFound = false;
    for (int i = 0; i < grid->count(); ++i) {
        auto *row0 = qobject_cast<QHBoxLayout *>(grid->itemAt(i)->layout());
        if (!row0)
            continue;
        buttonsFound = true;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QList<int>({row, column}), QList<int>({0, 0}));
        QCOMPARE(row0->count(), 3);
        QCOMPARE(row0->itemAt(0)->widget(), clear);
        QVERIFY(row0->itemAt(1)->spacerItem());
        QCOMPARE(row0->stretch(1), 1);
        QCOMPARE(row0->itemAt(2)->widget(), load);
        QCOMPARE(row0->contentsMargins(), QMargins(0, 0, 0, 0));
    }
    QVERIFY(buttonsFound);
}

void TestTleEditor::tleFieldEmptyUntilFirstRefresh()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QCOMPARE(fieldOf(frame)->toPlainText(), QString());
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
}

void TestTleEditor::tleRefreshShowsSetsAndLeavesClear()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QCOMPARE(fieldOf(frame)->textCursor().position(), 0);
    QCOMPARE(changed.size(), 0);
}

void TestTleEditor::tleRefreshOfEmptyListGivesEmptyField()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    paste(fieldOf(frame), QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    list->setTLEs({});
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), QString()); // not "\n\n"
}

void TestTleEditor::tleRefreshHidesBadRecordButKeepsIt()
{
    std::vector<ParameterListTLEs::TLE> sets = setsOf(readData(QStringLiteral("one-bad-set.tle")));
    QCOMPARE(sets.size(), std::size_t(3));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(sets);
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    emit frame.sig_update();
    QCOMPARE(answerer.seen().size(), 0);
    const QString field = fieldOf(frame)->toPlainText();
    QVERIFY(field.contains(QStringLiteral("BRITE-TORONTO")));
    QVERIFY(!field.contains(QStringLiteral("FLOCK 2K-33")));
    QVERIFY(field.contains(QStringLiteral("IRIDIUM 73 [-]")));
    QVERIFY(field.endsWith(QStringLiteral("\n\n")));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"BRITE-TORONTO", "FLOCK 2K-33", "IRIDIUM 73 [-]"}));
}

void TestTleEditor::tlePastedCatalogStored()
{
    const QByteArray catalog = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    paste(fieldOf(frame), QString::fromUtf8(catalog));
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(fieldOf(frame)->toPlainText(), normalForm(catalog));
    const std::vector<ParameterListTLEs::TLE> stored = list->getTLEs();
    const std::vector<ParameterListTLEs::TLE> expected = setsOf(catalog);
    QCOMPARE(stored.size(), expected.size());
    for (std::size_t i = 0; i < stored.size(); ++i) {
        QCOMPARE(stored[i].line0, expected[i].line0);
        QCOMPARE(stored[i].line1, expected[i].line1);
        QCOMPARE(stored[i].line2, expected[i].line2);
    }
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
    QCOMPARE(changed.size(), 0); // TLE edits do not mark the configuration
}

void TestTleEditor::tlePastedCatalogWithBadSetKeepsGoodOnes()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    paste(fieldOf(frame), QString::fromUtf8(readData(QStringLiteral("one-bad-set.tle"))));
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    checkWarning(answerer.seen().at(0),
                 QStringLiteral("Line #6. TLE is not valid. Line #1 is not TLE line.\n"
                                "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"BRITE-TORONTO", "IRIDIUM 73 [-]"}));
    const std::vector<ParameterListTLEs::TLE> all = setsOf(readData(QStringLiteral("one-bad-set.tle")));
    QCOMPARE(fieldOf(frame)->toPlainText(), fieldTextOf({all[0], all[2]}));
    const QString field = fieldOf(frame)->toPlainText();
    QVERIFY(field.startsWith(QStringLiteral("BRITE-TORONTO\n1 40020U")));
    QVERIFY(field.contains(QStringLiteral("192019\n\nIRIDIUM 73 [-]\n1 25344U")));
    QVERIFY(field.endsWith(QStringLiteral("38760\n\n")));
    QVERIFY(!field.contains(QStringLiteral("FLOCK")));
    QCOMPARE(changed.size(), 0);
}

void TestTleEditor::tleLineOfWrongLengthReported()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    QStringList changedLines = lines;
    changedLines[9] += QLatin1Char(' '); // third set, first data line: 70 bytes
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    paste(fieldOf(frame), changedLines.join('\n'));
    QVERIFY(answerer.allAnswered());
    checkWarning(answerer.seen().at(0),
                 QStringLiteral("TextLine #9 is not TLE line.\n"
                                "TextLine #11 is not TLE line.\n"
                                "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "JPSS-1"}));
}

void TestTleEditor::tleOneTypedCharacterVanishes()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    QTest::keyClick(fieldOf(frame), Qt::Key_A);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QCOMPARE(fieldOf(frame)->textCursor().position(), 0);
    // The text handler saw "a" and woke Clear; the rewrite to "\n\n" was silent.
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestTleEditor::tleIncompleteSetDependsOnLastLineFeed()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    const QString incomplete = lines[0] + QLatin1Char('\n') + lines[1];

    {
        Tree tree;
        ParameterListTLEs *list = tree.tles();
        ParamSimple frame(list, nullptr);
        ModalAnswerer answerer;
        answerer.pressButton(QMessageBox::Ok);
        paste(fieldOf(frame), incomplete + QLatin1Char('\n'));
        QVERIFY(answerer.allAnswered());
        checkWarning(answerer.seen().at(0), QStringLiteral("TextLine #2 is not TLE line.\n"
                                                           "0 problem-free TLEs were parsed.\n"));
        QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
    }
    {
        Tree tree;
        ParameterListTLEs *list = tree.tles();
        ParamSimple frame(list, nullptr);
        ModalAnswerer answerer;
        paste(fieldOf(frame), incomplete);
        QCOMPARE(answerer.seen().size(), 0);
        QCOMPARE(fieldOf(frame)->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
    }
}

void TestTleEditor::tleCharacterTypedIntoDataLine()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    QCOMPARE(list->getTLEs().size(), std::size_t(3));

    QTextCursor cursor(field->document()->findBlockByNumber(5)); // JPSS-1, first data line
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 10);
    field->setTextCursor(cursor);
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    QTest::keyClick(field, Qt::Key_7);
    QVERIFY(answerer.allAnswered());
    checkWarning(answerer.seen().at(0), QStringLiteral("TextLine #5 is not TLE line.\n"
                                                       "TextLine #7 is not TLE line.\n"
                                                       "2 problem-free TLEs were parsed.\n"));
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "FLOCK 2E'-6"}));
    const std::vector<ParameterListTLEs::TLE> all = setsOf(readData(QStringLiteral("three-sets.tle")));
    QCOMPARE(field->toPlainText(), fieldTextOf({all[0], all[2]}));
    QCOMPARE(field->document()->blockCount(), 9);
    QVERIFY(!field->toPlainText().contains(QStringLiteral("JPSS-1")));
    QVERIFY(!field->toPlainText().contains(QStringLiteral("43013")));
    QCOMPARE(field->textCursor().position(), 0);
}

void TestTleEditor::tleCursorAtStartAfterRewrite()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    emit frame.sig_update();
    field->moveCursor(QTextCursor::End);
    QTest::keyClick(field, Qt::Key_Return); // an empty line more: no problem
    QCOMPARE(field->textCursor().position(), 0);
    field->moveCursor(QTextCursor::End);
    emit frame.sig_update();
    QCOMPARE(field->textCursor().position(), 0);
    field->moveCursor(QTextCursor::End);
    paste(field, QStringLiteral("\n"));
    QCOMPARE(field->textCursor().position(), 0);
    // As after setPlainText, nothing is left to undo.
    QVERIFY(!field->document()->isUndoAvailable());
    QVERIFY(!field->document()->isModified());
    QCOMPARE(field->toPlainText(), normalForm(readData(QStringLiteral("three-sets.tle"))));
}

void TestTleEditor::tleCarriageReturnsPass()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("iss-crlf.tle")));
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1); // the file dialog only
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Open TLEs File"));
    QCOMPARE(answerer.seen().at(0).nameFilters,
             QStringList({"Text file (*.txt)", "All files (*)"}));
    const std::vector<ParameterListTLEs::TLE> sets = list->getTLEs();
    QCOMPARE(sets.size(), std::size_t(3));
    QCOMPARE(sets[0].line0, std::string("ISS (ZARYA)             "));
    QCOMPARE(sets[0].line1.size(), std::size_t(69));
    // The file has no empty lines between its sets; the field gets them.
    QStringList lines = QString::fromLatin1(readData(QStringLiteral("iss-crlf.tle")))
                            .remove(QLatin1Char('\r'))
                            .split('\n');
    QCOMPARE(lines.size(), 10);
    lines.insert(6, QString());
    lines.insert(3, QString());
    QCOMPARE(fieldOf(frame)->toPlainText(), lines.join('\n') + QLatin1Char('\n'));
    QVERIFY(!fieldOf(frame)->toPlainText().contains(QLatin1Char('\r')));
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestTleEditor::tleSetWithoutName()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))).split('\n');
    const QString unnamed = lines[1] + QLatin1Char('\n') + lines[2];
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    paste(fieldOf(frame), unnamed);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(list->getTLEs().size(), std::size_t(1));
    QCOMPARE(list->getTLEs()[0].line0, std::string());
    QCOMPARE(fieldOf(frame)->toPlainText(), unnamed + QStringLiteral("\n\n"));
    emit frame.sig_update();
    QCOMPARE(fieldOf(frame)->toPlainText(), unnamed + QStringLiteral("\n\n"));
}

void TestTleEditor::tleLoadAppendsAndRepeats()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("repeated-set.tle")));
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(namesOf(list->getTLEs()), QStringList({"FLOCK 2P-1", "JPSS-1", "FLOCK 2E'-6", "JPSS-1"}));
    QCOMPARE(fieldOf(frame)->toPlainText(),
             normalForm(readData(QStringLiteral("three-sets.tle")) + "\n"
                        + readData(QStringLiteral("repeated-set.tle"))));
    QVERIFY(buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestTleEditor::tleLoadWithoutGoodSetWarnsOnce_data()
{
    QTest::addColumn<bool>("earlierSets");
    QTest::addColumn<QString>("warning");
    QTest::newRow("into empty field") << false
                                      << "Line #2. TLE is not valid. Line #2 is not TLE line.\n"
                                         "0 problem-free TLEs were parsed.\n";
    QTest::newRow("behind earlier sets") << true
                                         << "Line #16. TLE is not valid. Line #2 is not TLE line.\n"
                                            "3 problem-free TLEs were parsed.\n";
}

void TestTleEditor::tleLoadWithoutGoodSetWarnsOnce()
{
    QFETCH(bool, earlierSets);
    QFETCH(QString, warning);

    const QByteArray earlier = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    if (earlierSets)
        list->setTLEs(setsOf(earlier));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    ModalAnswerer answerer;
    answerer.chooseFile(dataFile(QStringLiteral("no-good-set.tle")));
    answerer.pressButton(QMessageBox::Ok);
    answerer.pressButton(QMessageBox::Ok); // spare: a second box would be a fault
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(answerer.pending(), 1);
    checkWarning(answerer.seen().at(1), warning);
    QCOMPARE(fieldOf(frame)->toPlainText(), earlierSets ? normalForm(earlier) : QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(earlierSets ? 3 : 0));
}

void TestTleEditor::tleLoadCancelledOrEmptyChangesNothing_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("cancelled dialog") << true;
    QTest::newRow("empty file") << false;
}

void TestTleEditor::tleLoadCancelledOrEmptyChangesNothing()
{
    QFETCH(bool, cancel);

    const QString empty = _dir.path() + QStringLiteral("/empty.tle");
    QFile file(empty);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(readData(QStringLiteral("three-sets.tle"))));
    ParamSimple frame(list, nullptr);
    emit frame.sig_update();
    const QString before = fieldOf(frame)->toPlainText();
    ModalAnswerer answerer;
    if (cancel)
        answerer.cancel();
    else
        answerer.chooseFile(empty);
    buttonOf(&frame, QStringLiteral("Load from file.."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1); // no box
    QCOMPARE(fieldOf(frame)->toPlainText(), before);
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestTleEditor::tleLoadDecodesLatin1OrUtf8UpToZeroByte()
{
    const QStringList lines = QString::fromUtf8(readData(QStringLiteral("repeated-set.tle"))).split('\n');
    QByteArray content = QByteArray(u8"SAT ü\n") + lines[1].toUtf8() + '\n' + lines[2].toUtf8() + '\n';
    content += QByteArray("\n\0", 2);
    content += readData(QStringLiteral("three-sets.tle")); // behind the zero byte: never read
    const QString path = _dir.path() + QStringLiteral("/named.tle");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    ModalAnswerer answerer;
    answerer.chooseFile(path);
    answerer.chooseFile(path);
    QPushButton *load = buttonOf(&frame, QStringLiteral("Load from file.."));
    load->click(); // into an empty field: Latin-1
    QCOMPARE(namesOf(list->getTLEs()), QStringList({QString::fromLatin1(u8"SAT ü")}));
    load->click(); // behind earlier sets: UTF-8
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(namesOf(list->getTLEs()),
             QStringList({QString::fromLatin1(u8"SAT ü"), QString::fromUtf8(u8"SAT ü")}));
}

void TestTleEditor::tleClearWarnsExactlyOnce()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    QPushButton *clear = buttonOf(&frame, QStringLiteral("Clear"));
    QVERIFY(clear->isEnabled());
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);

    for (int use = 0; use < 2; ++use) {
        ModalAnswerer answerer;
        answerer.pressButton(QMessageBox::Ok);
        answerer.pressButton(QMessageBox::Ok); // spare: a second box would be a fault
        clear->setEnabled(true);
        clear->click();
        QCOMPARE(answerer.seen().size(), 1);
        QCOMPARE(answerer.pending(), 1);
        checkWarning(answerer.seen().at(0), QStringLiteral("TLEs text is empty.\n"));
        QCOMPARE(field->toPlainText(), QStringLiteral("\n\n"));
        QCOMPARE(list->getTLEs().size(), std::size_t(0));
        QVERIFY(!clear->isEnabled());
    }
    QCOMPARE(changed.size(), 0);
}

void TestTleEditor::tleRemovingAllTextWarns()
{
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    ParamSimple frame(list, nullptr);
    QPlainTextEdit *field = fieldOf(frame);
    paste(field, QString::fromUtf8(readData(QStringLiteral("three-sets.tle"))));
    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    checkWarning(answerer.seen().at(0), QStringLiteral("TLEs text is empty.\n"));
    QCOMPARE(field->toPlainText(), QStringLiteral("\n\n"));
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QVERIFY(!buttonOf(&frame, QStringLiteral("Clear"))->isEnabled());
}

void TestTleEditor::tleTwoEditorsDoNotTellEachOther()
{
    const QByteArray catalog = readData(QStringLiteral("three-sets.tle"));
    Tree tree;
    ParameterListTLEs *list = tree.tles();
    list->setTLEs(setsOf(catalog));
    ParamSimple own(list, nullptr);
    ParamSimple parents(list, nullptr);
    emit own.sig_update();
    emit parents.sig_update();

    ModalAnswerer answerer;
    answerer.pressButton(QMessageBox::Ok);
    buttonOf(&own, QStringLiteral("Clear"))->setEnabled(true);
    buttonOf(&own, QStringLiteral("Clear"))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(list->getTLEs().size(), std::size_t(0));
    QCOMPARE(fieldOf(parents)->toPlainText(), normalForm(catalog)); // still the old text

    QPlainTextEdit *other = fieldOf(parents);
    other->moveCursor(QTextCursor::End);
    QTest::keyClick(other, Qt::Key_Return); // its next apply writes what it shows
    QCOMPARE(list->getTLEs().size(), std::size_t(3));
    QCOMPARE(fieldOf(own)->toPlainText(), QStringLiteral("\n\n"));
}

QTEST_MAIN(TestTleEditor)
#include "tst_tleeditor.moc"
