// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

// Compares what the program wrote with a golden file, byte for byte.
// On a mismatch it writes the actual bytes and a unified diff into
// <test executable dir>/golden-failures/ and returns a message naming them.
bool matchesGolden(const QByteArray &actual, const QString &goldenPath, QString *failure);
