// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/heaac/EncodeHEAACTask.h"

#include "formats/Records.h"
#include "formats/heaac/HeAacTool.h"

namespace kruv {

EncodeHEAACTask::EncodeHEAACTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : LossyTask(queue, request, heAacFormat)
{
}

void EncodeHEAACTask::encode(const QString &input)
{
    showStatus(tr("Encoding To HE-AAC"));
    run("aacplusenc", {input, staged(), QString::number(chosen().number(HeAacTool::bitRate))},
        HeAacTool::read, tr("Encoding to HE-AAC: %1%"));
}

} // namespace kruv
