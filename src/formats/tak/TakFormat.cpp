// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"TAK"};
constexpr const char *mediaTypes[] = {"audio/x-tak"};

} // namespace

/// TAK, read in this process.
const Format takFormat{
    .id = "tak",
    .label = u"TAK",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("tBaK"); },
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
