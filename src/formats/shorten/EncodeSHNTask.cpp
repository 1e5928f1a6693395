// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/shorten/EncodeSHNTask.h"

#include "base/PathNames.h"
#include "formats/PlainWav.h"
#include "formats/Records.h"
#include "formats/ShntoolConversion.h"

namespace kruv {

EncodeSHNTask::EncodeSHNTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : TranscodeTask(queue, request, shortenFormat)
{
}

bool EncodeSHNTask::readsItself() const
{
    return TranscodeTask::readsItself() && (&sourceFormat() != &wavFormat || isRiffWav(fileName()));
}

void EncodeSHNTask::encode(const QString &input)
{
    runShntool(ShntoolConversion::convert(shortenFormat.extension(), PathNames::folderOf(staged()), input),
               ShntoolConversion::readRepeating, tr("Encoding to SHN: %1%"));
    if (toolWords().contains(u"child encoder process")) {
        appendResults(
            tr("Shorten holds 8 or 16 bits a sample; other audio, or a full disk, stops its encoder.\n"));
    }
}

} // namespace kruv
