// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Answers and records the boxes and file dialogs of the main window, and
// rejects any modal widget that nobody expected, so that a wrong
// expectation fails the case instead of hanging it.

#include "app/manager.h"
#include "modalanswerer.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QtTest>

namespace hostile {

class Boxes : public ModalAnswerer
{
public:
    // Types the whole path into the dialog's name field and accepts, so the
    // dialog returns exactly this path wherever it stands.
    void choose(QString const &path)
    {
        handleWith([path](QWidget *widget) { acceptFileDialog(widget, path); });
    }
};

#define HOSTILE_VERIFY_BOXES_DONE(boxes) VERIFY_MODALS_DONE(boxes)

// The window's action with this text, such as "&Save".
inline QAction *action(QMainWindow const *window, QString const &text)
{
    for (QAction *candidate : window->findChildren<QAction *>()) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

inline QString caption(QString const &path)
{
    return path + QStringLiteral(" - Orvex Config Manager");
}

// A start whose schema can't be opened: one "Open error" box saying so, and a
// window without a schema.
inline void verifyStartWithUnopenedSchema()
{
    Boxes boxes;
    boxes.pressButton(QMessageBox::Ok);
    Manager manager;
    HOSTILE_VERIFY_BOXES_DONE(boxes);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(boxes.seen().at(0).title, QStringLiteral("Open error"));
    QCOMPARE(boxes.seen().at(0).text, QStringLiteral("XSD schema is not opened\n"));
    QVERIFY(!manager.hasSchema());
}

} // namespace hostile
