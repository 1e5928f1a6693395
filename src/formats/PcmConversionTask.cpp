// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/PcmConversionTask.h"

#include "formats/Records.h"
#include "formats/TagCopy.h"

#include <exception>

namespace kruv {

QString PcmConversionTask::firstStatus() const
{
    return tr("Decoding %1").arg(sourceFormat().label);
}

QString PcmConversionTask::tagStatus() const
{
    return tr("Copying %1 Tags").arg(sourceFormat().label);
}

void PcmConversionTask::makeOutput()
{
    showStatus(firstStatus());
    convert(fileName(), staged(), FormatType::LinearPcm, makesAiff() ? FileType::Aiff : FileType::Wave);
}

void PcmConversionTask::dress(StagedOutputs &)
{
    if (!makesAiff() || !sourceFormat().tags) {
        return;
    }
    showStatus(tagStatus());
    try {
        TagCopy::copy(sourceFormat(), fileName(), aiffFormat, staged());
    } catch (const std::exception &failure) {
        appendResults(tr("Error writing tags to file:\n%1").arg(QString::fromUtf8(failure.what())));
        failAfterwards(tr("its tags could not be copied"));
    }
}

} // namespace kruv
