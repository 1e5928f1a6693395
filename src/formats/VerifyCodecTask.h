// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/VerifyTask.h"
#include "tasks/TerminalText.h"

#include <QCoreApplication>

#include <optional>

namespace kruv {

/// The usual test: what the tool said about the file stays in the results whether or not the test went well.
class VerifyCodecTask : public VerifyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyCodecTask)
public:
    using VerifyTask::VerifyTask;

protected:
    void processTaskOutput(const QString &text) override;
    void cleanup() override;

    /// Percentage in the line that the tool is writing, where it has one.
    virtual std::optional<double> progressIn(QStringView line) const = 0;
    /// The report, from all that the tool left visible.
    virtual QString report(const QString &text) const;

private:
    TerminalText m_output;
};

} // namespace kruv
