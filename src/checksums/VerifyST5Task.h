// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/VerifyListTask.h"

namespace kruv {

/// Verifies a list of hashes that shntool makes of the audio data.
class VerifyST5Task : public VerifyListTask
{
public:
    VerifyST5Task(TaskCompletionSink *queue, const QString &fileName,
                  std::shared_ptr<KruvTaskResults> results);

private:
    Checked check(const ListText::Line &line, FileProgress &progress) override;
    void prepare() override;
};

} // namespace kruv
