// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/DecodeCodecTask.h"

#include "tasks/TemporaryFile.h"

namespace kruv {

namespace {
namespace Line = CodecCommandLine;
namespace Output = CodecOutput;
} // namespace

const DecodeCodecTask::Recipe DecodeCodecTask::wavpack{
    "Decoding From Wavpack",
    {"wvunpack", Line::wvunpack, Output::wavpack, "Deoding From Wavpack: %1%", true},
    Line::wvunpackForAiff,
};
const DecodeCodecTask::Recipe DecodeCodecTask::tta{
    "Decoding from TTA",
    {"ttaenc", Line::ttaenc, Output::ttaenc, "Decoding From TTA: %1%"},
    Line::ttaenc,
};
const DecodeCodecTask::Recipe DecodeCodecTask::ape{
    "Decoding From Monkey's Audio",
    {"mac", Line::macExtract, Output::mac, "Decoding from Monkey's Audio: %1%   %2 seconds remaining"},
    Line::macExtract,
};

DecodeCodecTask::DecodeCodecTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                                 const QString &format, const Recipe &recipe)
    : CodecTask(queue, fileName, folder, format == u"AIFF" ? QStringLiteral("aiff") : QStringLiteral("wav"))
    , m_recipe(recipe)
    , m_toAiff(format == u"AIFF")
{
}

void DecodeCodecTask::doStartTask()
{
    watchOutput();
    showStatus(QString::fromUtf8(m_recipe.firstStatus));
    const bool decoderAsks = !m_toAiff && m_recipe.decoder.writesInPlace;
    if (!decoderAsks && !outputIsFree()) {
        return;
    }
    if (m_toAiff) {
        decodeThroughWav();
    } else {
        runStep(m_recipe.decoder, {.input = fileName(), .output = outFile()});
    }
    deleteSource(output());
}

void DecodeCodecTask::decodeThroughWav()
{
    const TemporaryFile wav(folder(), QStringLiteral("wav"));
    ToolStep decoder = m_recipe.decoder;
    decoder.arguments = m_recipe.argumentsForAiff;
    if (runStep(decoder, {.input = fileName(), .output = wav.path()})) {
        convert(wav.path(), outFile(), FormatType::LinearPcm, FileType::Aiff);
    }
}

} // namespace kruv
