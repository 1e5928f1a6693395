// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"
#include "formats/CodecCommandLine.h"
#include "formats/CodecOutput.h"
#include "tasks/OutputWatch.h"
#include "tasks/StagedTask.h"

namespace kruv {

/// What the staged conversions between lossless formats share: steps that are a tool's run or a conversion in
/// this process, and what becomes of an output that is not complete.
class CodecTask : public StagedTask
{
public:
    /// One run of a tool of the resources folder.
    struct ToolStep
    {
        const char *tool;
        CodecCommandLine::Builder arguments;
        CodecOutput::Reader read;
        /// Status line; %1 is the percentage, %2 what goes with it.
        const char *progress;
        /// The tool leaves what it has written when it fails or is ended. That is removed then.
        bool writesInPlace = false;
    };

    /// `folder` is where the output goes; its name is that of `fileName` with `extension`.
    CodecTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
              const QString &extension);

    const QString &outFile() const { return m_outFile; }
    QString outputPath() const override { return m_outFile; }

protected:
    const QString &folder() const { return m_folder; }
    const OutputWatch &output() const { return m_output; }
    /// Remembers how the output looks before the job; the first of its steps.
    void watchOutput() { m_output = OutputWatch(m_outFile); }

    bool runStep(const ToolStep &step, const CodecCommandLine::Request &request);
    /// Converts in this process. Returns whether the job may go on.
    bool convert(const QString &input, const QString &output, FormatType formatType, FileType fileType);

private:
    void take(const ToolStep &step, const CodecOutput::Piece &piece);

    const QString m_folder;
    const QString m_outFile;
    OutputWatch m_output;
    bool m_outputIsForeign = false;
};

} // namespace kruv
