// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"
#include "audio/AudioOutputTask.h"
#include "audio/AudioStreamFormat.h"
#include "formats/ConversionRequest.h"
#include "formats/ToolStep.h"

#include <QCoreApplication>

#include <optional>

namespace kruv {

struct Format;

/// Makes one file of another. The source is taken for what its content is, and refused where the target can't
/// hold its audio, before any tool starts. The steps are runs of tools or conversions in this process.
class ConversionTask : public AudioOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ConversionTask)
public:
    ConversionTask(TaskCompletionSink *queue, const ConversionRequest &request);

    QString outputPath() const override { return m_request.output; }
    JobOutline outline() const override;
    ProofNote proof() const override { return m_found ? *m_found : AudioOutputTask::proof(); }
    /// The bytes that are to be read.
    qint64 estimatedWork() const override;
    /// Of plain audio.
    qint64 foreseenBytes() const override;

protected:
    void foresee() final;
    /// Here those that make plain audio of the source.
    QStringList tools() const override;
    void make(StagedOutputs &outputs) final;
    bool wasMadeByAnother(const StagedOutputs &outputs) final;
    ProofNote prove(const StagedOutputs &outputs) override;
    /// Makes staged() of the source.
    virtual void makeOutput() = 0;
    /// What the output can hold; null for what has no limits of interest.
    virtual const Format *target() const { return nullptr; }

    const OptionValues &chosen() const { return m_request.options; }
    /// Of the source's content. From makeOutput() on.
    const Format &sourceFormat() const { return *m_sourceFormat; }
    /// What the source says of its audio, read when it is asked for the first time.
    const AudioFormatObject &sourceAudio() const;
    /// Where the output is made.
    const QString &staged() const { return m_staged; }
    /// Of a job that decodes: whether it makes AIFF, and not WAV.
    bool makesAiff() const;
    /// Writes the source's tags into an output that is AIFF, and shows `status` meanwhile.
    void copyTagsIntoAiff(const QString &status);
    /// The source as tools are to read it: itself, or a temporary copy of FLAC without the tags around it.
    QString sourceForTools();
    /// A place for a temporary WAV. Nothing is created.
    QString scratchWav();

    /// Runs a tool; `progress` is the status line, with %1 for the percentage and %2 for what goes with it.
    /// Returns whether the job may go on.
    bool run(const char *tool, const QStringList &arguments, ToolReader read, const QString &progress);
    bool runStep(const ToolStep &step, const ToolRequest &request);
    /// Runs a conversion of shntool's that writes into the folder of staged(), under the source's name.
    bool runShntool(const QStringList &arguments, ToolReader read, const QString &progress);
    /// What the latest tool printed, however the reads cut it; of very much the beginning and the end.
    const QString &toolWords() const { return m_toolWords; }
    /// Converts in this process. Returns whether the job may go on.
    bool convert(const QString &input, const QString &output, FormatType formatType, FileType fileType);
    /// Whether the source has more audio than a WAV of 32-bit sizes can hold, which is all that the tools
    /// write.
    bool isBeyondWav() const;
    /// Makes a WAV of the source: by `step`, or in this process where that is null or can't.
    bool makeWav(const QString &wav, const ToolStep *step);

private:
    void identifySource();
    void requireOwn(const StagedOutputs &outputs);
    bool lacksTagsOnly(const StagedOutputs &outputs);
    void takeOver();
    QString agreementTo(const QString &reason) const;
    void take(const ToolPiece &piece, const QString &progress);

    const ConversionRequest m_request;
    std::optional<ProofNote> m_found; // of an output that was there before
    const Format *m_sourceFormat = nullptr;
    mutable std::optional<AudioFormatObject> m_sourceAudio;
    StagedOutputs *m_outputs = nullptr;
    QString m_staged;
    QString m_toolWords;
};

} // namespace kruv
