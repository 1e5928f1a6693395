// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/SoxSampleRateConversionTask.h"

#include "formats/Records.h"

namespace kruv {

SoxSampleRateConversionTask::SoxSampleRateConversionTask(TaskCompletionSink *queue, const QString &fileName,
                                                         const QString &sampleRate, const QString &outputPath,
                                                         std::shared_ptr<KruvTaskResults> results)
    : SoxTask(queue, fileName, outputPath,
              {.status = tr("Converting Sample Rate to %1 kHz").arg(sampleRate),
               .suffix = suffix(),
               .effect = {QStringLiteral("rate"), sampleRate + u'k'},
               .progress = tr("Converting Sample Rate: %1%"),
               .failure = tr("Error in sample rate conversion %1"),
               .tagged = {&aiffFormat},
               .sampleRate = sampleRate.toDouble() * 1000},
              std::move(results))
{
}

} // namespace kruv
