// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The command line of the program: its first argument is a configuration
// file to open at start, further ones are ignored. The arguments are fixed
// when QApplication is built, so each case runs as a program of its own:
//   tst_manager_cmdline [no-argument|older-file|empty-argument|missing-file] [QtTest options]

#include "managertestkit.h"

#include "app/manager.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>
#include <vector>

using namespace ManagerTest;

namespace {

const char *const kExample = ORVEX_SOURCE_DATA_DIR "/conf/example.conf";

// The visible windows other than the box; to be called while the box is up.
QStringList _otherVisibleWindows(QWidget *box)
{
    QStringList windows;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top != box && top->isVisible())
            windows << QString::fromLatin1(top->metaObject()->className());
    }
    return windows;
}

// Presses Ok on the next box, noting which windows were shown beside it.
void _okNoting(Modals &modals, QStringList &shownWithBox)
{
    modals.handleWith([&shownWithBox](QWidget *box) {
        shownWithBox = _otherVisibleWindows(box);
        static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click();
    });
}

} // namespace

class TestStartWithoutArgument : public QObject
{
    Q_OBJECT

private slots:
    void startsClosedWithoutLoad()
    {
        QCOMPARE(QCoreApplication::arguments().size(), 1);
        Modals modals;
        auto manager = makeManager();
        Window window(manager.get());
        VERIFY_MODALS_DONE(modals);
        QVERIFY(modals.seen().isEmpty());
        QVERIFY(manager->getConfigPath().isNull());
        QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
        QVERIFY2(
            window.wrongEnabledState(false).isEmpty(), qPrintable(window.wrongEnabledState(false)));
    }
};

class TestStartWithOlderFile : public QObject
{
    Q_OBJECT

public:
    explicit TestStartWithOlderFile(const QString &path) : _path(path) { }

private slots:
    void olderFileOfFirstArgumentIsUpdatedBeforeWindowShows()
    {
        QCOMPARE(QCoreApplication::arguments().value(1), _path);
        const QString oldVersion
            = valueInFile(QString::fromLatin1(kExample), QStringLiteral("Version"));
        const QString service
            = valueInFile(QString::fromLatin1(kExample), QStringLiteral("Service"));
        QCOMPARE(valueInFile(_path, QStringLiteral("Version")), oldVersion);

        Modals modals;
        QStringList shownWithBox;
        _okNoting(modals, shownWithBox);
        auto manager = makeManager();
        Window window(manager.get());

        VERIFY_MODALS_DONE(modals);
        const QString newest = QString::fromStdString(manager->getNewestVersion().getString());
        QVERIFY(Version(oldVersion.toStdString()) < manager->getNewestVersion());
        QCOMPARE(modals.seen().size(), 1);
        QCOMPARE(modals.seen().at(0).title, QStringLiteral("Warning!"));
        QCOMPARE(modals.seen().at(0).text,
            QStringLiteral("The current working version of the user config is %1.\n"
                           "You are loaading an oldest version %2.\n"
                           "The manager try to update your config file.")
                .arg(newest, oldVersion));
        QVERIFY2(shownWithBox.isEmpty(), qPrintable(shownWithBox.join(QLatin1Char(' '))));
        QVERIFY(!manager->isVisible());

        QCOMPARE(valueInFile(_path, QStringLiteral("Version")), newest);
        QCOMPARE(valueInFile(_path, QStringLiteral("Service")), service);
        QCOMPARE(manager->getConfigPath(), _path);
        QCOMPARE(manager->windowTitle(), caption(_path, false));
        QVERIFY(manager->isSaved());
        QVERIFY2(
            window.wrongEnabledState(true).isEmpty(), qPrintable(window.wrongEnabledState(true)));
        QCOMPARE(window.infoText(),
            QStringLiteral("Config version: %1\tService: %2").arg(newest, service));
        QVERIFY(window.currentPage());
    }

    void updatedFileOpensWithoutBoxAndFurtherArgumentsAreIgnored()
    {
        QCOMPARE(QCoreApplication::arguments().size(), 3);
        const QByteArray updated = readAll(_path);
        Modals modals;
        auto manager = makeManager();
        VERIFY_MODALS_DONE(modals);
        QVERIFY(modals.seen().isEmpty());
        QCOMPARE(manager->getConfigPath(), _path);
        QCOMPARE(manager->windowTitle(), caption(_path, false));
        QCOMPARE(readAll(_path), updated);
    }

private:
    QString _path;
};

