// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/ShntoolConvTask.h"

namespace kruv {

/// Shorten or Monkey's Audio to FLAC: shntool decodes the source into the encoder. `type` is the source's
/// upper-case extension; the tags of an "APE" source are copied.
class EncodeSHNToFlacTask final : public ShntoolConvTask
{
public:
    EncodeSHNToFlacTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments,
                        const QString &type, std::shared_ptr<KruvTaskResults> results);

protected:
    void copyTags() override;

private:
    const QString m_type;
};

} // namespace kruv
