// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"

#include "audio/ContentProbe.h"
#include "audio/FileHead.h"
#include "audio/LeadingTags.h"

namespace kruv {

FileStart::FileStart(const QString &path)
    : m_path(path)
{
    constexpr std::size_t enough = 64;
    FileHead file(FileDescriptor::openForReading(path));
    const auto bytes = file.bytes(LeadingTags::end(file), enough);
    m_bytes = QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

const AudioContent &FileStart::content() const
{
    if (!m_content) {
        m_content = ContentProbe::of(m_path);
    }
    return *m_content;
}

} // namespace kruv
