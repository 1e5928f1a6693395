// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"W64"};
constexpr const char *mediaTypes[] = {"audio/x-w64"};

bool isWave64(const FileStart &start)
{
    constexpr qsizetype form = 24; // behind its GUID and the file's size
    return start.bytes().startsWith("riff\x2E\x91\xCF\x11") && start.bytes().mid(form, 4) == "wave";
}

} // namespace

/// Wave64, which audio editors write where WAV ends; read in this process.
const Format wave64Format{
    .id = "w64",
    .label = u"Wave64",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = isWave64,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
