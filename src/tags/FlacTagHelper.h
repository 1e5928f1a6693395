// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"

#include <QString>
#include <QStringList>

namespace kruv {

/// FLAC chores done by the tool metaflac of the resources folder. Every call blocks until the tool has ended
/// (not for the main thread), and none reports a failure: a failed run leaves the file as it was.
class FlacTagHelper
{
public:
    /// Sets one comment field in place of all fields of that key. An empty value is written only with
    /// `writeEmptyTags`.
    void writeTagForFile(const QString &path, const QString &tagKey, const QString &tagValue,
                         bool writeEmptyTags) const;
    void removeTagForFile(const QString &path, const QString &tagKey) const;
    /// A figure that the tool can't tell is 0.
    AudioFormatObject getFormatInfo(const QString &path) const;
    void removePadding(const QString &path) const;
};

} // namespace kruv