class TestStartWithEmptyArgument : public QObject
{
    Q_OBJECT

private slots:
    void emptyFirstArgumentStartsClosedWithoutLoad()
    {
        QCOMPARE(QCoreApplication::arguments().size(), 2);
        QCOMPARE(QCoreApplication::arguments().at(1), QString());
        Modals modals;
        auto manager = makeManager();
        Window window(manager.get());
        VERIFY_MODALS_DONE(modals);
        QVERIFY(modals.seen().isEmpty());
        QVERIFY(manager->getConfigPath().isEmpty());
        QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
        QVERIFY2(
            window.wrongEnabledState(false).isEmpty(), qPrintable(window.wrongEnabledState(false)));
        QCOMPARE(window.infoText(), QString());
    }
};

class TestStartWithMissingFile : public QObject
{
    Q_OBJECT

public:
    explicit TestStartWithMissingFile(const QString &path) : _path(path) { }

private slots:
    void missingFileIsReportedAndWindowStartsClosed()
    {
        QCOMPARE(QCoreApplication::arguments().value(1), _path);
        QVERIFY(!QFile::exists(_path));
        Modals modals;
        QStringList shownWithBox;
        _okNoting(modals, shownWithBox);
        auto manager = makeManager();
        Window window(manager.get());

        VERIFY_MODALS_DONE(modals);
        QCOMPARE(modals.seen().size(), 1);
        QCOMPARE(modals.seen().at(0).title, QStringLiteral("Error!"));
        QCOMPARE(modals.seen().at(0).icon, QMessageBox::Warning);
        QCOMPARE(modals.seen().at(0).text, QStringLiteral("XML is not opened\n"));
        QVERIFY2(shownWithBox.isEmpty(), qPrintable(shownWithBox.join(QLatin1Char(' '))));
        QVERIFY(manager->getConfigPath().isNull());
        QCOMPARE(manager->windowTitle(), QString::fromLatin1(kTitle));
        QVERIFY2(
            window.wrongEnabledState(false).isEmpty(), qPrintable(window.wrongEnabledState(false)));
    }

private:
    QString _path;
};

int main(int argc, char *argv[])
{
    const bool named = argc > 1 && argv[1][0] != '-';
    const QByteArray caseName = named ? QByteArray(argv[1]) : QByteArray("no-argument");
    std::vector<char *> testArgs = { argv[0] };
    for (int i = named ? 2 : 1; i < argc; ++i)
        testArgs.push_back(argv[i]);

    // Made before the application: its path goes into the application's arguments.
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    const QByteArray example = QFile::encodeName(dir.filePath(QStringLiteral("example.conf")));
    const QByteArray missing = QFile::encodeName(dir.filePath(QStringLiteral("missing.conf")));
    std::vector<QByteArray> appArgs = { QByteArray(argv[0]) };
    if (caseName == "older-file") {
        if (!QFile::copy(QString::fromLatin1(kExample), QFile::decodeName(example)))
            return 1;
        QFile::setPermissions(QFile::decodeName(example), QFile::ReadOwner | QFile::WriteOwner);
        appArgs.insert(appArgs.end(), { example, QByteArray("extra-argument") });
    } else if (caseName == "empty-argument") {
        appArgs.push_back(QByteArray(""));
    } else if (caseName == "missing-file") {
        appArgs.insert(appArgs.end(), { missing, QByteArray("extra-argument") });
    } else if (caseName != "no-argument") {
        fprintf(stderr, "unknown case %s\n", caseName.constData());
        return 1;
    }
    std::vector<char *> appArgv;
    for (QByteArray &arg : appArgs)
        appArgv.push_back(arg.data());
    appArgv.push_back(nullptr);
    int appArgc = int(appArgs.size());

    QApplication application(appArgc, appArgv.data());
    application.setAttribute(Qt::AA_Use96Dpi, true);
    QApplication::setQuitOnLastWindowClosed(false);
    QTEST_SET_MAIN_SOURCE_PATH

    std::unique_ptr<QObject> test;
    if (caseName == "older-file")
        test = std::make_unique<TestStartWithOlderFile>(QFile::decodeName(example));
    else if (caseName == "empty-argument")
        test = std::make_unique<TestStartWithEmptyArgument>();
    else if (caseName == "missing-file")
        test = std::make_unique<TestStartWithMissingFile>(QFile::decodeName(missing));
    else
        test = std::make_unique<TestStartWithoutArgument>();
    return QTest::qExec(test.get(), int(testArgs.size()), testArgs.data());
}

#include "tst_manager_cmdline.moc"
