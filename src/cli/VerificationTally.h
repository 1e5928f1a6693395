// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/VerifyListTask.h"

#include <QObject>

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
    bool allMatched() const { return m_failed == 0 && m_missing == 0 && m_unusableLists == 0; }

private:
    void taskEnded(const KruvTask &task);
    void count(const QString &list, const VerifyListTask::Entry &entry);

    const bool m_json;
    int m_matched = 0;
    int m_failed = 0;
    int m_missing = 0;
    int m_unusableLists = 0;
};

} // namespace kruv
