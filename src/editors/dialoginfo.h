// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QString;
class QTextEdit;

// The documentation of one parameter, with an optional link to more.
class DialogInfo : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(DialogInfo)

public:
    // Runs the dialog modally and returns what exec() returns. The dialog is
    // not deleted: it stays a hidden child of parent.
    static int create(const QString &title, const QString &text, const QString &url, QWidget *parent);

    DialogInfo(const QString &title, const QString &text, const QString &url, QWidget *parent);
    ~DialogInfo() override = default;

private:
    void _setup();
    void _init(const QString &title, const QString &text, const QString &url);
    void _connect();

    QTextEdit *_textEdit;
    QLabel *_labelLink;
    QPushButton *_buttonOk;
};
