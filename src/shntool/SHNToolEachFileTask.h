// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/Proof.h"
#include "shntool/SHNToolOutputTask.h"

#include <QCoreApplication>
#include <QStringView>

namespace kruv {

/// Base of the shntool jobs that make a new file of each source: "<name>-trimmed.wav" of "<name>.flac". Files
/// that need nothing are passed over; that fails the job, but the others' outputs stay.
class SHNToolEachFileTask : public SHNToolOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolEachFileTask)
public:
    QStringList outputs() const override;

protected:
    /// What sets the modes apart.
    struct Mode
    {
        QStringView word; // on the command line
        QStringView postfix;
        const char *title;
        SHNToolProgress progress;
        Proof::Change change = Proof::Change::None;
    };

    SHNToolEachFileTask(TaskCompletionSink *queue, Request request, const Mode &mode);

    void make(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    void allowPassingOver(StagedOutputs &outputs, const QString &toolOutput);

    const Mode m_mode;
};

} // namespace kruv
