// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"DSF", u"DFF"};
constexpr const char *mediaTypes[] = {"audio/x-dsf", "audio/x-dff"};

} // namespace

/// One-bit audio in DSF and DFF files. Reading it computes new samples, in this process.
const Format dsdFormat{
    .id = "dsd",
    .label = u"DSD",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::ChangesSignal,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = isContainer<AudioContent::Container::Dsf, AudioContent::Container::Dff>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
