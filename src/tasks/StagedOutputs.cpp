// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagedOutputs.h"

#include "base/FoldedNames.h"
#include "base/PathNames.h"
#include "tasks/DiskSync.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <mutex>
#include <stdexcept>
#include <sys/statvfs.h>

namespace kruv {

namespace {

[[noreturn]] void fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

[[noreturn]] void failAsTaken(const QString &path)
{
    fail(StagedOutputs::tr(
             "The output %1 already exists and was left as it is. Move the existing file away or choose "
             "another output folder.")
             .arg(path));
}

} // namespace

StagedOutputs::StagedOutputs(FileCommit::Existing existing)
    : m_existing(existing)
{
}

void StagedOutputs::requireOther(const QString &path, const QStringList &sources)
{
    const auto isOutput = [&path](const QString &source) { return FileStamp::isSameFile(source, path); };
    // A link's own place may be taken: the source stays.
    if (FileCommit::isTaken(path) && !QFileInfo(path).isSymLink() && std::ranges::any_of(sources, isOutput)) {
        fail(tr("%1 is the source itself and was left as it is: choose another output folder, or let the "
                "originals be deleted.")
                 .arg(path));
    }
}

QString StagedOutputs::add(const QString &path)
{
    return add(path, PathNames::lastPathComponent(path));
}

QString StagedOutputs::add(const QString &path, const QString &stagedName)
{
    if (m_existing == FileCommit::Existing::Keep && FileCommit::isTaken(path)) {
        failAsTaken(path);
    }
    requireOther(path, m_protected);
    if (findAlike(path)) {
        fail(tr("Two of the outputs would get the same name, %1.").arg(path));
    }
    if (QFile::encodeName(PathNames::lastPathComponent(path)).size() > NAME_MAX) {
        fail(tr("The output %1 can't be written: its name is too long. Shorten the name of the source.")
                 .arg(path));
    }
    if (QFileInfo(path).isDir()) {
        fail(tr("The output %1 can't be written: there is a folder of that name.").arg(path));
    }
    const QString staged = staging(PathNames::folderOf(path)).pathFor(stagedName);
    if (QFile::encodeName(staged).size() >= PATH_MAX) {
        fail(
            tr("The output %1 can't be written: its path is too long. Choose an output folder that is not so "
               "deep.")
                .arg(path));
    }
    m_outputs.push_back({path, staged});
    return m_outputs.back().staged;
}

StagingFolder &StagedOutputs::staging(const QString &folder)
{
    constexpr int tries = 5; // another job may remove a folder that it made in vain
    std::unique_ptr<StagingFolder> &made = m_folders[folder];
    for (int attempt = 1; !made; ++attempt) {
        if (m_makesFolders) {
            m_newFolders.push_back(std::make_unique<NewFolders>(folder));
        }
        try {
            made = std::make_unique<StagingFolder>(folder);
        } catch (const std::runtime_error &) {
            if (!m_makesFolders || attempt == tries || QFileInfo::exists(folder)) {
                throw;
            }
        }
    }
    return *made;
}

QString StagedOutputs::stagingFor(const QString &folder)
{
    return staging(folder).path();
}

QString StagedOutputs::scratch(const QString &folder, const QString &extension)
{
    return staging(folder).scratch(extension);
}

const StagedOutputs::Output *StagedOutputs::find(const QString &path) const
{
    const auto found = std::ranges::find(m_outputs, path, &Output::path);
    return found == m_outputs.end() ? nullptr : &*found;
}

/// One whose name the disk takes for this one: the later would be made over the earlier.
const StagedOutputs::Output *StagedOutputs::findAlike(const QString &path) const
{
    const QString key = FoldedNames::key(path);
    const auto found = std::ranges::find_if(m_outputs, [&](const Output &output) {
        return output.path == path ||
               (FoldedNames::key(output.path) == key &&
                PathNames::folderOf(output.path) == PathNames::folderOf(path) &&
                FoldedNames::areOne(PathNames::folderOf(path), PathNames::lastPathComponent(output.path),
                                    PathNames::lastPathComponent(path)));
    });
    return found == m_outputs.end() ? nullptr : &*found;
}

QStringList StagedOutputs::paths() const
{
    QStringList all;
    for (const Output &output : m_outputs) {
        all.append(output.path);
    }
    return all;
}

void StagedOutputs::withdraw(const QString &path)
{
    std::erase_if(m_outputs, [&path](const Output &output) { return output.path == path; });
}

QString StagedOutputs::stagedPath(const QString &path) const
{
    const Output *output = find(path);
    return output ? output->staged : QString();
}

bool StagedOutputs::wasMade(const QString &path) const
{
    const QFileInfo info(stagedPath(path));
    const bool isWhole = m_allowsEmpty || info.size() > 0;
    return info.isFile() && !info.isSymLink() && isWhole; // a link would end in what isn't ours
}

bool StagedOutputs::isShortOfSpace() const
{
    constexpr std::uint64_t enough = std::uint64_t{16} * 1024 * 1024;
    return std::ranges::any_of(m_folders, [](const auto &each) {
        struct statvfs volume = {};
        return statvfs(QFile::encodeName(each.first).constData(), &volume) == 0 && volume.f_blocks != 0 &&
               volume.f_bavail < enough / std::max(volume.f_frsize, 1UL);
    });
}

void StagedOutputs::requireMade() const
{
    for (const Output &output : m_outputs) {
        if (!wasMade(output.path)) {
            fail(tr("%1 was not made, though nothing complained.").arg(output.path));
        }
    }
}

void StagedOutputs::commit(bool durable)
{
    requireMade();
    QStringList staged;
    for (const Output &output : m_outputs) {
        staged.append(output.staged);
    }
    const QString problem = durable ? DiskSync(staged).run() : QString();
    if (!problem.isEmpty()) {
        fail(tr("The outputs could not be brought to the disk (%1).").arg(problem));
    }
    for (const Output &output : m_outputs) {
        commitOne(output);
    }
    if (durable) {
        bringNamesToDisk();
    }
}

/// With the files once more: FAT loses one whose entry reaches the disk before its clusters.
void StagedOutputs::bringNamesToDisk()
{
    QStringList places = m_committed;
    for (const auto &[folder, staging] : m_folders) {
        places += {folder, staging->path()};
    }
    for (const auto &each : m_newFolders) {
        places += each->places();
    }
    m_durable = DiskSync(places).run().isEmpty();
}

void StagedOutputs::requireAgreed(const QString &path) const
{
    const auto now = m_replaced ? FileStamp::of(path) : std::nullopt;
    if (now && !now->hasContentOf(*m_replaced)) {
        fail(tr("%1 was changed or made anew since it was agreed that it may be replaced. It was left as it "
                "is.")
                 .arg(path));
    }
}

void StagedOutputs::commitOne(const Output &output)
{
    if (m_existing == FileCommit::Existing::Replace && QFileInfo(output.path).isFile()) {
        QFile::setPermissions(output.staged,
                              QFile::permissions(output.path)); // where the file system has them
    }
    static std::mutex oneAfterAnother; // two jobs may replace one file by different paths
    const std::lock_guard lock(oneAfterAnother);
    requireAgreed(output.path);
    if (const auto problem = FileCommit::commit(output.staged, output.path, m_existing)) {
        takeBack();
        if (problem->nameIsTaken) {
            failAsTaken(output.path);
        }
        fail(tr("%1 could not get its name: %2.").arg(output.path, problem->text));
    }
    m_committed.append(output.path);
}

/// Those that took the place of another file stay: that one is gone.
void StagedOutputs::takeBack()
{
    if (m_existing == FileCommit::Existing::Replace) {
        return;
    }
    for (const QString &path : std::as_const(m_committed)) {
        FileCommit::commit(path, stagedPath(path), FileCommit::Existing::Keep);
    }
    m_committed.clear();
}

} // namespace kruv
