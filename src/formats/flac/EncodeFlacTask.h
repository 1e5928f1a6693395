// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

namespace kruv {

/// Any source to FLAC by the flac tool, always with the same options: what the tool reads goes to it
/// directly, Shorten and Monkey's Audio through shntool, all else through a temporary WAV.
class EncodeFlacTask final : public TranscodeTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeFlacTask)
public:
    EncodeFlacTask(TaskCompletionSink *queue, const ConversionRequest &request);

protected:
    void makeOutput() override;
    void encode(const QString &input) override;
    void copyTags() override;
    bool readsItself() const override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    bool isAiffForFlac() const;
    void requireForeignMetadata() const;
    void requireSameDigest();
    void encodeThroughShntool();
    void run(const ToolStep &step, const ToolRequest &request);
};

} // namespace kruv
