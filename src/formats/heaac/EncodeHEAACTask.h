// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/LossyTask.h"

#include <QCoreApplication>

namespace kruv {

/// Encodes one file to HE-AAC. Its output gets no tags.
class EncodeHEAACTask final : public LossyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeHEAACTask)
public:
    EncodeHEAACTask(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void encode(const QString &input) override;
    void copyTags() override {}
};

} // namespace kruv
