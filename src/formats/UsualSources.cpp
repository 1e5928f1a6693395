// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/UsualSources.h"

#include "formats/Records.h"

namespace kruv {

namespace {

const SourceRule rules[] = {
    {&appleLosslessFormat, "Decoding ALAC to Wav", nullptr, "Copying M4A Tags"},
    {&flacFormat, "Decoding FLAC to Wav", nullptr, "Copying FLAC Tags"},
    {&shortenFormat, "Decoding SHN to Wav"},
    {&aiffFormat, nullptr, nullptr, "Copying Aiff Tags"},
};

} // namespace

constinit const std::span<const SourceRule> usualSources = rules;

} // namespace kruv
