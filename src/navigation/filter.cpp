// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/filter.h"

#include <QIcon>

Filter::Filter(QWidget *parent) : QLineEdit(parent)
{
    _setup();
    _init();
    _connect();
}

void Filter::sl_textForcedCleared()
{
    // The text is cleared before the flag is set, not after: a box emptied
    // here still sees the flag as it stood, so a cleared search can reset to
    // the first section. Keep this order (pinned by
    // treeSelectionDuringSearchWithoutMarkResets).
    setText(QString(""));
    _forcedCleared = true;
}

void Filter::sl_textChenged(const QString &filter)
{
    if (!filter.isEmpty()) {
        emit sig_searchQuery(filter);
        return;
    }
    if (_forcedCleared) {
        _forcedCleared = false;
        return;
    }
    emit sig_reset(true);
}

void Filter::_setup() { _forcedCleared = false; }

void Filter::_init()
{
    addAction(QIcon(":/graphics/search.png"), QLineEdit::LeadingPosition);
    setPlaceholderText("Search...");
    setClearButtonEnabled(true);
}

void Filter::_connect() { connect(this, &QLineEdit::textChanged, this, &Filter::sl_textChenged); }
