// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/LossyTask.h"

#include <QCoreApplication>

namespace kruv {

/// Encodes one file to Opus. Title and artist are taken over.
class EncodeOpusTask final : public LossyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeOpusTask)
public:
    EncodeOpusTask(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void encode(const QString &input) override;
};

} // namespace kruv
