// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/TranscodeRecipes.h"

namespace kruv::TranscodeRecipes {

namespace {

using ToolStep = CodecTask::ToolStep;
using WavSource = TranscodeTask::WavSource;
using TaggedSource = TranscodeTask::TaggedSource;
namespace Line = CodecCommandLine;
namespace Output = CodecOutput;

constexpr ToolStep flacDecoder{"flac", Line::flacDecode, Output::flacDecode, "Decoding to Wav: %1%"};
constexpr ToolStep shntoolDecoder{"shntool", Line::shntoolDecode, Output::shntoolRepeating,
                                  "Decoding to Wav: %1%"};
constexpr ToolStep wavpackDecoder{"wvunpack", Line::wvunpackToTemporary, Output::wavpack,
                                  "Decoding From Wavpack %1%"};

constexpr ToolStep wavpack{"wavpack", Line::wavpack, Output::wavpack, "Encoding to Wavpack: %1%", true};
constexpr ToolStep ttaenc{"ttaenc", Line::ttaenc, Output::ttaenc, "Encoding to TTA: %1%", true};
constexpr ToolStep mac{"mac", Line::macCompress, Output::mac,
                       "Encoding to Monkey's Audio: %1%   %2 seconds remaining", true};
constexpr ToolStep flac{"flac", Line::flacEncode, Output::flacEncode, "Encoding to Flac: %1% %2", true};

constexpr WavSource usualSources[] = {
    {u"M4A", "Decoding ALAC to Wav", nullptr},
    {u"FLAC", "Decoding FLAC to Wav", &flacDecoder},
    {u"SHN", "Decoding SHN to Wav", &shntoolDecoder},
    {u"AIF", nullptr, nullptr},
    {u"AIFF", nullptr, nullptr},
};
constexpr WavSource appleLosslessSource[] = {{u"M4A", nullptr, nullptr}};
constexpr WavSource wavpackSource[] = {{u"WV", nullptr, &wavpackDecoder}};

constexpr TaggedSource usualTags[] = {
    {u"FLAC", "Copying FLAC Tags"},
    {u"M4A", "Copying M4A Tags"},
    {u"AIF", "Copying Aiff Tags"},
    {u"AIFF", "Copying Aiff Tags"},
};

// The decoders as the Apple Lossless encoder uses them: it spells WAV in capitals.
constexpr ToolStep alacFlac{"flac", Line::flacDecode, Output::flacDecode, "Decoding to WAV: %1%"};
constexpr ToolStep alacShntool{"shntool", Line::shntoolDecode, Output::shntool, "Decoding to WAV: %1%"};
constexpr ToolStep alacMac{"mac", Line::macExtract, Output::mac,
                           "Decoding to WAV: %1%   %2 seconds remaining"};
constexpr ToolStep alacWvunpack{"wvunpack", Line::wvunpackToTemporary, Output::wavpack,
                                "Decoding to WAV: %1%"};
constexpr WavSource alacSources[] = {
    {u"SHN", "Decoding SHN to Wav", &alacShntool},
    {u"FLAC", "Decoding FLAC to Wav", &alacFlac},
    {u"APE", "Decoding APE to Wav", &alacMac},
    {u"WV", "Decoding Wavepack to Wav", &alacWvunpack},
};
constexpr TaggedSource alacTags[] = {
    {u"FLAC", "Copying FLAC Tags"},  {u"AIFF", "Copying AIFF Tags"}, {u"AIF", "Copying AIFF Tags"},
    {u"WV", "Copying Wavpack Tags"}, {u"APE", "Copying APE Tags"},   {u"M4A", "Copying M4A Tags"},
};

constexpr TaggedSource alacToFlacTags[] = {{u"M4A", "Writing Flac Tags"}};
constexpr TaggedSource alacToWavpackTags[] = {{u"M4A", "Writing Wavpack Tags"}};
constexpr TaggedSource alacToTTATags[] = {{u"M4A", nullptr}};
constexpr TaggedSource alacToApeTags[] = {{u"M4A", "Writing APE Tags"}};
constexpr TaggedSource wavpackToFlacTags[] = {{u"WV", "Writing FLAC Tags"}};

} // namespace

const TranscodeTask::Recipe toWavpack{"Encoding Wavpack", usualSources, "wv", wavpack, usualTags};
const TranscodeTask::Recipe toTTA{"Encoding to TTA", usualSources, "tta", ttaenc, usualTags};
const TranscodeTask::Recipe toApe{"Encoding to Monkey's Audio", usualSources, "ape", mac, usualTags};

const TranscodeTask::Recipe toAppleLossless{
    .firstStatus = "Encoding to Apple Lossless",
    .wavSources = alacSources,
    .extension = "m4a",
    .encoder = {},
    .taggedSources = alacTags,
    .tagsOthers = true,
    .readsOtherSources = true,
    .keepsWavWhenCancelled = true,
};

const TranscodeTask::Recipe appleLosslessToFlac{
    "Encoding Apple Lossless to Flac", appleLosslessSource, "flac", flac, alacToFlacTags, true};
const TranscodeTask::Recipe appleLosslessToWavpack{
    "Encoding Apple Lossless to Wavpack", appleLosslessSource, "wv", wavpack, alacToWavpackTags, true};
const TranscodeTask::Recipe appleLosslessToTTA{"Encoding Apple Lossless to TTA", appleLosslessSource, "tta",
                                               ttaenc, alacToTTATags};
const TranscodeTask::Recipe appleLosslessToApe{
    "Encoding Apple Lossless to APE", appleLosslessSource, "ape", mac, alacToApeTags, true};
const TranscodeTask::Recipe wavpackToFlac{"Encoding Wavpack to FLAC", wavpackSource, "flac", flac,
                                          wavpackToFlacTags,          true};

} // namespace kruv::TranscodeRecipes
