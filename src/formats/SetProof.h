// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/Proof.h"
#include "tasks/ProofNote.h"

#include <QCoreApplication>

namespace kruv {

/// The proof of a job on a set of files, claim by claim, and what a person is told of it. Outputs have to be
/// of the format that their names say.
class SetProof
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SetProof)
public:
    SetProof(Proof::Change change, Proof::Progress progress);

    /// That the outputs, one after another, give the sources. Nothing where the proof was ended, or where the
    /// sources are of a kind that nothing can be shown for. Throws where it does not hold.
    std::optional<Proof::Finding> show(const QStringList &sources, const QStringList &outputs);
    ProofNote note() const;

private:
    QString words() const;

    const Proof::Change m_change;
    const Proof::Progress m_progress;
    bool m_isByFile = true; // each claim is of one file and its own output
    qsizetype m_files = 0;
    std::int64_t m_frames = 0;
    std::int64_t m_added = 0;
    std::int64_t m_cut = 0;
    QStringList m_digests;
    QString m_decoder;
    QString m_obstacle;
};

} // namespace kruv
