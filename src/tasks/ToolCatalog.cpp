// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolCatalog.h"

#include "platform/Resources.h"
#include "tasks/ToolEnvironment.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace kruv::ToolCatalog {

namespace {

constexpr ToolInfo tools[] = {
#include "ToolTable.inc"
};

const ToolInfo *infoFor(const QString &name)
{
    const auto *found = std::ranges::find_if(
        tools, [&name](const ToolInfo &tool) { return name == QLatin1StringView(tool.name); });
    return found == std::end(tools) ? nullptr : found;
}

QString versionIn(const QString &output)
{
    static const QRegularExpression number(QStringLiteral("\\bv?(\\d+(?:\\.\\d+)+[\\w.+-]*|\\d{8}\\b)"));
    return number.match(output).captured(1);
}

} // namespace

std::span<const ToolInfo> all()
{
    return tools;
}

QString missingToolMessage(const QString &launchPath)
{
    const QString name = QFileInfo(launchPath).fileName();
    const ToolInfo *info = infoFor(name);
    QString message = QStringLiteral("The tool \"%1\" can't be run: it isn't an executable file at %2.")
                          .arg(name, launchPath);
    if (info && info->package) {
        message += QStringLiteral(" The package \"%1\" brings it (sudo apt-get install %1).")
                       .arg(QLatin1StringView(info->package));
    } else if (info && info->builtWith) {
        message += QStringLiteral(" It is built with this program where \"%1\" is installed: enable Debian's "
                                  "non-free component, sudo apt-get install %1, and build Kruv again.")
                       .arg(QLatin1StringView(info->builtWith));
    } else if (info) {
        message += QStringLiteral(" It belongs to this program: build or install Kruv again.");
    }
    return message;
}

QString launchFailureMessage(const QString &launchPath, const QString &problem)
{
    if (!isLaunchable(launchPath)) {
        return missingToolMessage(launchPath);
    }
    return QStringLiteral("The tool \"%1\" at %2 could not be started: %3")
        .arg(QFileInfo(launchPath).fileName(), launchPath, problem);
}

QString silentFailureMessage(const QString &launchPath, int exitStatus, bool crashed, bool printedText)
{
    const QString tool = QFileInfo(launchPath).fileName();
    if (crashed) {
        return QStringLiteral("%1 was ended by signal %2 (%3).\n")
            .arg(tool)
            .arg(exitStatus)
            .arg(QString::fromLocal8Bit(strsignal(exitStatus)));
    }
    return printedText
               ? QString()
               : QStringLiteral("%1 ended with status %2 and said nothing.\n").arg(tool).arg(exitStatus);
}

bool isLaunchable(const QString &launchPath)
{
    return QFileInfo(launchPath).isFile() && access(QFile::encodeName(launchPath).constData(), X_OK) == 0;
}

void requireLaunchable(const QString &launchPath)
{
    if (!isLaunchable(launchPath)) {
        throw std::runtime_error(missingToolMessage(launchPath).toStdString());
    }
}

FoundTool find(const ToolInfo &info)
{
    FoundTool found{info, {}, {}};
    const QString path = toolPath(QString::fromLatin1(info.name));
    if (!isLaunchable(path)) {
        return found;
    }
    found.path = path;
    QProcess process;
    process.setProcessEnvironment(ToolEnvironment::base());
    ToolEnvironment::prepare(process);
    process.start(path, info.versionArgument ? QStringList{QString::fromLatin1(info.versionArgument)}
                                             : QStringList{});
    constexpr int limitMilliseconds = 5000;
    if (!process.waitForFinished(limitMilliseconds)) {
        process.kill();
        process.waitForFinished(limitMilliseconds);
        return found;
    }
    constexpr int adapterWithoutItsTool = 127;
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == adapterWithoutItsTool) {
        found.path.clear();
        return found;
    }
    found.version = versionIn(QString::fromUtf8(process.readAll()));
    return found;
}

} // namespace kruv::ToolCatalog
