// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"

#include <QCoreApplication>

namespace kruv {

/// How a codec's tool decodes to WAV.
struct DecodeRecipe
{
    const char *firstStatus;
    ToolStep decoder;
    /// Arguments where the tool makes a temporary WAV on the way to AIFF.
    QStringList (*argumentsForAiff)(const ToolRequest &request);
};

/// Decodes one lossless file to WAV by its codec's tool; AIFF is made of a temporary WAV. Tags are not taken
/// over.
class DecodeCodecTask : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeCodecTask)
public:
    DecodeCodecTask(TaskCompletionSink *queue, const ConversionRequest &request, const DecodeRecipe &recipe);

protected:
    QStringList tools() const override { return {QString::fromLatin1(m_recipe.decoder.tool)}; }
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;

private:
    const DecodeRecipe &m_recipe;
};

} // namespace kruv
