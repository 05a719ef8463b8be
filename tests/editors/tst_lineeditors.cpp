// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The line editors: validated and plain text, passwords, paths with their
// browse button.

#include "editorfixture.h"

#include <QtTest>

using namespace fixture;

class TestLineEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void validatedFieldsRefuseImpossibleKeystrokes_data();
    void validatedFieldsRefuseImpossibleKeystrokes();
    void emptyingValidatedFieldStoresEmptyInRed_data();
    void emptyingValidatedFieldStoresEmptyInRed();
    void freshValidatedFieldHasNoColour();
    void loadedTextSkipsValidatorButIsColoured();
    void plainEditorRefusesNothing();
    void lineEditsShowLabelAboveEdit();
    void passwordIsHiddenButStoredAsTyped();
    void nonAsciiValueRoundTrips();
    void loadWithSameValueFiresNothing();
    void loadWithNewValueWritesAndReports();
    void browseCancelLeavesValue_data();
    void browseCancelLeavesValue();
    void browseOpensAtCurrentValue_data();
    void browseOpensAtCurrentValue();
    void browseToMissingPathFallsBack_data();
    void browseToMissingPathFallsBack();
    void browsePickReportsTwiceOrOnce_data();
    void browsePickReportsTwiceOrOnce();

private:
    QTemporaryDir _dir;
};

void TestLineEditors::initTestCase()
{
    // Numbers in the expected texts are written with a dot.
    QLocale::setDefault(QLocale::c());
    QVERIFY(_dir.isValid());
}

void TestLineEditors::validatedFieldsRefuseImpossibleKeystrokes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("colour");

    const int fit = ParameterSimple::HeaderKeys;
    const int filter = ParameterSimple::FilterKeys;
    const int mail = ParameterSimple::Email;
    QTest::newRow("fit key of eight") << fit << "ABCD1234" << "ABCD1234" << black;
    QTest::newRow("fit key, ninth refused") << fit << "ABCD12345" << "ABCD1234" << black;
    QTest::newRow("fit key in small letters") << fit << "abc_-()" << "abc_-()" << black;
    QTest::newRow("fit key, blank refused") << fit << "AB CD" << "ABCD" << black;
    QTest::newRow("fit key, dot refused") << fit << "A.B" << "AB" << black;
    QTest::newRow("fit key, at sign refused") << fit << "A@B" << "AB" << black;
    QTest::newRow("filter key of 25") << filter << QString(25, QLatin1Char('k'))
                                      << QString(25, QLatin1Char('k')) << black;
    QTest::newRow("filter key, 26th refused") << filter << QString(26, QLatin1Char('K'))
                                              << QString(25, QLatin1Char('K')) << black;
    QTest::newRow("filter key, blank refused") << filter << "ab cd" << "abcd" << black;
    QTest::newRow("filter key, star refused") << filter << "a*b(1)" << "ab(1)" << black;
    QTest::newRow("filter key, non-ASCII refused") << filter << QString::fromUtf8("aäb") << "ab" << black;
    QTest::newRow("address complete") << mail << "me.you@host.org" << "me.you@host.org" << black;
    QTest::newRow("address ending at the at sign") << mail << "me@" << "me@" << red;
    QTest::newRow("address without at sign") << mail << "me" << "me" << red;
    QTest::newRow("address, blank refused") << mail << "me @x" << "me@x" << black;
    QTest::newRow("address, second at sign refused") << mail << "a@b@c" << "a@bc" << black;
    QTest::newRow("address, plus refused") << mail << "a+b@c" << "ab@c" << black;
}

void TestLineEditors::validatedFieldsRefuseImpossibleKeystrokes()
{
    QFETCH(int, type);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QString, colour);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type));
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QVERIFY(edit);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    typeText(edit, typed);
    QCOMPARE(edit->text(), shown);
    QCOMPARE(edit->styleSheet(), colour);
    QCOMPARE(QString::fromStdString(p->getValue()), shown);
    // One report per keystroke taken; a refused one fires nothing.
    QCOMPARE(changed.size(), shown.size());
}

void TestLineEditors::emptyingValidatedFieldStoresEmptyInRed_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");

    QTest::newRow("address") << int(ParameterSimple::Email) << "me@host";
    QTest::newRow("fit key") << int(ParameterSimple::HeaderKeys) << "NAXIS1";
    QTest::newRow("filter key") << int(ParameterSimple::FilterKeys) << "camera_2";
}

void TestLineEditors::emptyingValidatedFieldStoresEmptyInRed()
{
    QFETCH(int, type);
    QFETCH(QString, value);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), value.toStdString());
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), value);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QCOMPARE(edit->text(), QString());
    QCOMPARE(p->getValue(), std::string());
    QCOMPARE(edit->styleSheet(), red);
    QCOMPARE(changed.size(), 1);
}

