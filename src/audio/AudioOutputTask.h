// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/OutputTask.h"

namespace kruv {

/// A job that makes files of audio files. Sources without audio are refused. Where the job fails, its sources
/// are decoded here once more: a tool's words seldom tell which of them is damaged, and how.
class AudioOutputTask : public OutputTask
{
protected:
    using OutputTask::OutputTask;

    void inspectSources() final;
    QString sourceComplaint() final;
};

} // namespace kruv
