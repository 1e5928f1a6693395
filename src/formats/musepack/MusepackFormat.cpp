// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"MPC", u"MPP", u"MP+"};
constexpr const char *mediaTypes[] = {"audio/x-musepack"};

} // namespace

/// Musepack, both generations of its stream, read in this process.
const Format musepackFormat{
    .id = "musepack",
    .label = u"Musepack",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true},
    .isContent = isContainer<AudioContent::Container::MusepackSv7, AudioContent::Container::MusepackSv8>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
