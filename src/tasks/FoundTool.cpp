// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/FoundTool.h"

#include "platform/Resources.h"
#include "tasks/ToolRun.h"

#include <QRegularExpression>

#include <chrono>

namespace kruv::ToolCatalog {

namespace {

QString versionIn(const QString &output)
{
    static const QRegularExpression number(QStringLiteral("\\bv?(\\d+(?:\\.\\d+)+[\\w.+-]*|\\d{8}\\b)"));
    return number.match(output).captured(1);
}

} // namespace

FoundTool find(const ToolInfo &info)
{
    FoundTool found{info, {}, {}};
    const QString path = toolPath(QString::fromLatin1(info.name));
    if (!isLaunchable(path)) {
        return found;
    }
    ToolCall question{path, info.versionArgument ? QStringList{QString::fromLatin1(info.versionArgument)}
                                                 : QStringList{}};
    question.timeLimit = std::chrono::seconds(5);
    QString output;
    const ToolEnd end = ToolRun(question).run([&output](const QString &piece) { output += piece; });
    constexpr int adapterWithoutItsTool = 127;
    if (end.kind == ToolEnd::Kind::NotLaunched ||
        (end.kind == ToolEnd::Kind::Exited && end.number == adapterWithoutItsTool)) {
        return found;
    }
    found.path = path;
    found.version = end.kind == ToolEnd::Kind::Exited ? versionIn(output) : QString();
    return found;
}

} // namespace kruv::ToolCatalog
