// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>
#include <QString>

// The search box above the section tree. Each change of its text to a
// non-empty text asks for a search; emptying it asks, every other time, for
// a return to the first section.
class Filter : public QLineEdit
{
    Q_OBJECT
    Q_DISABLE_COPY(Filter)

public:
    explicit Filter(QWidget *parent);
    ~Filter() override = default;

signals:
    void sig_reset(bool isOpened);
    void sig_searchQuery(const QString &filter);

public slots:
    // Empties the box after a tree selection, so the next empty text needs no reset.
    void sl_textForcedCleared();
    void sl_textChenged(const QString &filter);

private:
    void _setup();
    void _init();
    void _connect();

    bool _forcedCleared;
};
