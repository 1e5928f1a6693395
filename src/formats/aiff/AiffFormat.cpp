// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/wav/AiffToWavAndViceVersaTask.h"
#include "tags/TagAccess.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"AIFF", u"AIF"};
constexpr const char *mediaTypes[] = {"audio/x-aiff"};

bool isAiff(const FileStart &start)
{
    const QByteArray kind = start.bytes().mid(8, 4);
    return start.bytes().startsWith("FORM") && (kind == "AIFF" || kind == "AIFC");
}

} // namespace

/// AIFF and AIFF-C.
const Format aiffFormat{
    .id = "aiff",
    .label = u"AIFF",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true,
                .encode = true,
                .checksum = true,
                .shntool = true,
                .fix = true,
                .lossy = true,
                .tags = true},
    .isContent = isAiff,
    .decode = makeConversionTask<AiffToWavAndViceVersaTask>,
    .tags = &TagAccesses::aiff,
};

} // namespace kruv
