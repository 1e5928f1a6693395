// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionTab.h"

#include "base/UserInterface.h"
#include "tabs/OutputPlan.h"

#include <QSet>

#include <algorithm>

namespace kruv {

bool ConversionTab::isFileClash(const QStringList &inputFiles, const QStringList &outputFiles)
{
    const QSet<QString> outputs(outputFiles.begin(), outputFiles.end());
    return std::ranges::any_of(inputFiles,
                               [&outputs](const QString &input) { return outputs.contains(input); });
}

std::optional<QString> ConversionTab::chooseOutputFolderUnless(const ToggleControl &besideSources)
{
    return besideSources.isOn() ? QString() : chooseOutputFolder();
}

bool ConversionTab::outputsCollide(const OutputPlan &plan, const QString &title)
{
    const auto collision = plan.collision();
    if (collision) {
        host().userInterface().alert(title, *collision, acknowledgeButton());
    }
    return collision.has_value();
}

bool ConversionTab::replacesFiles(const OutputPlan &plan, const QString &extension)
{
    const auto byFolder = plan.outputsByFolder();
    return std::ranges::any_of(byFolder.asKeyValueRange(), [&extension](const auto &group) {
        return isFileClash(getFilesFromOutputDirectory(group.first, extension), group.second);
    });
}

QString ConversionTab::clashTitle()
{
    return QStringLiteral(
        "One of the output files already exists and will be overwritten.  Select a different output "
        "directory and try again");
}

} // namespace kruv
