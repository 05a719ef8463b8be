// The floor of start-up: an empty main window of the same size and title,
// shown the same way, in a program that links Qt Widgets only.

#include "shownreport.h"

#include <QApplication>
#include <QMainWindow>

#include <clocale>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Orvex Config Manager"));
    window.setMinimumSize(900, 500);
    window.resize(900, 500);
    window.show();
    QCoreApplication::processEvents();
    reportShown();
    return 0;
}
