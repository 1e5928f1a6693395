// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"

namespace kruv {

/// Tests a FLAC file with the flac tool; the file is the second argument. The report goes into the command's
/// results.
class VerifyFlacTask : public KruvAsyncNSTask
{
public:
    VerifyFlacTask(std::shared_ptr<KruvTaskResults> results, TaskCompletionSink *queue,
                   const QString &launchPath, const QStringList &arguments);

    void startTask() override;
    QString inputPath() const override { return arguments().at(1); }

protected:
    void processTaskOutput(const QString &text) override;
    void willEnd() override;
    void neverRan() override { cleanup(); }
    void cleanup() override;

private:
    QString m_fileName; // last path component
    QString m_singleResult;
};

} // namespace kruv
