// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

namespace kruv {

/// Any source to Shorten: what shntool reads by itself goes to it directly, all else as a temporary WAV.
class EncodeSHNTask final : public TranscodeTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeSHNTask)
public:
    EncodeSHNTask(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void encode(const QString &input) override;
    bool readsItself() const override;
};

} // namespace kruv
