// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Converts the program's compiled-in icon to the PNG that desktop menus show,
// so that the two never differ.
#include <QCoreApplication>
#include <QImage>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: icon2png ICON PNG\n");
        return 2;
    }
    QImage const image(QString::fromLocal8Bit(argv[1]));
    if (image.isNull()) {
        std::fprintf(stderr, "icon2png: %s cannot be read\n", argv[1]);
        return 1;
    }
    if (!image.save(QString::fromLocal8Bit(argv[2]), "PNG")) {
        std::fprintf(stderr, "icon2png: %s cannot be written\n", argv[2]);
        return 1;
    }
    return 0;
}
