// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QWidget>
#include <QtTest>

// Types text the way a keyboard does, one key event per character. QTest's
// keyClicks knows no key codes beyond ASCII, so other characters go as text
// on an unknown key.
inline void typeText(QWidget *widget, const QString &text)
{
    for (const QChar ch : text) {
        if (ch.unicode() < 0x80)
            QTest::keyClick(widget, ch.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
    }
}
