// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/ShntoolConvTask.h"

namespace kruv {

/// Any source that shntool reads to Shorten.
class EncodeSHNTask final : public ShntoolConvTask
{
public:
    EncodeSHNTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments,
                  std::shared_ptr<KruvTaskResults> results)
        : ShntoolConvTask(queue, launchPath, arguments, QStringLiteral("Encoding to SHN: %1%"),
                          CodecOutput::shntoolRepeating)
    {
        setResults(std::move(results));
    }

protected:
    QString encoderLimits() const override
    {
        return QStringLiteral(
            "Shorten holds 8 or 16 bits a sample; other audio, or a full disk, stops its encoder.\n");
    }
};

} // namespace kruv
