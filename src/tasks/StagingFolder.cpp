// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagingFolder.h"

#include "base/StagingName.h"
#include "base/SystemError.h"
#include "tasks/StagingLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <chrono>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv {

namespace {

[[noreturn]] void cannotWrite(const QString &folder, int error)
{
    throw std::runtime_error(StagingFolder::tr("Nothing can be written in the output folder %1: %2.")
                                 .arg(folder, systemErrorText(error))
                                 .toStdString());
}

/// Looking once is enough: what this process leaves behind it removes by itself.
bool isFirstVisit(const QString &folder)
{
    static std::mutex lock;
    static QSet<QString> visited;
    const std::lock_guard guard(lock);
    const bool isNew = !visited.contains(folder);
    visited.insert(folder);
    return isNew;
}

} // namespace

StagingFolder::StagingFolder(const QString &folder)
{
    if (isFirstVisit(folder)) {
        sweep(folder);
    }
    if (const auto waiting = StagingReuse::take(folder)) {
        m_place = *waiting;
        return;
    }
    // Until it holds its lock, another process that begins may sweep it.
    constexpr std::chrono::seconds longest(5);
    const auto start = std::chrono::steady_clock::now();
    int error = 0;
    do {
        make(folder);
        error = lock();
    } while (error == ENOENT && std::chrono::steady_clock::now() - start < longest);
    if (error != 0) {
        cannotWrite(folder, error);
    }
}

void StagingFolder::requirePossible(const QString &folder)
{
    QString nearest = folder;
    int error = 0;
    do {
        error = access(QFile::encodeName(nearest).constData(), W_OK | X_OK) == 0 ? 0 : errno;
        if (error == ENOENT) {
            nearest = QFileInfo(nearest).path();
        }
    } while (error == ENOENT && nearest != u"/" && nearest != u".");
    if (error == 0 && !QFileInfo(nearest).isDir()) {
        error = ENOTDIR;
    }
    if (error != 0) {
        cannotWrite(folder, error);
    }
}

void StagingFolder::make(const QString &folder)
{
    m_place.folder = folder;
    // A full volume says of some file systems' new folders that they are there already.
    constexpr int tries = 5;
    int error = EEXIST;
    for (int attempt = 0; attempt < tries && error == EEXIST; ++attempt) {
        m_place.path = (folder.endsWith(u'/') ? folder : folder + u'/') + StagingName::random();
        error = mkdir(QFile::encodeName(m_place.path).constData(), 0777) == 0 ? 0 : errno;
    }
    if (error != 0) {
        cannotWrite(folder, error);
    }
}

/// Returns 0 or the error number.
int StagingFolder::lock()
{
    m_place.lock = StagingLock::create(m_place.path);
    const int error = m_place.lock < 0 ? errno : 0;
    if (error != 0) {
        QDir(m_place.path).removeRecursively();
    }
    return error;
}

StagingFolder::~StagingFolder()
{
    empty();
    StagingReuse::handBack(m_place);
}

void StagingFolder::empty()
{
    // Not by Qt, for which a name of other bytes than UTF-8 does not exist.
    const std::string lockName = StagingLock::fileName().toStdString();
    const std::string folder = QFile::encodeName(m_place.path).toStdString();
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string name = static_cast<const char *>(entry->d_name);
        std::error_code ignored;
        if (name != "." && name != ".." && name != lockName) {
            std::filesystem::remove_all(std::filesystem::path(folder) / name, ignored);
        }
    }
}

QString StagingFolder::scratch(const QString &extension)
{
    return pathFor(QStringLiteral("scratch-%1.%2").arg(QString::number(++m_scratchFiles), extension));
}

void StagingFolder::sweep(const QString &folder)
{
    const QStringList names = QDir(folder).entryList({StagingName::pattern()}, QDir::Dirs | QDir::Hidden);
    for (const QString &name : names) {
        const QString path = folder + u'/' + name;
        const auto state =
            StagingName::isFolder(name) ? StagingLock::stateOf(path) : StagingLock::State::InUse;
        if (state == StagingLock::State::Stale) {
            QDir(path).removeRecursively();
        } else if (state == StagingLock::State::Bare) {
            rmdir(QFile::encodeName(path).constData());
        }
    }
}

} // namespace kruv
