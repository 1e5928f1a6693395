// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"AAC"};
constexpr const char *mediaTypes[] = {"audio/aac"};

} // namespace

/// AAC without a container, as broadcasts are recorded; read in this process.
const Format adtsFormat{
    .id = "adts",
    .label = u"AAC stream",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true},
    .isContent = isContainer<AudioContent::Container::Adts>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
