// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/LossyTask.h"
#include "formats/LossyCommandLine.h"

namespace kruv {

/// Encodes one file to MP3: lame reads WAV by itself, shntool decodes everything else into it. Tags of FLAC
/// and M4A sources are taken over.
class EncodeMP3Task : public LossyTask
{
public:
    /// `type` is "CBR", "ABR" or "VBR"; `level` is in kbit/s, or the quality 0 to 9 of "VBR".
    EncodeMP3Task(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                  const QString &outputPath, std::int32_t level);

protected:
    void doStartTask() override;
    void encode(const QString &input) override;
    void finish() override;

private:
    LossyCommandLine::Mp3Request request() const;
    void doEncodeCall(const QString &input);
    void doEncodeCallFromWav(const QString &input);
    void processTaskOutput(const QString &piece);
    void processTaskOutputFromWav(const QString &piece);
    void showPercentage(std::optional<double> percentage);

    const QString m_type;
    const std::int32_t m_level;
    std::shared_ptr<TagsObject> m_tags;
};

} // namespace kruv
