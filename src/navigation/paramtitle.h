// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

// The heading above the pages. Its text is set with the plain setText.
class ParamTitle : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY(ParamTitle)

public:
    explicit ParamTitle(QWidget *parent);
    ~ParamTitle() override = default;

    void setEmptyText();

private:
    void _setup();
    void _init();
};
