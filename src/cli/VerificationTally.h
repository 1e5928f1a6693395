// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/VerifyListTask.h"

#include <QObject>

#include <array>
#include <cstddef>

namespace kruv {

class KruvTaskQueue;

/// Counts what verify jobs found, file by file. Main thread.
class VerificationTally : public QObject
{
    Q_OBJECT
public:
    /// `json`: each file is also written as an object on a line of its own.
    VerificationTally(KruvTaskQueue &queue, bool json);

    /// Writes the counts to standard output.
    void writeCounts() const;
    /// A list that names no file has verified nothing, and so isn't a match.
    bool allMatched() const;

private:
    void taskEnded(const KruvTask &task);
    void count(const QString &list, const VerifyListTask::Entry &entry);

    int counted(VerifyListTask::Outcome outcome) const
    {
        return m_counts.at(static_cast<std::size_t>(outcome));
    }

    const bool m_json;
    std::array<int, 4> m_counts{}; // by outcome
    int m_unusableLists = 0;
};

} // namespace kruv
