// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/UserInterface.h"

namespace kruv {

namespace {

/// The first few of a list that may be long, a line each.
QString firstOf(const QStringList &names)
{
    constexpr qsizetype mostNamed = 10;
    const auto unnamed = static_cast<int>(names.size() - mostNamed);
    return names.mid(0, mostNamed).join(u'\n') +
           (unnamed > 0 ? u'\n' + UserInterface::tr("and %n more", nullptr, unnamed) : QString());
}

} // namespace

std::optional<ExistingFiles> UserInterface::askAboutExisting(const QStringList &existing)
{
    constexpr ExistingFiles answers[] = {ExistingFiles::Skip, ExistingFiles::Replace,
                                         ExistingFiles::KeepBoth};
    const int answer =
        ask(Matter::Other, tr("%n output(s) exist already", nullptr, static_cast<int>(existing.size())),
            firstOf(existing), {tr("Skip existing"), tr("Replace"), tr("Keep both"), cancel()}, 0);
    const bool goesOn = answer >= 0 && answer < static_cast<int>(std::size(answers));
    return goesOn ? std::optional(answers[answer]) : std::nullopt;
}

bool UserInterface::askAboutLossy(const QStringList &files)
{
    const int answer =
        ask(Matter::Other,
            tr("%n file(s) are lossy. A lossless format makes them larger, but brings nothing back. Encode "
               "them all the same?",
               nullptr, static_cast<int>(files.size())),
            firstOf(files), {no(), yes()}, 0);
    return answer == 1;
}

} // namespace kruv
