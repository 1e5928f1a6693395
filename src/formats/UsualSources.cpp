// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/UsualSources.h"

#include "formats/Records.h"

#include <QtGlobal>

namespace kruv {

namespace {

const SourceRule rules[] = {
    {&appleLosslessFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding ALAC to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying M4A Tags")},
    {&flacFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding FLAC to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying FLAC Tags")},
    {&shortenFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding SHN to Wav")},
    {&aiffFormat, nullptr, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying Aiff Tags")},
};

} // namespace

constinit const std::span<const SourceRule> usualSources = rules;

} // namespace kruv
