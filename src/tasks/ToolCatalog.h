// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace kruv {

/// One external tool: the name it has in the resources folder and what goes missing without it.
struct ToolInfo
{
    const char *name;
    /// Debian package that brings it, or nullptr for a tool built with this program.
    const char *package;
    /// What a person can't do without it.
    const char *functions;
    /// Argument that makes it print its version, or nullptr where it prints one without.
    const char *versionArgument;
    /// Debian non-free package without which it isn't built with this program, where there is such.
    const char *builtWith = nullptr;
};

namespace ToolCatalog {

std::span<const ToolInfo> all();

/// What to tell a person whose tool can't be launched: names the tool, where it was looked for, and what
/// brings it.
QString missingToolMessage(const QString &launchPath);

/// The same for a tool that is there, but that the system would not start for the reason `problem`.
QString launchFailureMessage(const QString &launchPath, const QString &problem);

/// Whether there is an executable file at that path.
bool isLaunchable(const QString &launchPath);

/// Throws std::runtime_error with missingToolMessage() unless `launchPath` is an executable file.
void requireLaunchable(const QString &launchPath);

} // namespace ToolCatalog
} // namespace kruv
