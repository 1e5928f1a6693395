// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/PcmConversionTask.h"

#include "audio/EncodeCoreAudioSync.h"
#include "base/PathNames.h"
#include "tasks/OutputWatch.h"

namespace kruv {

PcmConversionTask::PcmConversionTask(TaskCompletionSink *queue, const QString &fileName,
                                     const QString &folder, const QString &format)
    : StagedTask(queue, fileName)
    , m_format(format)
    , m_outFile(PathNames::outputPath(folder, fileName, format.toLower()))
{
}

void PcmConversionTask::doStartTask()
{
    const OutputWatch output(m_outFile);
    showStatus(firstStatus());
    if (!outputIsFree()) {
        return;
    }
    EncodeCoreAudioSync conversion(*this, fileName(), m_outFile, FormatType::LinearPcm,
                                   toAiff() ? FileType::Aiff : FileType::Wave);
    if (conversion.doEncodeCall()) {
        finishOutput();
    }
    deleteSource(output);
}

} // namespace kruv
