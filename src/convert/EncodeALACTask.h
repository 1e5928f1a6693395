// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeTask.h"

namespace kruv {

/// Anything readable to Apple Lossless in an MPEG-4 file, encoded in this process, with tags and marked as
/// gapless.
class EncodeALACTask final : public TranscodeTask
{
public:
    EncodeALACTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath);

protected:
    void doStartTask() override;
    void encode(const QString &input) override;
    void finish() override;
};

} // namespace kruv
