// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Opening the files that the engine and the programs on it read.

#include <QFile>
#include <QFileInfo>

// Opens a file for reading only if it is a regular file, or a link to one. A
// named pipe nobody writes would block the open for ever, a device such as
// /dev/zero never ends, and a socket can't be opened at all: each of them is
// refused before the open, as a file that can't be opened is. (The writer
// keeps its plain open: a save onto a device is pinned as a success.)
inline bool _openForReading(QFile &file)
{
    QFileInfo const info(file.fileName());
    if (info.exists() && !info.isFile())
        return false;
    return file.open(QIODevice::ReadOnly);
}
