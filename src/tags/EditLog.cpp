// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/EditLog.h"

#include <algorithm>

namespace kruv {

namespace {

// Bytes of one file. Several pictures at their longest fit.
constexpr qint64 mostKept = qint64{64} * 1024 * 1024;

thread_local EditLog *currentLog = nullptr;

} // namespace

EditLog::EditLog()
{
    currentLog = this;
}

EditLog::~EditLog()
{
    currentLog = nullptr;
}

EditLog *EditLog::current()
{
    return currentLog;
}

void EditLog::add(std::optional<FileEdit> back)
{
    m_size += back ? back->size() : 0;
    m_isComplete = m_isComplete && back && m_size <= mostKept;
    if (m_isComplete) {
        m_edits.push_back(std::move(*back));
    } else {
        m_edits.clear();
    }
}

QByteArray EditLog::packed() const
{
    if (m_edits.empty()) {
        return {};
    }
    std::vector<FileEdit> lastFirst = m_edits;
    std::ranges::reverse(lastFirst);
    return FileEdit::pack(lastFirst);
}

} // namespace kruv
