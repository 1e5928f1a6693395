// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>
#include <utility>

namespace kruv {

/// Goes through the files that a person hands in: a folder stands for everything below it, hidden entries
/// included, in the order the file system lists it. ".DS_Store", ".TOC.plist", and what the program itself
/// has there only for a while (StagingName.h) are passed over. Links to folders are followed, each real
/// folder once. Unreadable folders yield nothing, nor do the pipes, sockets and devices in a folder and links
/// to them. Any thread.
class FolderWalk
{
public:
    using Visitor = std::function<void(const QString &path)>;

    /// A walk whose `stop` is requested ends early.
    explicit FolderWalk(std::stop_token stop = {})
        : m_stop(std::move(stop))
    {
    }

    /// Calls `visit` for `path` itself when it is no folder, else for every file below it.
    void walk(const QString &path, const Visitor &visit);

    /// Those of the given paths that are folders.
    const QStringList &folders() const { return m_folders; }
    /// Entries passed over because their names are not valid UTF-8, as they can best be shown.
    const QStringList &undecodableNames() const { return m_undecodableNames; }
    /// Folders that could not be looked into.
    const QStringList &unreadableFolders() const { return m_unreadableFolders; }

private:
    void walkFolder(const QByteArray &folder, const Visitor &visit);
    void visitEntry(const QByteArray &folder, const char *name, unsigned char type, const Visitor &visit);

    const std::stop_token m_stop;
    QList<QByteArray> m_links; // to folders, yet to be followed
    QStringList m_folders;
    QStringList m_undecodableNames;
    QStringList m_unreadableFolders;
    class Visited;
    std::shared_ptr<Visited> m_visited;
};

} // namespace kruv
