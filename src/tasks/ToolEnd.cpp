// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolEnd.h"

#include <QFileInfo>

#include <cstring>
#include <stdexcept>

namespace kruv {

QString ToolEnd::complaint(const QString &launchPath) const
{
    const QString tool = QFileInfo(launchPath).fileName();
    switch (kind) {
    case Kind::NotLaunched:
        return problem + u'\n';
    case Kind::Signalled:
        return QStringLiteral("%1 was ended by signal %2 (%3).\n")
            .arg(tool, QString::number(number), QString::fromLocal8Bit(strsignal(number)));
    case Kind::Exited:
        return succeeded() || printedText ? QString()
                                          : QStringLiteral("%1 ended with status %2 and said nothing.\n")
                                                .arg(tool, QString::number(number));
    case Kind::Ended:
        break;
    }
    return {};
}

void ToolEnd::requireLaunched() const
{
    if (kind == Kind::NotLaunched) {
        throw std::runtime_error(problem.toStdString());
    }
}

} // namespace kruv
