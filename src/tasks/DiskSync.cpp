// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/DiskSync.h"

#include "base/SystemError.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <fcntl.h>
#include <linux/magic.h>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace kruv {

namespace {

using Clock = std::chrono::steady_clock;

/// File systems on which one call brings all that was written to the disk, and says so truly.
bool isKnownToSync(int descriptor)
{
    constexpr std::array<long, 6> known = {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC,   BTRFS_SUPER_MAGIC,
                                           TMPFS_MAGIC,      MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC};
    struct statfs volume = {};
    return fstatfs(descriptor, &volume) == 0 && std::ranges::find(known, volume.f_type) != known.end();
}

/// The trips to the disk of one volume. Who asks while one is under way shares the next.
class Volume
{
public:
    /// True when all that was written before is on the disk.
    bool bring(int descriptor)
    {
        std::unique_lock guard(m_lock);
        const std::uint64_t trip = m_begun + 1;
        while (m_ended < trip) {
            if (m_underWay) {
                m_changed.wait(guard);
            } else {
                travel(guard, descriptor);
            }
        }
        return m_lastFailed < trip;
    }

private:
    void travel(std::unique_lock<std::mutex> &guard, int descriptor)
    {
        m_underWay = true;
        // Some time for others to come along; a job that is alone goes at once.
        constexpr auto apart = std::chrono::milliseconds(50);
        m_changed.wait_until(guard, m_lastBegin + apart, [] { return false; });
        m_lastBegin = Clock::now();
        const std::uint64_t trip = ++m_begun;
        guard.unlock();
        const bool done = syncfs(descriptor) == 0;
        guard.lock();
        m_ended = trip;
        m_lastFailed = done ? m_lastFailed : trip;
        m_underWay = false;
        m_changed.notify_all();
    }

    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_underWay = false;
    std::uint64_t m_begun = 0;
    std::uint64_t m_ended = 0;
    std::uint64_t m_lastFailed = 0;
    Clock::time_point m_lastBegin;
};

Volume &volumeOf(int descriptor)
{
    static std::mutex lock;
    static std::map<dev_t, Volume> volumes;
    struct stat status = {};
    fstat(descriptor, &status);
    const std::lock_guard guard(lock);
    return volumes[status.st_dev];
}

/// Some file systems know of nothing to do for a folder.
bool isNothingToDo(int error)
{
    return error == EINVAL || error == ENOTSUP || error == ESPIPE;
}

} // namespace

DiskSync::DiskSync(const QStringList &paths)
{
    for (const QString &path : paths) {
        const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        m_items.append({path, descriptor, descriptor < 0 ? errno : 0});
    }
}

DiskSync::~DiskSync()
{
    for (const Item &item : std::as_const(m_items)) {
        if (item.descriptor >= 0) {
            close(item.descriptor);
        }
    }
}

/// What is large takes its time alone: others would have to wait for it.
bool DiskSync::mayShare() const
{
    constexpr off_t most = off_t{16} * 1024 * 1024;
    off_t size = 0;
    return std::ranges::all_of(m_items, [&size](const Item &item) {
        struct stat status = {};
        size += item.descriptor >= 0 && fstat(item.descriptor, &status) == 0 && S_ISREG(status.st_mode)
                    ? status.st_size
                    : 0;
        return item.descriptor >= 0 && size <= most && isKnownToSync(item.descriptor);
    });
}

bool DiskSync::shareTrip() const
{
    std::map<Volume *, int> descriptors; // one of each volume
    for (const Item &item : m_items) {
        descriptors.emplace(&volumeOf(item.descriptor), item.descriptor);
    }
    return std::ranges::all_of(descriptors, [](const auto &each) { return each.first->bring(each.second); });
}

QString DiskSync::run()
{
    const bool isThere = mayShare() && shareTrip();
    for (Item &item : m_items) {
        if (item.error != 0) {
            continue;
        }
        // Where the volume was brought to the disk, nothing is left to write, but this file's own errors
        // tell.
        const int result = isThere ? sync_file_range(item.descriptor, 0, 0, SYNC_FILE_RANGE_WAIT_BEFORE)
                                   : fsync(item.descriptor);
        if (result != 0 && !isNothingToDo(errno)) {
            item.error = errno;
        }
    }
    const auto failed = std::ranges::find_if(m_items, [](const Item &item) { return item.error != 0; });
    return failed == m_items.end()
               ? QString()
               : QStringLiteral("%1: %2").arg(failed->path, systemErrorText(failed->error));
}

} // namespace kruv
