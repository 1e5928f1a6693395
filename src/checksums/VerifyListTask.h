// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/ListJob.h"
#include "checksums/ListText.h"

#include <QCoreApplication>

#include <vector>

namespace kruv {

/// Base of the jobs that verify one list: each line of it against the file it names, next to the list. The
/// report goes into the command's results.
class VerifyListTask : public ListJob
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyListTask)
public:
    enum class Outcome {
        Matched,
        Failed,
        Missing,
        /// The job was cancelled before it came to this line.
        Unchecked
    };
    /// What became of one line.
    struct Entry
    {
        QString name;
        Outcome outcome = Outcome::Unchecked;
        /// Why it isn't Matched, for a person; may be empty.
        QString message;
    };

    void startTask() override;
    void cancelTask() override;
    QString inputPath() const override { return m_fileName; }

    /// One for each line that was looked at, in the list's order. For after the end of the work.
    const std::vector<Entry> &entries() const { return m_entries; }
    /// Empty, or why the list itself could not be read.
    const QString &listProblem() const { return m_listProblem; }

protected:
    /// Texts that differ between the kinds of list.
    struct Kind
    {
        QString status;
        /// "MD5" and so on; the report begins with it.
        QString name;
        /// Characters that a line which isn't read begins with.
        QStringView comments;
    };
    /// What a line's check gives.
    struct Checked
    {
        Entry entry;
        /// Its line in the report, with the line break.
        QString report;
    };

    VerifyListTask(TaskCompletionSink *queue, const QString &fileName,
                   std::shared_ptr<KruvTaskResults> results, Kind kind);

    /// Any thread, several at once.
    virtual Checked check(const ListText::Line &line, FileProgress &progress) = 0;
    /// Whether the job can do its work; throws where it can't.
    virtual void prepare() {}
    /// What the report says after its lines; may correct entries.
    virtual QString afterwards(std::vector<Entry> &) { return {}; }

    const QString &folder() const { return m_folder; }
    bool isReport() const override { return true; }
    /// A name as a report shows it: without control characters, and cut where it is endless.
    static QString shown(const QString &name);
    /// Why a folder, a pipe or a device isn't looked at.
    static QString notAFile() { return tr("not a regular file"); }
    /// True for what a file can be called.
    static bool isPossibleName(const QString &name);

private:
    void doStartTask() override;
    QList<ListText::Line> readList();
    QString firstLine() const;

    const QString m_fileName;
    const QString m_folder;
    const Kind m_kind;
    std::vector<Entry> m_entries;
    QString m_listProblem;
};

} // namespace kruv
