// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/OutputPlan.h"

#include <QCoreApplication>
#include <QFlags>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace kruv {

struct Format;

/// The files beside the audio of a conversion, which go along with it: texts, pictures and cue sheets are
/// copied, and lists over audio are made anew over the new files.
class OtherFiles
{
    Q_DECLARE_TR_FUNCTIONS(kruv::OtherFiles)
public:
    enum Kind { Text = 1, Picture = 2, CueSheet = 4, List = 8 };
    Q_DECLARE_FLAGS(Kinds, Kind)
    static constexpr Kinds all = Kinds(Text | Picture | CueSheet | List);

    /// By its name; nothing for a file that does not go along.
    static std::optional<Kind> kindOf(const QString &file);
    /// Their ids, with commas between them, or "all". Nothing where it has others.
    static std::optional<Kinds> kindsFrom(const QString &ids);
    static QStringList ids();

    /// Whether the file lies there, and neither it nor a folder on the way is hidden.
    static bool isSeenBelow(const QString &folder, const QString &file);

    /// Those below `folders`. `target`: what the audio becomes.
    OtherFiles(const OutputPlace &place, const QStringList &folders, const Format &target);

    /// Adds their copies and lists to a plan of the audio.
    void addTo(OutputPlan &plan, Kinds kinds);

private:
    QStringList find(const OutputPlan &plan, Kinds kinds) const;
    void notePlaces(const OutputPlan &plan);
    QString placeOf(const QString &folder) const;
    void addCopy(OutputPlan &plan, const QString &file);
    bool addList(OutputPlan &plan, const QString &file) const;
    OutputPlan::List listFor(const QString &file, const QString &folder, bool isAbove) const;

    const OutputPlace m_place;
    const QStringList m_folders;
    const Format &m_target;
    /// Where the audio of a folder goes, and what that of the folders below it has in common.
    QHash<QString, QString> m_placeOfAudio;
    QHash<QString, QString> m_placeAbove;
    QSet<QString> m_foldersOfOutputs;
    QHash<QString, QString> m_copied; // sources by their output
};

} // namespace kruv

Q_DECLARE_OPERATORS_FOR_FLAGS(kruv::OtherFiles::Kinds)
