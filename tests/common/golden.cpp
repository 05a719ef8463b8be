// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "golden.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

bool matchesGolden(const QByteArray &actual, const QString &goldenPath, QString *failure)
{
    QFile golden(goldenPath);
    if (!golden.open(QIODevice::ReadOnly)) {
        *failure = QStringLiteral("golden file missing: %1").arg(goldenPath);
        return false;
    }
    const QByteArray expected = golden.readAll();
    if (expected == actual)
        return true;

    const QString dir = QCoreApplication::applicationDirPath() + QStringLiteral("/golden-failures");
    QDir().mkpath(dir);
    const QString base = dir + QLatin1Char('/') + QFileInfo(goldenPath).fileName();
    QFile out(base + QStringLiteral(".actual"));
    if (out.open(QIODevice::WriteOnly))
        out.write(actual);
    out.close();

    QProcess diff;
    diff.start(QStringLiteral("diff"), {QStringLiteral("-u"), goldenPath, out.fileName()});
    diff.waitForFinished();
    QFile d(base + QStringLiteral(".diff"));
    if (d.open(QIODevice::WriteOnly))
        d.write(diff.readAllStandardOutput());

    *failure = QStringLiteral("output differs from %1; actual in %2, diff in %3")
                   .arg(goldenPath, out.fileName(), d.fileName());
    return false;
}
