// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/wav/AiffToWavAndViceVersaTask.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"WAV"};
constexpr const char *mediaTypes[] = {"audio/x-wav", "audio/vnd.wave"};

bool isWav(const FileStart &start)
{
    const QByteArray kind = start.bytes().left(4);
    return (kind == "RIFF" || kind == "RF64" || kind == "BW64") && start.bytes().mid(8, 4) == "WAVE";
}

} // namespace

/// WAV, RF64 and BW64.
const Format wavFormat{
    .id = "wav",
    .label = u"WAV",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy =
        {.decode = true, .encode = true, .checksum = true, .shntool = true, .fix = true, .lossy = true},
    .isContent = isWav,
    .decode = makeConversionTask<AiffToWavAndViceVersaTask>,
};

} // namespace kruv
