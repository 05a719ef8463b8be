// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// The built orvexctl started as a user starts it, for the tests of its TLE
// commands: standard output, standard error and exit status of one run.
#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

struct CtlRun
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// Runs orvexctl with `args` in `dir`; status -1 when it didn't end normally.
inline CtlRun runOrvexctl(QString const &dir, QStringList const &args)
{
    QProcess process;
    process.setWorkingDirectory(dir);
    process.start(QStringLiteral(ORVEXCTL_PATH), args);
    CtlRun run;
    if (!process.waitForFinished(60000))
        return run;
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}
