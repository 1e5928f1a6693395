// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/CodecTask.h"

#include <memory>
#include <span>

namespace kruv {

class TemporaryFile;

/// Makes one lossless format of another: the source becomes a temporary WAV where the encoder can't read it,
/// the encoder runs, the tags follow. What is peculiar to a format is in its recipe.
class TranscodeTask : public CodecTask
{
public:
    /// A type of source that is made a WAV first: by a tool, or in this process.
    struct WavSource
    {
        QStringView fileType;
        /// Null where the status line stays.
        const char *status;
        const ToolStep *tool;
    };

    /// A type of source whose tags are copied.
    struct TaggedSource
    {
        QStringView fileType;
        const char *status;
    };

    struct Recipe
    {
        const char *firstStatus;
        std::span<const WavSource> wavSources;
        const char *extension;
        ToolStep encoder;
        std::span<const TaggedSource> taggedSources;
        /// Whether tags that can't be copied fail the job. Where they don't, they still keep the original
        /// from being deleted.
        bool tagFailureFails = false;
        /// Whether outputs of other sources are tagged too, with nothing.
        bool tagsOthers = false;
        /// Whether the encoder reads every other type of source by itself; otherwise only WAV.
        bool readsOtherSources = false;
        bool keepsWavWhenCancelled = false;
    };

    struct Options
    {
        QString level;
        bool verify = false;
    };

    TranscodeTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                  const Recipe &recipe, Options options);

protected:
    void doStartTask() override;
    /// Makes the output of a WAV file or of a source that the encoder reads.
    virtual void encode(const QString &input);
    /// Finishes the encoded output: the tags.
    virtual void finish();

private:
    void makeOutput();
    bool makeWav(const WavSource &source, const QString &wav);
    void tagsNotCopied(const QString &reason);

    const Recipe &m_recipe;
    const Options m_options;
};

} // namespace kruv
