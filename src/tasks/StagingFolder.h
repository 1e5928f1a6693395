// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/StagingReuse.h"

#include <QCoreApplication>
#include <QString>

namespace kruv {

/// A hidden folder in which a job makes its outputs, inside the folder that they will lie in and so on the
/// same file system. A lock that dies with the process marks it as in use; those of dead processes are swept.
/// It goes with the object, and what was not moved out of it goes too. Any thread.
class StagingFolder
{
    Q_DECLARE_TR_FUNCTIONS(kruv::StagingFolder)
public:
    /// Makes one inside `folder`. Throws std::runtime_error, in words for a person, when nothing can be
    /// written there.
    explicit StagingFolder(const QString &folder);
    ~StagingFolder();
    StagingFolder(const StagingFolder &) = delete;
    StagingFolder &operator=(const StagingFolder &) = delete;

    const QString &path() const { return m_place.path; }
    /// Where a file of that name is made. Nothing is created.
    QString pathFor(const QString &name) const { return m_place.path + u'/' + name; }
    /// A place for audio on its way from one step to the next; no two are alike. Nothing is created.
    QString scratch(const QString &extension);

    /// Throws what the constructor would, as far as that is known without trying. A folder that is not there
    /// is judged by the nearest one above it that is.
    static void requirePossible(const QString &folder);

    /// Removes what processes that are gone left behind in `folder`.
    static void sweep(const QString &folder);

private:
    void make(const QString &folder);
    int lock();
    void empty();

    StagingReuse::Place m_place;
    int m_scratchFiles = 0;
};

} // namespace kruv
