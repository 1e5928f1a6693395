// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagingLock.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace kruv::StagingLock {

namespace {

constexpr qint64 day = qint64{24} * 60 * 60;
// Locks of other hosts can't be seen on every file system: long enough for any job.
constexpr qint64 longestJob = 7 * day;
constexpr qsizetype ownerParts = 4; // host, boot, process and its start

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray bootId()
{
    return contentOf(QStringLiteral("/proc/sys/kernel/random/boot_id")).trimmed();
}

/// Of a process, in ticks since the system's start; empty when there is no such process. A number that is
/// given again has another one.
QByteArray startOf(const QByteArray &process)
{
    const QByteArray status = contentOf(QStringLiteral("/proc/%1/stat").arg(QLatin1StringView(process)));
    constexpr qsizetype startField = 19; // of those behind the name, which stands in parentheses
    const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    const bool hasEnded = fields.constFirst() == "Z"; // only its parent has not asked for its end
    return hasEnded ? QByteArray() : fields.value(startField);
}

bool isVfat(const QString &folder)
{
    constexpr long vfat = 0x4D44;
    struct statfs volume = {};
    return statfs(QFile::encodeName(folder).constData(), &volume) == 0 && volume.f_type == vfat;
}

/// Seconds between the last change of `path` and that of a file made beside it now. The clock is the file
/// system's: that of a server may be another than ours. 0 where it can't be told.
qint64 ageOf(const QString &path)
{
    struct stat then = {};
    struct stat now = {};
    if (stat(QFile::encodeName(path).constData(), &then) != 0) { // before the probe changes a folder's time
        return 0;
    }
    const QByteArray probe = QFile::encodeName(path.section(u'/', 0, -2) + QStringLiteral("/probe"));
    const int file = open(probe.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    const bool known = file >= 0 && fstat(file, &now) == 0;
    if (file >= 0) {
        close(file);
        unlink(probe.constData());
    }
    return known ? now.st_mtim.tv_sec - then.st_mtim.tv_sec : 0;
}

bool isGone(const QString &stagingFolder, const QString &lock)
{
    const QByteArray content = contentOf(lock);
    const QList<QByteArray> owner = content.trimmed().split('\n');
    const bool isWhole = owner.size() == ownerParts;
    if (!isWhole && !content.isEmpty()) {
        return false; // somebody else's file; ours is empty where a crash took what was written
    }
    if (!isWhole || owner[0] != QSysInfo::machineHostName().toUtf8()) {
        return ageOf(lock) > longestJob;
    }
    if (owner[1] != bootId()) {
        // After a crash files of FAT may share their clusters until the volume was checked.
        return !isVfat(stagingFolder);
    }
    return startOf(owner[2]) != owner[3];
}

} // namespace

QString fileName()
{
    return QStringLiteral("lock");
}

QByteArray thisProcess()
{
    static const QByteArray boot = bootId();
    const QByteArray process = QByteArray::number(getpid());
    return QSysInfo::machineHostName().toUtf8() + '\n' + boot + '\n' + process + '\n' + startOf(process) +
           '\n';
}

bool hasEnded(const QByteArray &process)
{
    const QList<QByteArray> owner = process.trimmed().split('\n');
    return owner.size() == ownerParts && owner[0] == QSysInfo::machineHostName().toUtf8() &&
           (owner[1] != bootId() || startOf(owner[2]) != owner[3]);
}

int create(const QString &stagingFolder)
{
    const QByteArray path = QFile::encodeName(stagingFolder + u'/' + fileName());
    int lock = open(QFile::encodeName(stagingFolder).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    const bool comesWhole = lock >= 0;
    if (!comesWhole) {
        lock = open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    }
    const QByteArray owner = thisProcess();
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(lock);
    if (lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) == 0 &&
        write(lock, owner.constData(), static_cast<std::size_t>(owner.size())) == owner.size() &&
        (!comesWhole ||
         linkat(AT_FDCWD, handle.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0)) {
        return lock;
    }
    const int error = errno;
    if (lock >= 0) {
        close(lock);
    }
    errno = error;
    return -1;
}

State stateOf(const QString &stagingFolder)
{
    const QString path = stagingFolder + u'/' + fileName();
    const int lock = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (lock < 0) {
        // What holds files is a person's folder that happens to have the name.
        const bool isEmpty =
            QDir(stagingFolder)
                .isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
        return isEmpty ? State::Bare : State::InUse;
    }
    const bool stale = flock(lock, LOCK_EX | LOCK_NB) == 0 && isGone(stagingFolder, path);
    close(lock);
    return stale ? State::Stale : State::InUse;
}

} // namespace kruv::StagingLock
