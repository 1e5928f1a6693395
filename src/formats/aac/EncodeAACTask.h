// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/LossyTask.h"

namespace kruv {

/// Encodes one file to AAC in this process. Tags are taken over, and the file is marked as gapless.
class EncodeAACTask final : public LossyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeAACTask)
public:
    EncodeAACTask(TaskCompletionSink *queue, const ConversionRequest &request);

    /// What the encoder was asked for, in words.
    QString getEncoderSettingsForTag() const;

protected:
    void encode(const QString &input) override;
    void copyTags() override;

private:
    int level() const;
    void writeTags();
};

} // namespace kruv
