// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/EncodeM4ATask.h"

namespace kruv {

/// Encodes one file to HE-AAC. Its output gets no tags.
class EncodeHEAACTask : public EncodeM4ATask
{
public:
    /// `type` is the AAC rate mode, which this encoder doesn't know; `level` is in kbit/s.
    EncodeHEAACTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                    const QString &outputPath, std::int32_t level, bool overwrite);

protected:
    void encode(const QString &input) override;

private:
    void processTaskOutput(const QString &piece);
};

} // namespace kruv
