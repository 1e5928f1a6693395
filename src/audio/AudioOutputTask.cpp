// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioOutputTask.h"

#include "audio/SourceCheck.h"

namespace kruv {

void AudioOutputTask::inspectSources()
{
    for (const QString &remark : SourceCheck::inspect(sources())) {
        addRemark(remark);
    }
}

QString AudioOutputTask::sourceComplaint()
{
    return SourceCheck::complaint(sources(), [this] { return !cancelled(); });
}

} // namespace kruv
