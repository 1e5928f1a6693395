// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagingReuse.h"

#include "tasks/StagingLock.h"

#include <QFile>

#include <algorithm>
#include <deque>
#include <mutex>
#include <unistd.h>

namespace kruv {

namespace {

using Place = StagingReuse::Place;

/// More than jobs of one album run at once, few enough that an interrupted run over many folders leaves
/// little.
constexpr std::size_t mostWaiting = 8;

std::mutex lock;
int users = 0;
std::deque<Place> waiting; // the longest wait first

void remove(const Place &place)
{
    // Some file systems keep a name for a file that is still open, and the folder would stay.
    QFile::remove(place.path + u'/' + StagingLock::fileName());
    close(place.lock);
    rmdir(QFile::encodeName(place.path).constData());
}

} // namespace

StagingReuse::StagingReuse()
{
    const std::lock_guard guard(lock);
    ++users;
}

StagingReuse::~StagingReuse()
{
    const std::lock_guard guard(lock);
    if (--users == 0) {
        std::ranges::for_each(waiting, remove);
        waiting.clear();
    }
}

std::optional<Place> StagingReuse::take(const QString &folder)
{
    const std::lock_guard guard(lock);
    const auto found = std::ranges::find(waiting, folder, &Place::folder);
    if (found == waiting.end()) {
        return std::nullopt;
    }
    const Place place = *found;
    waiting.erase(found);
    if (!QFile::exists(place.path + u'/' + StagingLock::fileName())) {
        remove(place); // the folder was moved or cleared meanwhile
        return std::nullopt;
    }
    return place;
}

void StagingReuse::handBack(const Place &place)
{
    const std::lock_guard guard(lock);
    if (users == 0) {
        remove(place);
        return;
    }
    waiting.push_back(place);
    if (waiting.size() > mostWaiting) {
        remove(waiting.front());
        waiting.pop_front();
    }
}

} // namespace kruv
