// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QAction;
class QPushButton;

// The row of buttons under the pages; it plays the role of a toolbar.
class Control : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(Control)

public:
    explicit Control(QWidget *parent);

    // Each button triggers its action, so a click runs the menu entry's slot.
    void connectAct(QAction *newAct, QAction *openAct, QAction *saveAct, QAction *saveAsAct);

public slots:
    // New and Open stay enabled at all times.
    void sl_configOpened(bool isOpened);

private:
    void _setup();
    void _init();

    QPushButton *_buttonNew;
    QPushButton *_buttonOpen;
    QPushButton *_buttonSave;
    QPushButton *_buttonSaveAs;
};
