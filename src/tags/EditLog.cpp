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

EditLog::EditLog(Listener listener)
    : m_listener(std::move(listener))
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

void EditLog::foretell(const FileEdit &back)
{
    if (m_listener && m_isComplete && m_size + back.size() <= mostKept) {
        m_foretold = packedWith(&back);
        m_editsForetold = m_edits.size() + 1;
        m_listener(m_foretold, back.sizeBefore());
    }
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
    return m_edits.size() == m_editsForetold ? m_foretold : packedWith(nullptr);
}

QByteArray EditLog::packedWith(const FileEdit *next) const
{
    std::vector<FileEdit> lastFirst = m_edits;
    if (next) {
        lastFirst.push_back(*next);
    }
    std::ranges::reverse(lastFirst);
    return FileEdit::pack(lastFirst);
}

} // namespace kruv
