// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/FileStamp.h"
#include "tasks/FileCommit.h"
#include "tasks/NewFolders.h"
#include "tasks/StagingFolder.h"

#include <QCoreApplication>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace kruv {

/// The outputs of one job on their way: each is made in a staging folder beside its final place and gets its
/// final name when all are complete. Until then nothing of the job can be seen, and what is not committed
/// vanishes with the object. Any thread, one at a time; throws std::runtime_error in words for a person.
class StagedOutputs
{
    Q_DECLARE_TR_FUNCTIONS(kruv::StagedOutputs)
public:
    /// What the rule for existing files is, for all outputs alike.
    explicit StagedOutputs(FileCommit::Existing existing);

    /// No output may take the place of one of these. Before the outputs are announced.
    void protect(const QStringList &sources) { m_protected = sources; }

    /// Only this file is replaced, as it is now; nothing: whatever is there. For a single output.
    void replaceOnly(const std::optional<FileStamp> &file) { m_replaced = file; }

    /// Throws where an output would take the place of one of these.
    static void requireOther(const QString &path, const QStringList &sources);

    /// Folders of outputs that are not there are made. Before the outputs are announced.
    void makeFolders() { m_makesFolders = true; }

    /// An output without a byte is whole: a copy of an empty file. Else it counts as not made.
    void allowEmpty() { m_allowsEmpty = true; }

    /// Announces an output and returns where it is to be made: under its final name, in a staging folder.
    /// Throws when there is a file of that name that is not to be replaced, or when nothing can be written
    /// there.
    QString add(const QString &path);
    /// The same for an output that the tool names differently while it makes it.
    QString add(const QString &path, const QString &stagedName);

    /// The output that was announced as `path` will not be made after all.
    void withdraw(const QString &path);

    /// The final paths of those that are announced.
    QStringList paths() const;
    /// Whether none is announced.
    bool isEmpty() const { return m_outputs.empty(); }

    /// Where the output is made that was announced as `path`.
    QString stagedPath(const QString &path) const;
    /// The folder that outputs for `folder` are made in.
    QString stagingFor(const QString &folder);
    /// A place for audio between two steps, in that folder. Nothing is created.
    QString scratch(const QString &folder, const QString &extension);

    /// Whether the file is there and not empty, where it may not be.
    bool wasMade(const QString &path) const;

    /// Throws when an output was not made, in words for a person.
    void requireMade() const;
    /// Whether a disk that they lie on is full, or so nearly that writes may have failed.
    bool isShortOfSpace() const;

    /// Gives every output its final name, or none; throws when one was not made. `durable`: bring them to the
    /// disk before and after, so that a power cut can't take them back; needed before an original goes.
    void commit(bool durable);
    /// Final paths of what was committed.
    const QStringList &committed() const { return m_committed; }
    /// Whether they were brought to the disk, with their names.
    bool isDurable() const { return m_durable; }

private:
    struct Output
    {
        QString path;
        QString staged;
    };
    StagingFolder &staging(const QString &folder);
    const Output *find(const QString &path) const;
    const Output *findAlike(const QString &path) const;
    void commitOne(const Output &output);
    void requireAgreed(const QString &path) const;
    void bringNamesToDisk();
    void takeBack();

    const FileCommit::Existing m_existing;
    QStringList m_protected;
    std::optional<FileStamp> m_replaced;
    bool m_makesFolders = false;
    bool m_allowsEmpty = false;
    std::vector<std::unique_ptr<NewFolders>> m_newFolders; // outlive what is in them
    std::map<QString, std::unique_ptr<StagingFolder>> m_folders;
    std::vector<Output> m_outputs;
    QStringList m_committed;
    bool m_durable = false;
};

} // namespace kruv
