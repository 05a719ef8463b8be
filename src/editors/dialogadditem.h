// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QObject>
#include <QString>

class QLineEdit;
class QPushButton;
class QRegularExpression;

// Asks for the text of one new list item, held to an entry rule.
class DialogAddItem : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(DialogAddItem)

public:
    // Runs the dialog modally; the entered text on Ok, an empty string
    // otherwise. The dialog stays a hidden child of parent.
    static QString create(const QRegularExpression &re, QWidget *parent);

    DialogAddItem(const QRegularExpression &re, QWidget *parent);
    ~DialogAddItem() override;

    // The text of the entry field as it stands.
    QString getValue();

private:
    void _setup();
    void _init(const QRegularExpression &re);
    void _connect();

    QLineEdit *_lineEdit;
    QPushButton *_buttonOk;
    QPushButton *_buttonCancel;
    QString _value;
};