void TestLineEditors::freshValidatedFieldHasNoColour()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::HeaderKeys, "BAD KEY!");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), QStringLiteral("BAD KEY!"));
    QCOMPARE(edit->styleSheet(), QString());
    emit frame.sig_update(); // same text: nothing fires, nothing is coloured
    QCOMPARE(edit->styleSheet(), QString());
}

void TestLineEditors::loadedTextSkipsValidatorButIsColoured()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::HeaderKeys, "GOOD");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    p->forceValue("TOO LONG KEY");
    emit frame.sig_update();
    QCOMPARE(edit->text(), QStringLiteral("TOO LONG KEY"));
    QCOMPARE(edit->styleSheet(), red);
    QCOMPARE(p->getValue(), std::string("TOO LONG KEY"));
    QCOMPARE(changed.size(), 1);

    p->forceValue("FINE");
    emit frame.sig_update();
    QCOMPARE(edit->styleSheet(), black);
    QCOMPARE(changed.size(), 2);
}

void TestLineEditors::plainEditorRefusesNothing()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::String);
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(patternOf(edit), QString());
    QVERIFY(caseInsensitive(edit));
    const QString typed = QString::fromUtf8(" .@#*+ab CD/\\ üß €");
    typeText(edit, typed);
    QCOMPARE(edit->text(), typed);
    QCOMPARE(QString::fromStdString(p->getValue()), typed);
    QCOMPARE(edit->styleSheet(), QString()); // the plain editor is never coloured
}

void TestLineEditors::lineEditsShowLabelAboveEdit()
{
    Tree tree;
    ParamSimple frame(tree.simple(ParameterSimple::Filepath, std::string(), ParameterSimple::Fasets(),
                                  visual("Log file", 1)),
                      nullptr);
    QGridLayout *grid = controlGrid(frame);
    auto *label = frame.findChild<QLabel *>();
    QCOMPARE(label->text(), QStringLiteral("Log file"));
    QCOMPARE(cellOf(grid, label), QList<int>({0, 0, 1, 1}));
    QCOMPARE(cellOf(grid, lineEditOf(frame)), QList<int>({1, 0, 1, 1}));
    QPushButton *browse = buttonOf(&frame, QStringLiteral("..."));
    QVERIFY(browse);
    QCOMPARE(cellOf(grid, browse), QList<int>({1, 1, 1, 1}));
    QCOMPARE(browse->maximumWidth(), 20);
    QVERIFY(label->font().bold());
    QVERIFY(!lineEditOf(frame)->font().bold()); // the edit keeps the default font
}

void TestLineEditors::passwordIsHiddenButStoredAsTyped()
{
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::Password, "old");
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->echoMode(), QLineEdit::Password);
    QCOMPARE(edit->validator(), nullptr);
    QCOMPARE(edit->text(), QStringLiteral("old"));
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    QTest::keyClicks(edit, QStringLiteral(" s3cr#t"));
    QCOMPARE(p->getValue(), std::string("old s3cr#t"));
    QCOMPARE(changed.size(), 7);
}

void TestLineEditors::nonAsciiValueRoundTrips()
{
    const std::string value = u8"Zürich – 日本 ß";
    Tree tree;
    ParameterSimple *p = tree.simple(ParameterSimple::String, value);
    ParamSimple frame(p, nullptr);
    QLineEdit *edit = lineEditOf(frame);
    QCOMPARE(edit->text(), QString::fromUtf8(value.c_str()));
    typeText(edit, QString::fromUtf8("é"));
    QCOMPARE(p->getValue(), value + u8"é");
    emit frame.sig_update();
    QCOMPARE(edit->text(), QString::fromUtf8((value + u8"é").c_str()));
}

void TestLineEditors::loadWithSameValueFiresNothing()
{
    for (Type type : {ParameterSimple::String, ParameterSimple::Email, ParameterSimple::Dirpath,
                      ParameterSimple::Password, ParameterSimple::FilterKeys}) {
        Tree tree;
        ParameterSimple *p = tree.simple(type, "same");
        ParamSimple frame(p, nullptr);
        QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
        emit frame.sig_update();
        emit frame.sig_update();
        QCOMPARE(changed.size(), 0);
        QCOMPARE(lineEditOf(frame)->styleSheet(), QString());
    }
}

void TestLineEditors::loadWithNewValueWritesAndReports()
{
    Tree tree;
    LooseParameter *p = tree.simple(ParameterSimple::String, "before");
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    p->forceValue("after");
    emit frame.sig_update();
    QCOMPARE(lineEditOf(frame)->text(), QStringLiteral("after"));
    QCOMPARE(p->getValue(), std::string("after"));
    QCOMPARE(changed.size(), 1);
}

