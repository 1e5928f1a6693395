// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/mp3/EncodeMP3Task.h"
#include "formats/mp3/Mp3Tool.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"MP3"};
constexpr const char *mediaTypes[] = {"audio/mpeg"};
constexpr AudioLimits limits{{}, 2, 1, 999'999};
constexpr const FormatOption *options[] = {&Mp3Tool::mode, &Mp3Tool::bitRate, &Mp3Tool::quality};

const SourceRule rules[] = {
    {&appleLosslessFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding ALAC to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying M4A Tags")},
    {&aiffFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "24 bit Aiff - translating"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying Aiff Tags")},
};
// What shntool reads by itself.
constexpr const Format *readsItself[] = {&flacFormat, &shortenFormat,      &wavpackFormat,
                                         &ttaFormat,  &monkeysAudioFormat, &aiffFormat};
const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to LAME MP3"),
                             .rules = rules,
                             .readsItself = readsItself};

/// A frame header of MPEG audio, layer III: https://www.iso.org/standard/22412.html
bool isMp3(const FileStart &start)
{
    if (start.bytes().size() < 4) {
        return false;
    }
    const auto at = [&start](qsizetype index) { return static_cast<unsigned char>(start.bytes()[index]); };
    return at(0) == 0xFF && (at(1) & 0xE6) == 0xE2 && (at(2) & 0xF0) != 0xF0 && (at(2) & 0x0C) != 0x0C;
}

constexpr FailureHint hints[] = {
    {u"Error writing mp3 output",
     QT_TRANSLATE_NOOP("FailureAdvice", "Free some space on the output folder's disk and try again.")},
};
constexpr QStringView chatter[] = {
    u"LAME \\d[\\s\\S]*?(qval=\\d+|\\(q=[\\d.]+\\))",
    u"[^\\n]*\\x{1B}\\[[AK]",
    u"\\r +Frame [^\\n]*",
    u"\\s*\\d+/ *\\d* +\\( *\\d+%\\)\\|[^\\n]*",
};
constexpr ToolWords words{hints, chatter};

} // namespace

/// MP3, by lame; read in this process.
const Format mp3Format{
    .id = "mp3",
    .label = u"LAME MP3",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true, .tags = true},
    .isContent = isMp3,
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeMP3Task>,
    .decode = makeConversionTask<PcmConversionTask>,
    .encoderTool = "lame",
    .recipe = &recipe,
    .tags = &TagAccesses::mp3,
    .words = &words,
};

} // namespace kruv
