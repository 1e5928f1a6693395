// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/DeEmphasisTask.h"

#include "formats/Records.h"

namespace kruv {

DeEmphasisTask::DeEmphasisTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                               std::shared_ptr<KruvTaskResults> results)
    : SoxTask(queue, fileName, outputPath,
              {.status = tr("Applying DeEmphasis"),
               .suffix = suffix(),
               .effect = {QStringLiteral("deemph")},
               .progress = tr("Applying de-emphasis: %1%"),
               .failure = tr("Error in deemph %1"),
               .tagged = {&flacFormat, &aiffFormat}},
              std::move(results))
{
}

} // namespace kruv
