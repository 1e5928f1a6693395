// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolOutput.h"

#include "base/PathNames.h"
#include "regex/Regex.h"
#include "tasks/ToolOutput.h"

namespace kruv::SHNToolOutput {

std::optional<double> percentage(QStringView line)
{
    // Names come first and may hold anything; what the tool draws over stands behind the last colon.
    const qsizetype colon = line.lastIndexOf(u" : ");
    return colon < 0 ? std::nullopt : ToolOutput::lastPercentage(line.sliced(colon));
}

QString phase(QStringView line)
{
    static const Regex firstWord(QStringLiteral("^([A-Z][a-z-]+ing) \\["));
    const auto found = firstWord.find(line);
    return found ? found->captures[1] : QString();
}

QString fileName(QStringView line)
{
    static const Regex bracketed(QStringLiteral("(?s)^\\S+ \\[(.+?)\\] \\(\\d+:\\d\\d\\."));
    const auto found = bracketed.find(line);
    return found ? PathNames::lastPathComponent(found->captures[1]) : QString();
}

Parts takeApart(const QString &output)
{
    static const Regex message(QStringLiteral("shntool \\[[a-z]+\\]:[^\\n]*(\\n|$)"));
    Parts parts;
    qsizetype position = 0;
    for (const auto &found : message.findAll(output)) {
        parts.report += QStringView(output).sliced(position, found.start - position);
        parts.messages += found.captures[0];
        position = found.start + found.length;
    }
    parts.report += QStringView(output).sliced(position);
    return parts;
}

} // namespace kruv::SHNToolOutput
