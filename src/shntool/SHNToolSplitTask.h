// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/Proof.h"
#include "shntool/SHNToolOutputTask.h"

#include <QCoreApplication>
#include <QMap>

namespace kruv {

/// Splits one file into tracks and gives those that have a title its name.
class SHNToolSplitTask : public SHNToolOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolSplitTask)
public:
    /// `request` has one file; `splitPoints` is the file with the points.
    SHNToolSplitTask(TaskCompletionSink *queue, Request request, const QString &splitPoints);

    /// From the file names that the tool writes to the wanted ones.
    void setTrackTitleMap(const QMap<QString, QString> &map) { m_trackTitleMap = map; }

    /// The first track, and those that have a title.
    QStringList outputs() const override;

protected:
    void make(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    QStringList knownTracks() const;
    QString pathOf(const QString &track) const;
    void takeTracks(StagedOutputs &outputs, const QString &staging);

    void requireCutsAtPoints(const Proof::Finding &finding) const;

    const QString m_splitPoints;
    QStringList m_tracks; // that the tool made, in their order
    QMap<QString, QString> m_trackTitleMap;
};

} // namespace kruv
