// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/EditLog.h"

#include <algorithm>

namespace kruv {

namespace {

// Of one file. Pictures fit; formats that spread their tags over the whole file, when it is long, don't.
constexpr qint64 mostKept = qint64{4} * 1024 * 1024;

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

void EditLog::add(FileEdit back)
{
    m_size += back.size();
    m_edits.push_back(m_size > mostKept ? FileEdit() : std::move(back));
}

QByteArray EditLog::packed() const
{
    if (m_edits.empty() || m_size > mostKept) {
        return {};
    }
    std::vector<FileEdit> lastFirst = m_edits;
    std::ranges::reverse(lastFirst);
    return FileEdit::pack(lastFirst);
}

} // namespace kruv
