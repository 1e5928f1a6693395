// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ToolsVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/JsonReporter.h"
#include "platform/Resources.h"
#include "tasks/FoundTool.h"

#include <QJsonObject>

namespace kruv {

namespace {

QJsonObject asJson(const FoundTool &tool)
{
    return {{QStringLiteral("tool"), QLatin1StringView(tool.info.name)},
            {QStringLiteral("path"), tool.path},
            {QStringLiteral("version"), tool.version},
            {QStringLiteral("for"), QLatin1StringView(tool.info.functions)},
            {QStringLiteral("package"), QLatin1StringView(tool.info.package ? tool.info.package : "")}};
}

QString remedyFor(const ToolInfo &info)
{
    if (info.package) {
        return ToolsVerb::tr("install the package %1").arg(QLatin1StringView(info.package));
    }
    return info.builtWith ? ToolsVerb::tr("built with Kruv where the package %1 is installed")
                                .arg(QLatin1StringView(info.builtWith))
                          : ToolsVerb::tr("belongs to Kruv: build or install it again");
}

QString asLine(const FoundTool &tool)
{
    const QString name = QStringLiteral("%1").arg(QLatin1StringView(tool.info.name), -14);
    if (!tool.path.isEmpty()) {
        return name + QStringLiteral("%1  %2\n")
                          .arg(tool.version.isEmpty() ? QStringLiteral("-") : tool.version, -12)
                          .arg(tool.path);
    }
    return name + QStringLiteral("%1").arg(ToolsVerb::tr("missing"), -14) +
           ToolsVerb::tr("needed for %1 (%2)")
               .arg(QLatin1StringView(tool.info.functions), remedyFor(tool.info)) +
           u'\n';
}

} // namespace

ToolsVerb::ToolsVerb(CLI::App &parent)
    : Verb(parent, "tools", tr("List the external tools: where, which version, what goes missing without"))
{
    addFlag("--json", m_json, tr("One JSON object a line"));
}

int ToolsVerb::run()
{
    if (!m_json) {
        Console::writeOut(tr("Tools in %1").arg(resourcesFolder()) + u'\n');
    }
    for (const ToolInfo &info : ToolCatalog::all()) {
        const FoundTool tool = ToolCatalog::find(info);
        if (m_json) {
            JsonReporter::writeLine(asJson(tool));
        } else {
            Console::writeOut(asLine(tool));
        }
    }
    return Success;
}

} // namespace kruv
