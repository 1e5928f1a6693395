// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/heaac/EncodeHEAACTask.h"

#include "formats/LossyOutput.h"
#include "formats/Records.h"
#include "formats/heaac/HeAacOptions.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

ToolPiece read(QStringView piece, QStringView)
{
    ToolPiece result;
    result.percentage = LossyOutput::aacplusenc(piece);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    } else {
        result.results = u'\n' + ToolOutput::withoutBackspaces(piece).toString();
    }
    return result;
}

} // namespace

EncodeHEAACTask::EncodeHEAACTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : LossyTask(queue, request, heAacFormat)
{
}

void EncodeHEAACTask::encode(const QString &input)
{
    showStatus(QStringLiteral("Encoding To HE-AAC"));
    run("aacplusenc", {input, staged(), QString::number(chosen().number(HeAacOptions::bitRate))}, read,
        QStringLiteral("Encoding to HE-AAC: %1%"));
}

} // namespace kruv
