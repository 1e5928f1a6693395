// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/LossyWavSources.h"

namespace kruv::LossyWavSources {

namespace {

using ToolStep = CodecTask::ToolStep;
using WavSource = TranscodeTask::WavSource;
namespace Line = CodecCommandLine;
namespace Output = CodecOutput;

const ToolStep flac{"flac", Line::flacDecode, Output::flacDecode, "Decoding to WAV: %1%"};
// shntool reads WavPack and TTA like Shorten.
const ToolStep shntool{"shntool", Line::shntoolDecode, Output::shntool, "Decoding to WAV: %1%"};

// Opus spells WAV differently.
const ToolStep flacForOpus{"flac", Line::flacDecode, Output::flacDecode, "Decoding to Wav: %1%"};
const ToolStep shntoolForOpus{"shntool", Line::shntoolDecode, Output::shntool, "Decoding to Wav: %1%"};

constexpr const char *fromAlac = "Decoding ALAC to Wav";
constexpr const char *fromFlac = "Decoding FLAC to Wav";
constexpr const char *fromShorten = "Decoding SHN to Wav";
constexpr const char *fromWavpack = "Decoding Wavepack to Wav";
constexpr const char *fromTta = "Decoding TTA to Wav";

const WavSource forAac[] = {
    {u"SHN", fromShorten, &shntool},
    {u"FLAC", fromFlac, &flac},
    {u"WV", fromWavpack, &shntool},
    {u"TTA", fromTta, &shntool},
};
const WavSource forHeAac[] = {
    {u"M4A", fromAlac, nullptr},    {u"FLAC", fromFlac, &flac},  {u"SHN", fromShorten, &shntool},
    {u"WV", fromWavpack, &shntool}, {u"TTA", fromTta, &shntool},
};
const WavSource forOpus[] = {
    {u"M4A", fromAlac, nullptr},
    {u"FLAC", fromFlac, &flacForOpus},
    {u"SHN", fromShorten, &shntoolForOpus},
    {u"WV", fromWavpack, &shntoolForOpus},
    {u"TTA", fromTta, &shntoolForOpus},
    {u"AIF", nullptr, nullptr},
    {u"AIFF", nullptr, nullptr},
};

} // namespace

constinit const std::span<const WavSource> aac = forAac;
constinit const std::span<const WavSource> heAac = forHeAac;
constinit const std::span<const WavSource> opus = forOpus;

} // namespace kruv::LossyWavSources
