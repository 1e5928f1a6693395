// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/EncodeM4ATask.h"

namespace kruv {

/// Encodes one file to AAC in this process. The tags of FLAC, Apple Lossless and AIFF sources are taken over,
/// and the file is marked as gapless.
class EncodeAACTask : public EncodeM4ATask
{
public:
    /// `type` is "CBR", "ABR", "VBR Constrained" or "VBR"; `level` is in kbit/s, or the quality 0 to 127 of
    /// "VBR".
    EncodeAACTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                  const QString &outputPath, std::int32_t level, bool overwrite);

    /// What the encoder was asked for, in words.
    QString getEncoderSettingsForTag() const;

protected:
    void encode(const QString &input) override;
    void finish() override;
    bool deletesSourceType() const override { return true; }

private:
    std::shared_ptr<TagsObject> sourceTags();
    void writeTags();
    void optimizeFile();

    const QString m_type;
};

} // namespace kruv
