// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace kruv {

/// The begin of a file, by which its content is known. Throws AudioError for what can't be read.
class FileStart
{
public:
    explicit FileStart(const QString &path);

    const QString &path() const { return m_path; }
    /// The first 64 bytes behind the tags that begin the file.
    const QByteArray &bytes() const { return m_bytes; }
    /// What the file is by a longer look, which is taken when it is first asked for.
    const AudioContent &content() const;

private:
    const QString m_path;
    QByteArray m_bytes;
    mutable std::optional<AudioContent> m_content;
};

/// For formats that are known by their codec.
template <AudioContent::Codec... codecs> bool holdsCodec(const FileStart &start)
{
    return ((start.content().codec == codecs) || ...);
}

/// For formats that are known by their container.
template <AudioContent::Container... containers> bool isContainer(const FileStart &start)
{
    return ((start.content().container == containers) || ...);
}

} // namespace kruv
