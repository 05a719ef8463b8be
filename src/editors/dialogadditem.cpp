// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialogadditem.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

QString DialogAddItem::create(const QRegularExpression &re, QWidget *parent)
{
    // Not deleted: the dialog stays a hidden child of parent (pinned by
    // dialogStaysHiddenChildOfParent).
    auto *dialog = new DialogAddItem(re, parent);
    if (dialog->exec() == QDialog::Accepted)
        return dialog->getValue();
    return QString();
}

DialogAddItem::DialogAddItem(const QRegularExpression &re, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint)
{
    _setup();
    _init(re);
    _connect();
}

DialogAddItem::~DialogAddItem() = default;

QString DialogAddItem::getValue()
{
    return _lineEdit->text();
}

void DialogAddItem::_setup()
{
    _lineEdit = nullptr;
    _buttonOk = nullptr;
    _buttonCancel = nullptr;
    _value = QString(""); // never read; the result comes from the entry field
}

void DialogAddItem::_init(const QRegularExpression &re)
{
    setWindowTitle(QStringLiteral("Item select"));
    _lineEdit = new QLineEdit(this);
    _buttonOk = new QPushButton(QStringLiteral("&Ok"), this);
    _buttonCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    auto *layout = new QGridLayout(this);

    _lineEdit->setMinimumWidth(200);
    _lineEdit->setValidator(new QRegularExpressionValidator(re, this));
    layout->setSizeConstraint(QLayout::SetFixedSize);

    layout->addWidget(_lineEdit, 0, 0, 1, 2);
    layout->addWidget(_buttonOk, 1, 0);
    layout->addWidget(_buttonCancel, 1, 1);
}

void DialogAddItem::_connect()
{
    // Ok does not wait for acceptable input: intermediate text is returned as it stands.
    connect(_buttonOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(_buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}
