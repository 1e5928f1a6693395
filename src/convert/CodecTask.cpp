// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/CodecTask.h"

#include "audio/EncodeCoreAudioSync.h"
#include "base/PathNames.h"
#include "platform/Resources.h"

#include <QFile>

namespace kruv {

CodecTask::CodecTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                     const QString &extension)
    : StagedTask(queue, fileName)
    , m_folder(folder)
    , m_outFile(PathNames::outputPath(folder, fileName, extension))
{
}

bool CodecTask::runStep(const ToolStep &step, const CodecCommandLine::Request &request)
{
    const QString name = PathNames::lastPathComponent(request.input);
    m_outputIsForeign = QFile::exists(request.output);
    const bool done = runTool(toolPath(QString::fromLatin1(step.tool)), step.arguments(request),
                              [&](const QString &text) { take(step, step.read(text, name)); });
    appendResults(QStringLiteral("\n")); // what follows is another tool's
    if (!done && step.writesInPlace && !m_outputIsForeign) {
        QFile::remove(request.output);
    }
    return done;
}

void CodecTask::take(const ToolStep &step, const CodecOutput::Piece &piece)
{
    if (piece.percentage) {
        const QString status = QString::fromUtf8(step.progress);
        showProgress(piece.detail.isEmpty() && !status.contains(u"%2")
                         ? status.arg(piece.percentageText)
                         : status.arg(piece.percentageText, piece.detail),
                     *piece.percentage);
    }
    m_outputIsForeign = m_outputIsForeign || piece.outputExists;
    appendResults(piece.results);
    if (piece.failed && !cancelled()) {
        setError(true);
    }
}

bool CodecTask::convert(const QString &input, const QString &output, FormatType formatType, FileType fileType)
{
    return mayGoOn() && EncodeCoreAudioSync(*this, input, output, formatType, fileType).doEncodeCall() &&
           mayGoOn();
}

} // namespace kruv
