// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/LossySources.h"

#include "formats/Records.h"
#include "formats/ShntoolConversion.h"

#include <QtGlobal>

namespace kruv::LossySources {

namespace {

// shntool reads WavPack and TTA like Shorten.
const ToolStep shntool{"shntool", ShntoolConversion::decode, ShntoolConversion::read,
                       QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%")};
// Opus spells WAV differently.
const ToolStep shntoolForOpus{"shntool", ShntoolConversion::decode, ShntoolConversion::read,
                              QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to Wav: %1%")};

constexpr const char *fromAlac = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding ALAC to Wav");
constexpr const char *fromFlac = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding FLAC to Wav");
constexpr const char *fromShorten = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding SHN to Wav");
constexpr const char *fromWavpack = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding Wavepack to Wav");
constexpr const char *fromTta = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding TTA to Wav");

const SourceRule forAac[] = {
    {&appleLosslessFormat, fromAlac, nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying Apple Lossless Tags")},
    {&flacFormat, fromFlac, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying FLAC Tags"),
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%")},
    {&shortenFormat, fromShorten, &shntool},
    {&wavpackFormat, fromWavpack, &shntool},
    {&ttaFormat, fromTta, &shntool},
};
const SourceRule forOpus[] = {
    {&appleLosslessFormat, fromAlac, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying M4A Tags")},
    {&flacFormat, fromFlac, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying FLAC Tags")},
    {&shortenFormat, fromShorten, &shntoolForOpus},
    {&wavpackFormat, fromWavpack, &shntoolForOpus},
    {&ttaFormat, fromTta, &shntoolForOpus},
    {&aiffFormat, nullptr, nullptr},
};

} // namespace

constinit const std::span<const SourceRule> aac = forAac;
constinit const std::span<const SourceRule> opus = forOpus;

} // namespace kruv::LossySources
