// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/UserInterface.h"

#include <QCoreApplication>

namespace kruv {

namespace {

QString tr(const char *text, int count = -1)
{
    return QCoreApplication::translate("UserInterface", text, nullptr, count);
}

} // namespace

std::optional<ExistingFiles> UserInterface::askAboutExisting(const QStringList &existing)
{
    constexpr qsizetype mostNamed = 10;
    QString names = existing.mid(0, mostNamed).join(u'\n');
    if (existing.size() > mostNamed) {
        names += u'\n' + tr("and %n more", static_cast<int>(existing.size() - mostNamed));
    }
    constexpr ExistingFiles answers[] = {ExistingFiles::Skip, ExistingFiles::Replace,
                                         ExistingFiles::KeepBoth};
    const int answer = ask(tr("%n output(s) exist already", static_cast<int>(existing.size())), names,
                           {tr("Skip existing"), tr("Replace"), tr("Keep both"), tr("Cancel")}, 0);
    const bool goesOn = answer >= 0 && answer < static_cast<int>(std::size(answers));
    return goesOn ? std::optional(answers[answer]) : std::nullopt;
}

} // namespace kruv
