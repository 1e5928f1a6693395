// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/HistoryStates.h"

#include <QString>

#include <functional>

namespace kruv {

/// How the history is told: for a person, or for programs.
class HistoryReport
{
public:
    /// Takes pieces of a text, one after another.
    using Sink = std::function<void(const QString &piece)>;

    virtual ~HistoryReport() = default;

    virtual void beginRuns() {}
    virtual void run(const HistoryRun &run) = 0;
    virtual void beginEntriesOf(const HistoryRun &run) = 0;
    virtual void beginFound() {}
    virtual void entry(const HistoryEntry &entry) = 0;

protected:
    HistoryStates &states() { return m_states; }

private:
    HistoryStates m_states;
};

} // namespace kruv
