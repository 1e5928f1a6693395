// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/Trash.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QUrl>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

// Not by Qt 6.4, which tries for ever where the trash can't be written to, and moves files into the current
// folder where there is none. https://specifications.freedesktop.org/trash-spec/1.0/

namespace kruv {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Trash)
};

/// A folder for trash, and what the paths in it are relative to; an empty text where they are absolute.
struct Place
{
    QString folder;
    QString top;
};

[[noreturn]] void refuse(const QString &reason)
{
    throw std::runtime_error(reason.toStdString());
}

QString reasonFor(int error)
{
    return Text::tr("it could not be moved to the trash (%1)")
        .arg(QString::fromLocal8Bit(std::strerror(error)));
}

std::optional<struct stat> statusOf(const QString &path)
{
    struct stat status = {};
    return lstat(QFile::encodeName(path).constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// False with errno set.
bool makeFolder(const QString &path)
{
    if (mkdir(QFile::encodeName(path).constData(), 0700) == 0) {
        return true;
    }
    const int error = errno;
    const bool isThere = QFileInfo(path).isDir();
    errno = error;
    return isThere;
}

/// The person's own trash; throws the reason where there is none.
Place homeTrash()
{
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const bool isPlaced =
        !qEnvironmentVariableIsEmpty("XDG_DATA_HOME") || !qEnvironmentVariableIsEmpty("HOME");
    if (!isPlaced || !QDir::isAbsolutePath(dataHome)) {
        refuse(Text::tr("there is no trash, as neither HOME nor XDG_DATA_HOME names a folder"));
    }
    Place place{dataHome + QStringLiteral("/Trash"), {}};
    if (!QDir().mkpath(dataHome) || !makeFolder(place.folder)) {
        refuse(Text::tr("the trash %1 can't be made").arg(place.folder));
    }
    return place;
}

/// The trash of the volume that is mounted at `top`: a shared one that was made rightly, or the person's.
Place volumeTrash(const QString &top)
{
    const QString owner = QString::number(getuid());
    const QString base = top.endsWith(u'/') ? top : top + u'/';
    const auto shared = statusOf(base + QStringLiteral(".Trash"));
    const QString inShared = base + QStringLiteral(".Trash/") + owner;
    if (shared && S_ISDIR(shared->st_mode) && (shared->st_mode & S_ISVTX) != 0 && makeFolder(inShared)) {
        return {inShared, base};
    }
    Place place{base + QStringLiteral(".Trash-") + owner, base};
    const bool made = makeFolder(place.folder);
    const auto status = statusOf(place.folder);
    if (!made || !status || !S_ISDIR(status->st_mode)) {
        refuse(Text::tr("the trash %1 can't be made").arg(place.folder));
    }
    return place;
}

/// That of a file in `folder`.
Place trashFor(const QString &folder)
{
    const Place home = homeTrash();
    const auto there = statusOf(home.folder);
    const auto here = statusOf(folder);
    return there && here && there->st_dev == here->st_dev ? home
                                                          : volumeTrash(QStorageInfo(folder).rootPath());
}

/// Writes where the file came from, under a name that is free. 0 or the error number.
int writeInfo(const QByteArray &infoPath, const QString &origin)
{
    const int file = open(infoPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) {
        return errno;
    }
    const QByteArray info =
        "[Trash Info]\nPath=" + QUrl::toPercentEncoding(origin, "/") + "\nDeletionDate=" +
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")).toLatin1() + '\n';
    const bool written = write(file, info.constData(), static_cast<std::size_t>(info.size())) == info.size();
    const int error = written ? 0 : errno;
    close(file);
    if (!written) {
        unlink(infoPath.constData());
    }
    return error;
}

/// 0 or the error number; what has the new name already stays.
int moveTo(const QByteArray &from, const QByteArray &to)
{
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) {
        return errno;
    }
    struct stat there = {};
    if (lstat(to.constData(), &there) == 0) {
        return EEXIST;
    }
    return std::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

/// What the trash calls the place that a file came from.
QString originOf(const Place &place, const QString &path)
{
    return place.top.isEmpty() ? path : QDir(place.top).relativeFilePath(path);
}

constexpr qsizetype longestName = 200; // bytes; a number and more is added to it

QByteArray nameFor(const QString &path)
{
    return QFile::encodeName(path.section(u'/', -1)).left(longestName);
}

QString infoOf(const QString &trashed)
{
    const QString name = trashed.section(u'/', -1);
    return trashed.section(u'/', 0, -3) + QStringLiteral("/info/") + name + QStringLiteral(".trashinfo");
}

bool isFrom(const QString &info, const QString &origin)
{
    QFile file(info);
    const QByteArray line = "\nPath=" + QUrl::toPercentEncoding(origin, "/") + '\n';
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(line);
}

int moveInto(const Place &place, const QString &path)
{
    if (!makeFolder(place.folder + QStringLiteral("/files")) ||
        !makeFolder(place.folder + QStringLiteral("/info"))) {
        return errno;
    }
    const QByteArray from = QFile::encodeName(path);
    const QString origin = originOf(place, path);
    constexpr int mostOfOneName = 100'000;
    const QByteArray name = nameFor(path);
    const QByteArray folder = QFile::encodeName(place.folder);
    int error = EEXIST;
    for (int number = 1; number < mostOfOneName && error == EEXIST; ++number) {
        const QByteArray freeName = number == 1 ? name : name + '.' + QByteArray::number(number);
        const QByteArray info = folder + "/info/" + freeName + ".trashinfo";
        error = writeInfo(info, origin);
        if (error == 0 && (error = moveTo(from, folder + "/files/" + freeName)) != 0) {
            unlink(info.constData());
        }
    }
    return error;
}

} // namespace

QString moveToTrash(const QString &path)
{
    const QString source = QFileInfo(path).absoluteFilePath();
    if (QFileInfo(source).isDir()) {
        return reasonFor(EISDIR);
    }
    try {
        const int error = moveInto(trashFor(QFileInfo(source).absolutePath()), source);
        return error == 0 ? QString() : reasonFor(error);
    } catch (const std::runtime_error &reason) {
        return QString::fromUtf8(reason.what());
    }
}

const QStringList &TrashListing::namesIn(const QString &trash)
{
    const auto known = m_names.constFind(trash);
    if (known != m_names.cend()) {
        return *known;
    }
    QStringList names =
        QDir(trash + QStringLiteral("/files")).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    std::ranges::sort(names);
    return *m_names.insert(trash, names);
}

QStringList TrashListing::from(const QString &path)
try {
    const Place place = trashFor(QFileInfo(path).absolutePath());
    const QString name = QFile::decodeName(nameFor(path));
    const QStringList &names = namesIn(place.folder);
    QStringList found;
    for (auto each = std::ranges::lower_bound(names, name); each != names.cend() && each->startsWith(name);
         ++each) {
        const QString trashed = place.folder + QStringLiteral("/files/") + *each;
        if (isFrom(infoOf(trashed), originOf(place, path))) {
            found.append(trashed);
        }
    }
    return found;
} catch (const std::runtime_error &) {
    return {};
}

QString restoreFromTrash(const QString &trashed, const QString &path)
{
    const int error = moveTo(QFile::encodeName(trashed), QFile::encodeName(path));
    if (error != 0) {
        return Text::tr("it could not be brought back from the trash (%1)")
            .arg(QString::fromLocal8Bit(std::strerror(error)));
    }
    QFile::remove(infoOf(trashed));
    return {};
}

} // namespace kruv
