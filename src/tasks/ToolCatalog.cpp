// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolCatalog.h"

#include "platform/Resources.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <stdexcept>
#include <unistd.h>

namespace kruv::ToolCatalog {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ToolCatalog)
};

constexpr ToolInfo tools[] = {
#include "ToolTable.inc"
};

const ToolInfo *infoFor(const QString &name)
{
    const auto *found = std::ranges::find_if(
        tools, [&name](const ToolInfo &tool) { return name == QLatin1StringView(tool.name); });
    return found == std::end(tools) ? nullptr : found;
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
    QStringList sentences{
        Text::tr("The tool \"%1\" can't be run: it isn't an executable file at %2.").arg(name, launchPath)};
    if (info && info->package) {
        sentences << Text::tr("The package \"%1\" brings it (sudo apt-get install %1).")
                         .arg(QLatin1StringView(info->package));
    } else if (info && info->builtWith) {
        sentences << Text::tr(
                         "It is built with this program where \"%1\" is installed: enable Debian's non-free "
                         "component, sudo apt-get install %1, and build Kruv again.")
                         .arg(QLatin1StringView(info->builtWith));
    } else if (info) {
        sentences << Text::tr("It belongs to this program: build or install Kruv again.");
    }
    return sentences.join(u' ');
}

QString launchFailureMessage(const QString &launchPath, const QString &problem)
{
    if (!isLaunchable(launchPath)) {
        return missingToolMessage(launchPath);
    }
    return Text::tr("The tool \"%1\" at %2 could not be started: %3")
        .arg(QFileInfo(launchPath).fileName(), launchPath, problem);
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

} // namespace kruv::ToolCatalog
