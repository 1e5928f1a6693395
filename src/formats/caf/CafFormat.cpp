// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"CAF"};
constexpr const char *mediaTypes[] = {"audio/x-caf"};

/// The container holds lossy codecs, too; those files are not of this format.
bool isLosslessCaf(const FileStart &start)
{
    return start.bytes().startsWith("caff") && start.content().kind == AudioContent::Kind::Lossless;
}

} // namespace

/// Core Audio files of PCM or Apple Lossless; read in this process.
const Format cafFormat{
    .id = "caf",
    .label = u"CAF",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = isLosslessCaf,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
