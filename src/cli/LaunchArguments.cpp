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
    LaunchArguments launch;
    QStringList rest = arguments;
    for (;;) {
        if (rest.value(0) == u"--new-window") {
            launch.inNewWindow = true;
            rest.removeFirst();
        } else if (rest.value(0) == u"--tab" && rest.size() > 1) {
            launch.tab = rest[1];
            rest.remove(0, 2);
        } else {
            break;
        }
    }
    const QString first = rest.value(0);
    const bool hasOwnFlags = rest.size() < arguments.size();
    launch.opensWindow =
        rest.isEmpty() || hasOwnFlags ||
        (!first.startsWith(u'-') && !Program::isCommand(first.toStdString()) && namesFile(first));
    launch.paths = launch.opensWindow ? rest : QStringList();
    return launch;
}

} // namespace kruv
