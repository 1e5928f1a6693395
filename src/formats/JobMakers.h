// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/DecodeCodecTask.h"
#include "formats/LossyTask.h"
#include "platform/Resources.h"

#include <memory>

namespace kruv {

/// Makers of jobs for a format's record.
template <const Format *target>
std::shared_ptr<ConversionTask> makeTranscodeTask(TaskCompletionSink *queue, const ConversionRequest &request)
{
    return std::make_shared<TranscodeTask>(queue, request, *target);
}

template <const Format *target>
std::shared_ptr<ConversionTask> makeLossyTask(TaskCompletionSink *queue, const ConversionRequest &request)
{
    return std::make_shared<LossyTask>(queue, request, *target);
}

template <class Job>
std::shared_ptr<ConversionTask> makeConversionTask(TaskCompletionSink *queue,
                                                   const ConversionRequest &request)
{
    return std::make_shared<Job>(queue, request);
}

template <const DecodeRecipe *recipe>
std::shared_ptr<ConversionTask> makeDecodeTask(TaskCompletionSink *queue, const ConversionRequest &request)
{
    return std::make_shared<DecodeCodecTask>(queue, request, *recipe);
}

/// `tool` of the resources folder is run with `flag` and the file.
template <class Job>
std::shared_ptr<KruvTask> makeTestTask(const char *tool, const char *flag, TaskCompletionSink *queue,
                                       const QString &file, std::shared_ptr<KruvTaskResults> results)
{
    return std::make_shared<Job>(std::move(results), queue, toolPath(QString::fromLatin1(tool)),
                                 QStringList{QString::fromLatin1(flag), file});
}

} // namespace kruv
