// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// A directory named as the configuration on the command line: the file
// dialogs never hand one back, so this is the way it reaches the window.
// The user sees the one box "Error!" with the engine's line, and the window
// comes up with nothing open.

#include "hostilewindow.h"

#include "app/manager.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <vector>

using namespace hostile;

class TestHostileCmdline : public QObject
{
    Q_OBJECT

public:
    explicit TestHostileCmdline(QString directory) : _directory(std::move(directory)) { }

private slots:
    void directoryAsConfigurationShowsErrorAndOpensNothing();

private:
    QString _directory;
};

void TestHostileCmdline::directoryAsConfigurationShowsErrorAndOpensNothing()
{
    QCOMPARE(QCoreApplication::arguments().value(1), _directory);
    Boxes boxes;
    boxes.pressButton(QMessageBox::Ok);
    Manager manager;

    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().at(0).icon, QMessageBox::Warning);
    QCOMPARE(boxes.seen().at(0).title, QStringLiteral("Error!"));
    QCOMPARE(boxes.seen().at(0).text, QStringLiteral("XML is not opened\n"));
    QVERIFY(manager.hasSchema());
    QVERIFY(manager.getConfigPath().isNull());
    QCOMPARE(manager.windowTitle(), QStringLiteral("Orvex Config Manager"));
    QVERIFY(!action(&manager, QStringLiteral("&Save"))->isEnabled());
    QVERIFY(QDir(_directory).isEmpty());
}

// The command line is fixed when the application is made, so the directory
// is made first and handed to QApplication as its one argument.
int main(int argc, char *argv[])
{
    QTemporaryDir directory;
    if (!directory.isValid())
        return 1;
    QByteArray path = directory.path().toLocal8Bit();
    std::vector<char *> arguments { argv[0], path.data(), nullptr };
    int count = 2;
    QApplication application(count, arguments.data());
    TestHostileCmdline test(directory.path());
    return QTest::qExec(&test, argc > 0 ? 1 : 0, argv);
}

#include "tst_hostile_cmdline.moc"
