// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/FileEdit.h"
#include "tags/FlacPadding.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace kruv {

/// What a FLAC file's metadata is before another program edits its comments or padding, so that this can be
/// taken back. Pictures are not copied; an edit that touches them is none that is known how to take back.
class FlacMetadataCopy
{
public:
    explicit FlacMetadataCopy(const QString &path);

    /// The edit that makes the file that was of the one that is there now, empty where nothing was changed;
    /// nothing where it is not known.
    std::optional<FileEdit> wayBack() const;

private:
    const QString m_path;
    qint64 m_size = 0;
    std::vector<FlacSpan> m_parts;     // that last
    std::vector<QByteArray> m_between; // before each of them
};

} // namespace kruv
