// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"
#include "formats/Format.h"

#include <span>

namespace kruv {

/// How one kind of source is treated on its way to a format, where that is not the usual way.
struct SourceRule
{
    const Format *source;
    /// Status line while a WAV is made of it; null where the line stays.
    const char *status;
    /// Makes the WAV; null where that is done as the source's format has it.
    const ToolStep *toWav = nullptr;
    /// Status line while its tags are copied.
    const char *tagStatus = nullptr;
    /// Status line of the tool that makes the WAV, where it is another than the tool's usual one.
    const char *progress = nullptr;
};

/// What is peculiar to a format that files are encoded to.
struct TranscodeRecipe
{
    const char *firstStatus;
    /// Without a tool where this process encodes.
    ToolStep encoder = {};
    std::span<const SourceRule> rules = {};
    /// Formats that the encoder reads by itself, besides WAV.
    std::span<const Format *const> readsItself = {};
    /// Whether it reads whatever this process reads.
    bool readsAnything = false;
};

/// Makes a file of a format from any other: the source becomes a temporary WAV where the encoder can't read
/// it, the encoder runs, the tags follow. What is peculiar to the format is in its recipe.
class TranscodeTask : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TranscodeTask)
public:
    TranscodeTask(TaskCompletionSink *queue, const ConversionRequest &request, const Format &target);

protected:
    QStringList tools() const override;
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;
    const Format *target() const override { return &m_target; }

    /// Makes the output of a WAV file or of a source that the encoder reads.
    virtual void encode(const QString &input);
    /// Writes the source's tags into the output, where both have tags.
    virtual void copyTags();
    virtual bool readsItself() const;

    const SourceRule *rule() const;
    /// What makes a WAV of the source; null where this process does.
    const ToolStep *toWav() const;
    void tagsNotCopied(const QString &reason);

private:
    const Format &m_target;
};

} // namespace kruv
