// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolEnd.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstring>
#include <stdexcept>

namespace kruv {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ToolEnd)
};

} // namespace

QString ToolEnd::complaint(const QString &launchPath) const
{
    const QString tool = QFileInfo(launchPath).fileName();
    switch (kind) {
    case Kind::NotLaunched:
        return problem + u'\n';
    case Kind::Signalled:
        return Text::tr("%1 was ended by signal %2 (%3).")
                   .arg(tool, QString::number(number), QString::fromLocal8Bit(strsignal(number))) +
               u'\n';
    case Kind::Exited:
        return succeeded() || printedText ? QString()
                                          : Text::tr("%1 ended with status %2 and said nothing.")
                                                    .arg(tool, QString::number(number)) +
                                                u'\n';
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
