// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/LossyTask.h"
#include "formats/mp3/Mp3Tool.h"

#include <QCoreApplication>

namespace kruv {

/// Encodes one file to MP3: lame reads WAV by itself, shntool decodes what it reads into it, all else becomes
/// a temporary WAV. Tags are taken over.
class EncodeMP3Task final : public LossyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeMP3Task)
public:
    EncodeMP3Task(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void encode(const QString &input) override;
    bool readsItself() const override;

private:
    Mp3Tool::Tuning tuning() const;
};

} // namespace kruv
