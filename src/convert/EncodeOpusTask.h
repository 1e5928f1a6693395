// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/LossyTask.h"

namespace kruv {

/// Encodes one file to Opus. Title and artist of FLAC and M4A sources are taken over.
class EncodeOpusTask : public LossyTask
{
public:
    /// `type` is "CBR", "VBR Constrained" or "VBR"; `bitRate` is in kbit/s, `frameSize` in milliseconds.
    EncodeOpusTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                   const QString &outputPath, std::int32_t bitRate, double frameSize);

protected:
    void doStartTask() override;
    void encode(const QString &input) override;
    bool deletesSourceType() const override { return true; }

private:
    void processTaskOutput(const QString &piece);

    const QString m_type;
    const std::int32_t m_bitRate;
    const double m_frameSize;
    std::shared_ptr<TagsObject> m_tags;
};

} // namespace kruv
