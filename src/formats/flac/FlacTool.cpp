// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/FlacTool.h"

#include "formats/flac/FlacOptions.h"
#include "formats/flac/FlacOutput.h"
#include "tasks/ToolOutput.h"

#include <QtGlobal>

namespace kruv::FlacTool {

namespace {

ToolPiece readEncode(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::cleaned(piece);
    const auto progress = FlacOutput::encodeProgress(text, name);
    ToolPiece result;
    if (!progress.percentageText.isEmpty()) {
        result.percentage = progress.percentage;
        result.percentageText = progress.percentageText;
        result.detail = progress.ratioText;
    }
    result.results = text.toString();
    return result;
}

ToolPiece readDecode(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::cleaned(piece);
    ToolPiece result;
    result.percentage = FlacOutput::decodeProgress(text, name);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    }
    result.results = text.toString();
    return result;
}

/// Progress is no result where the decoding is but a step.
ToolPiece readToWav(QStringView piece, QStringView name)
{
    ToolPiece result = readDecode(piece, name);
    if (result.percentage) {
        result.results.clear();
    }
    return result;
}

QStringList decodeArguments(const ToolRequest &request)
{
    return FlacCommandLine::decode(
        {.source = request.input,
         .output = request.output,
         .keepForeignMetadata = request.options.isOn(FlacOptions::keepForeignMetadata),
         .throughErrors = request.options.isOn(FlacOptions::throughErrors),
         .toAiff = request.output.endsWith(u".aiff")});
}

QStringList temporaryArguments(const ToolRequest &request)
{
    return FlacCommandLine::decodeToTemporary(request.input, request.output);
}

} // namespace

FlacCommandLine::EncodeRequest encodeRequest(const ToolRequest &request)
{
    return {.source = request.input,
            .output = request.output,
            .level = request.options.number(FlacOptions::level),
            .lax = request.options.isOn(FlacOptions::lax),
            .keepForeignMetadata = request.options.isOn(FlacOptions::keepForeignMetadata),
            .verify = request.options.isOn(FlacOptions::verify)};
}

const ToolStep encode{
    "flac", [](const ToolRequest &request) { return FlacCommandLine::encode(encodeRequest(request)); },
    readEncode, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Flac: %1% %2")};
const ToolStep encodeTemporary{
    "flac",
    [](const ToolRequest &request) { return FlacCommandLine::encodeTemporary(encodeRequest(request)); },
    readEncode, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Flac: %1% %2")};
const ToolStep decode{"flac", decodeArguments, readDecode,
                      QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding Flac: %1%")};
const ToolStep toWav{"flac", temporaryArguments, readToWav,
                     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to Wav: %1%")};

} // namespace kruv::FlacTool
