// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/LaunchArguments.h"

#include "cli/Program.h"

#include <QFileInfo>

namespace kruv {

namespace {

bool namesFile(const QString &argument)
{
    return argument.startsWith(QStringLiteral("file://"), Qt::CaseInsensitive) || QFileInfo::exists(argument);
}

} // namespace

LaunchArguments LaunchArguments::parse(const QStringList &arguments)
{
    const QString first = arguments.value(0);
    if (arguments.isEmpty()) {
        return {.opensWindow = true, .tab = {}, .paths = {}};
    }
    if (first == u"--tab" && arguments.size() > 1) {
        return {.opensWindow = true, .tab = arguments[1], .paths = arguments.mid(2)};
    }
    const bool opensWindow =
        !first.startsWith(u'-') && !Program::isCommand(first.toStdString()) && namesFile(first);
    return {.opensWindow = opensWindow, .tab = {}, .paths = opensWindow ? arguments : QStringList()};
}

} // namespace kruv
