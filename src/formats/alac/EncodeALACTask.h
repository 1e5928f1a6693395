// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

namespace kruv {

/// Anything readable to Apple Lossless in an MPEG-4 file, encoded in this process, with tags and marked as
/// gapless.
class EncodeALACTask final : public TranscodeTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeALACTask)
public:
    EncodeALACTask(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void makeOutput() override;
    void encode(const QString &input) override;
    void dress(StagedOutputs &outputs) override;
};

} // namespace kruv
