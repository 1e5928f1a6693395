// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/VerifyListTask.h"

#include <QCoreApplication>

#include <utility>

namespace kruv {

/// Verifies a list of hashes that shntool makes of the audio data.
class VerifyST5Task : public VerifyListTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyST5Task)
public:
    VerifyST5Task(TaskCompletionSink *queue, const QString &fileName,
                  std::shared_ptr<KruvTaskResults> results);

private:
    Checked check(const ListText::Line &line, FileProgress &progress) override;
    /// The outcome of one line, and what the report says of it.
    std::pair<Outcome, QString> compare(const QString &stored, const QString &name, FileProgress &progress);
    /// What the tool prints for one file.
    QString hash(const QString &name, FileProgress &progress);
    void prepare() override;
};

} // namespace kruv
