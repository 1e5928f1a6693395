// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolOutputTask.h"

#include <QCoreApplication>

namespace kruv {

/// Joins files in the given order into one, where the person chose.
class SHNToolJoinTask : public SHNToolOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolJoinTask)
public:
    SHNToolJoinTask(TaskCompletionSink *queue, Request request);

    /// Where the joined file is to lie; else it is "joined" with its extension in the request's folder.
    void setFileName(const QString &fileName) { m_fileName = fileName; }
    const QString &fileName() const { return m_fileName; }

    QString outputPath() const override { return m_fileName; }
    QStringList outputs() const override { return {m_fileName}; }

protected:
    void make(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;
    void committed(const StagedOutputs &outputs) override;

private:
    const QString m_toolName; // that the tool gives to the joined file
    QString m_fileName;
};

} // namespace kruv
