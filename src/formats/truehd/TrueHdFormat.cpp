// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"THD", u"MLP"};
constexpr const char *mediaTypes[] = {"audio/vnd.dolby.mlp"};

} // namespace

/// Bare streams of MLP and TrueHD, read in this process.
const Format trueHdFormat{
    .id = "truehd",
    .label = u"TrueHD",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = isContainer<AudioContent::Container::Mlp>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
