// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/dialoginfo.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

int DialogInfo::create(const QString &title, const QString &text, const QString &url, QWidget *parent)
{
    // Not deleted after use: the dialog stays a hidden child of parent
    // (pinned by createRunsModallyAndLeavesHiddenChild).
    DialogInfo *dialog = new DialogInfo(title, text, url, parent);
    return dialog->exec();
}

DialogInfo::DialogInfo(const QString &title, const QString &text, const QString &url, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
{
    _setup();
    _init(title, text, url);
    _connect();
}

void DialogInfo::_setup()
{
    _textEdit = nullptr;
    _labelLink = nullptr;
    _buttonOk = nullptr;
}

void DialogInfo::_init(const QString &title, const QString &text, const QString &url)
{
    setWindowTitle(title);

    // The url goes in as it stands, unescaped; without one the line stays,
    // empty (pinned by linkLineNamesTheUrl).
    QString link = "";
    if (!url.isEmpty())
        link = "<a href=\"" + url + "\">Online documentation</a>";

    // This constructor lets text that looks like rich text show as such.
    _textEdit = new QTextEdit(text, this);
    _labelLink = new QLabel(link, this);
    _buttonOk = new QPushButton("Ok", this);

    _textEdit->setReadOnly(true);
    _labelLink->setOpenExternalLinks(true);

    QGridLayout *layout = new QGridLayout(this);
    layout->addWidget(_textEdit, 0, 0, 2, 3);
    layout->addWidget(_labelLink, 2, 0, 1, 3);
    layout->addWidget(_buttonOk, 3, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void DialogInfo::_connect() { connect(_buttonOk, &QPushButton::clicked, this, &QDialog::accept); }
