// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "util/SoxTask.h"

#include <QCoreApplication>

namespace kruv {

/// Converts one sound file to another sample rate.
class SoxSampleRateConversionTask : public SoxTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SoxSampleRateConversionTask)
public:
    /// What the output's name has before its extension.
    static QString suffix() { return QStringLiteral("-converted"); }

    /// `sampleRate` in kHz, as sox reads it ("96", "44.1"). The caller adds the job to `results`.
    SoxSampleRateConversionTask(TaskCompletionSink *queue, const QString &fileName, const QString &sampleRate,
                                const QString &outputPath, std::shared_ptr<KruvTaskResults> results);
};

} // namespace kruv