void TestLineEditors::browseCancelLeavesValue_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("directory") << int(ParameterSimple::Dirpath);
    QTest::newRow("file") << int(ParameterSimple::Filepath);
}

void TestLineEditors::browseCancelLeavesValue()
{
    QFETCH(int, type);

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), _dir.path().toStdString(), ParameterSimple::Fasets(),
                                     visual("Data place"));
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().at(0).className, QStringLiteral("QFileDialog"));
    QCOMPARE(answerer.seen().at(0).title, QStringLiteral("Data place"));
    QCOMPARE(answerer.seen().at(0).text, QString());
    QCOMPARE(p->getValue(), _dir.path().toStdString());
    QCOMPARE(lineEditOf(frame)->text(), _dir.path());
    QCOMPARE(changed.size(), 0);
}

void TestLineEditors::browseOpensAtCurrentValue_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("filters");
    QTest::newRow("directory") << int(ParameterSimple::Dirpath) << QStringList();
    QTest::newRow("file") << int(ParameterSimple::Filepath) << QStringList({"All files (*)"});
}

void TestLineEditors::browseOpensAtCurrentValue()
{
    QFETCH(int, type);
    QFETCH(QStringList, filters);

    QDir(_dir.path()).mkpath(QStringLiteral("start/inner"));
    const QString start = _dir.path() + QStringLiteral("/start");
    QFile file(start + QStringLiteral("/shown.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const QString value = type == ParameterSimple::Dirpath ? start : file.fileName();

    Tree tree;
    ParamSimple frame(tree.simple(Type(type), value.toStdString()), nullptr);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().at(0).directory, start);
    if (!filters.isEmpty())
        QCOMPARE(answerer.seen().at(0).nameFilters, filters);
}

void TestLineEditors::browseToMissingPathFallsBack_data()
{
    browseCancelLeavesValue_data();
}

void TestLineEditors::browseToMissingPathFallsBack()
{
    QFETCH(int, type);

    const QString missing = _dir.path() + QStringLiteral("/no/such/place");
    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), missing.toStdString());
    ParamSimple frame(p, nullptr);
    ModalAnswerer answerer;
    answerer.cancel();
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(answerer.seen().size(), 1);
    const QString opened = answerer.seen().at(0).directory;
    QVERIFY2(opened != missing && QDir(opened).exists(), qPrintable(opened));
    QCOMPARE(p->getValue(), missing.toStdString());
}

void TestLineEditors::browsePickReportsTwiceOrOnce_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("samePath");
    QTest::addColumn<int>("reports");

    QTest::newRow("new directory") << int(ParameterSimple::Dirpath) << false << 2;
    QTest::newRow("same directory") << int(ParameterSimple::Dirpath) << true << 1;
    QTest::newRow("new file") << int(ParameterSimple::Filepath) << false << 2;
    QTest::newRow("same file") << int(ParameterSimple::Filepath) << true << 1;
}

void TestLineEditors::browsePickReportsTwiceOrOnce()
{
    QFETCH(int, type);
    QFETCH(bool, samePath);
    QFETCH(int, reports);

    const QString base = _dir.path() + QStringLiteral("/pick");
    QDir(_dir.path()).mkpath(QStringLiteral("pick/old"));
    QDir(_dir.path()).mkpath(QStringLiteral("pick/new"));
    for (const QString &name : {QStringLiteral("/old.txt"), QStringLiteral("/new.txt")}) {
        QFile file(base + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const bool dir = type == ParameterSimple::Dirpath;
    const QString oldPath = base + (dir ? QStringLiteral("/old") : QStringLiteral("/old.txt"));
    const QString newPath = base + (dir ? QStringLiteral("/new") : QStringLiteral("/new.txt"));
    const QString picked = samePath ? oldPath : newPath;

    Tree tree;
    ParameterSimple *p = tree.simple(Type(type), oldPath.toStdString());
    ParamSimple frame(p, nullptr);
    QSignalSpy changed(&frame, &ParamSimple::sig_chenged);
    ModalAnswerer answerer;
    answerer.chooseFile(picked);
    buttonOf(&frame, QStringLiteral("..."))->click();
    QVERIFY(answerer.allAnswered());
    QCOMPARE(lineEditOf(frame)->text(), picked);
    QCOMPARE(p->getValue(), picked.toStdString());
    QCOMPARE(changed.size(), reports);
}

QTEST_MAIN(TestLineEditors)
#include "tst_lineeditors.moc"
