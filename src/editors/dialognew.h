// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <QVector>

class QLabel;
class QPushButton;
class QRadioButton;

// Asks which service a new configuration is for. The caller runs exec().
class DialogNew : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(DialogNew)

public:
    DialogNew(const QList<QString> &services, QWidget *parent);
    ~DialogNew() override = default;

    // Index of the first checked button in the order of the services given;
    // -1 when none is checked or there are no buttons.
    int getServiceIndex() const;

private:
    void _setup();
    void _init(const QList<QString> &services);
    void _connect();

    QVector<QRadioButton *> _radioButtons;
    QLabel *_label;
    QPushButton *_buttonOk;
    QPushButton *_buttonCancel;
};
