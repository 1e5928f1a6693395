// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/CueFileNames.h"
#include "tasks/OutputTask.h"

#include <QCoreApplication>

namespace kruv {

/// Copies a file that goes along with audio, with the time of its last change, and compares the copy with it.
class CopyTask final : public OutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CopyTask)
public:
    struct Request
    {
        QString source;
        QString output;
        bool mayReplace = false;
        /// What lies there already may be this very copy, made before the program was killed.
        bool mayBeThere = false;
        /// Of a cue sheet: the names that its files have now.
        CueFileNames::NewName newName = nullptr;
    };
    CopyTask(TaskCompletionSink *queue, const Request &request);

    QString outputPath() const override { return m_request.output; }
    JobOutline outline() const override;
    qint64 foreseenBytes() const override;

protected:
    void inspectSources() override;
    void make(StagedOutputs &outputs) override;
    void dress(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    /// Of a sheet: what its copy is to be.
    QByteArray sheet() const;
    void write(const QString &path) const;
    bool isCopy(const QString &path) const;

    const Request m_request;
};

} // namespace kruv
