// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/TerminalText.h"

#include <optional>

namespace kruv {

/// Tests a file with its codec's own tool; the file is the second argument. What the tool said about it goes
/// into the command's results, where it stays whether or not the test went well.
class VerifyCodecTask : public KruvAsyncNSTask
{
public:
    VerifyCodecTask(std::shared_ptr<KruvTaskResults> results, TaskCompletionSink *queue,
                    const QString &launchPath, const QStringList &arguments);

    void startTask() override;
    QString inputPath() const override { return arguments().at(1); }

protected:
    void processTaskOutput(const QString &text) override;
    void cleanup() override;

    /// Percentage in the line that the tool is writing, where it has one.
    virtual std::optional<double> progressIn(QStringView line) const = 0;
    /// The report, from all that the tool left visible.
    virtual QString report(const QString &text) const;
    const QString &fileName() const { return m_fileName; }

private:
    QString m_fileName; // last path component
    TerminalText m_output;
};

} // namespace kruv
