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

QString existingTitle(qsizetype existing, qsizetype outputs)
{
    const auto all = static_cast<int>(outputs);
    if (existing < outputs) {
        return UserInterface::tr("%1 of %n outputs exist already", nullptr, all).arg(existing);
    }
    return all == 1 ? UserInterface::tr("The output exists already")
                    : UserInterface::tr("All %n outputs exist already", nullptr, all);
}

} // namespace

std::optional<ExistingFiles> UserInterface::askAboutExisting(const QStringList &existing, qsizetype outputs)
{
    constexpr ExistingFiles answers[] = {ExistingFiles::Skip, ExistingFiles::Replace,
                                         ExistingFiles::KeepBoth};
    const int answer = ask(Matter::Other, existingTitle(existing.size(), outputs), firstOf(existing),
                           {tr("Skip existing"), tr("Replace"), tr("Keep both"), cancel()}, 0);
    const bool goesOn = answer >= 0 && answer < static_cast<int>(std::size(answers));
    return goesOn ? std::optional(answers[answer]) : std::nullopt;
}

bool UserInterface::askAboutLossy(const QStringList &files)
{
    const int answer =
        ask(Matter::Other,
            files.size() == 1
                ? tr("One file is lossy. A lossless format makes it larger, but brings nothing back. Encode "
                     "it all the same?")
                : tr("%n files are lossy. A lossless format makes them larger, but brings nothing back. "
                     "Encode them all the same?",
                     nullptr, static_cast<int>(files.size())),
            firstOf(files), {no(), yes()}, 0);
    return answer == 1;
}

bool UserInterface::askAboutChanged(const QStringList &files)
{
    const QString why = tr("DSD becomes PCM, and floating-point samples become integers.");
    const int answer = ask(
        Matter::Other,
        files.size() == 1 ? tr("The sound of one original is computed anew, so it can't be got back from its "
                               "output: %1 Delete this original, too?")
                                .arg(why)
                          : tr("The sound of %n originals is computed anew, so they can't be got back from "
                               "their outputs: %1 Delete these originals, too?",
                               nullptr, static_cast<int>(files.size()))
                                .arg(why),
        firstOf(files), {no(), yes()}, 0);
    return answer == 1;
}

std::optional<bool> UserInterface::askAboutLosses(const QStringList &losses)
{
    const int answer =
        ask(Matter::Other,
            tr("Deleting the originals would lose what the new files can't hold. Keep those originals?"),
            firstOf(losses), {tr("Keep these originals"), tr("Delete all the same"), cancel()}, 0);
    return answer == 0 || answer == 1 ? std::optional(answer == 1) : std::nullopt;
}

bool UserInterface::askAboutSpace(const QStringList &shortages)
{
    const int answer = ask(Matter::Other, tr("There is not enough room for the outputs. Begin all the same?"),
                           firstOf(shortages), {no(), yes()}, 0);
    return answer == 1;
}

} // namespace kruv
