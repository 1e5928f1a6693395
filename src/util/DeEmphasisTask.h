// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "util/SoxTask.h"

#include <QCoreApplication>

namespace kruv {

/// Takes the pre-emphasis of some early discs out of one sound file.
class DeEmphasisTask : public SoxTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DeEmphasisTask)
public:
    /// What the output's name has before its extension.
    static QString suffix() { return QStringLiteral("-deemph"); }

    /// The caller adds the job to `results`.
    DeEmphasisTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                   std::shared_ptr<KruvTaskResults> results);
};

} // namespace kruv
