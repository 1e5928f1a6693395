// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/PcmConversionTask.h"

#include "formats/Records.h"

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
    copyTagsIntoAiff(tagStatus());
}

} // namespace kruv
