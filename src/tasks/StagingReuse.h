// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

namespace kruv {

/// While one of these lives, the staging folder that a job has emptied goes to the next job with outputs in
/// the same folder; a few at most wait for that. ext4 looks at all that was deleted in the last seconds when
/// it makes a new folder, so that a thousand short jobs would take half as long again with a new one each.
/// Any thread.
class StagingReuse
{
public:
    StagingReuse();
    /// The last one removes what waits.
    ~StagingReuse();
    StagingReuse(const StagingReuse &) = delete;
    StagingReuse &operator=(const StagingReuse &) = delete;

    /// A staging folder with the lock that this process holds in it.
    struct Place
    {
        QString folder; // that it lies in
        QString path;
        int lock = -1;
    };
    /// An empty one inside `folder`, if one waits there.
    static std::optional<Place> take(const QString &folder);
    /// Takes back one that holds nothing but its lock: it waits, or it is removed.
    static void handBack(const Place &place);
};

} // namespace kruv
