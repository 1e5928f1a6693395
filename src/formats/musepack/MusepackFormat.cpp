// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ContentProbe.h"
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
    .isContent =
        [](const FileStart &start) {
            const auto container = ContentProbe::of(start.path).container;
            return container == AudioContent::Container::MusepackSv7 ||
                   container == AudioContent::Container::MusepackSv8;
        },
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
