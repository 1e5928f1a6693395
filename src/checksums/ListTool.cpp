// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ListTool.h"

#include "platform/Resources.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolEnvironment.h"

#include <QProcess>
#include <QStringDecoder>

#include <stdexcept>

namespace kruv {

namespace {

QProcessEnvironment environment()
{
    QProcessEnvironment variables = ToolEnvironment::base();
    variables.insert(QStringLiteral("NSUnbufferedIO"), QStringLiteral("YES"));
    return variables;
}

} // namespace

int ListTool::run(const QString &launchPath, const QStringList &arguments, const QString &folder,
                  const Observer &observer)
{
    ToolCatalog::requireLaunchable(launchPath);
    QProcess process;
    process.setProcessEnvironment(environment());
    if (!folder.isEmpty()) {
        process.setWorkingDirectory(folder);
    }
    ToolEnvironment::prepare(process);
    process.start(launchPath, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        throw std::runtime_error(ToolCatalog::missingToolMessage(launchPath).toStdString());
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    constexpr int betweenLooks = 50; // milliseconds
    bool ended = false;
    while (process.state() != QProcess::NotRunning || process.bytesAvailable() > 0) {
        process.waitForReadyRead(betweenLooks);
        if (!observer(decoder(process.readAll())) && !ended) {
            ended = true;
            process.kill();
        }
    }
    return ended || process.exitStatus() == QProcess::CrashExit ? -1 : process.exitCode();
}

} // namespace kruv
