// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "tabs/FileList.h"
#include "tabs/TabHost.h"
#include "tasks/FileCommit.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace kruv {

/// What every tab shares: its list of input files, how files come into it, and the prompts of its command.
/// Holds no widgets; the window, the command line and the tests drive it alike. Main thread only.
class BaseTab : public QObject
{
    Q_OBJECT
public:
    /// `label` is the tab's key in the tab view. `host` must outlive the tab.
    BaseTab(const QString &label, TabHost &host);

    const QString &label() const { return m_label; }
    FileList &fileList() { return m_fileList; }
    /// What the tab's table shows: the list itself, where a tab has no more to tell of its files.
    virtual QAbstractItemModel &tableModel() { return m_fileList; }
    QStringList fileNames() const { return m_fileList.paths(); }
    const QString &pathToCommandLineTools() const { return m_pathToCommandLineTools; }
    QString tool(const QString &name) const { return m_pathToCommandLineTools + u'/' + name; }

    /// Whether folders are walked on the background pool, so that adding returns at once (the window), or on
    /// the spot, so that it is done when it returns.
    void setIntakeInBackground(bool inBackground) { m_intakeInBackground = inBackground; }
    bool worksInBackground() const { return m_intakeInBackground; }
    /// Whether files handed in are still on their way into the list.
    bool isTakingIn() const { return m_intakes > 0; }

    /// Adds paths without any check of what they are.
    void addFile(const QString &path) { addCheckedFiles({path}); }
    void addCheckedFiles(const QStringList &paths);
    /// The folders among what was handed in, which stand for the files below them.
    const QStringList &folders() const { return m_folders; }
    /// Of files that were found for the tab by others.
    void noteFolders(const QStringList &folders) { m_folders += folders; }
    /// Why there is no job that makes a file of that format, a sentence.
    static QString withoutJobText(const QString &format);
    /// Expands folders, keeps what the tab accepts, and reports once what it did not.
    void addFiles(const QStringList &paths);
    /// Files below `path` that the tab accepts; extensions of those it doesn't go into `badExtensions`.
    QStringList getFiles(const QString &path, QSet<QString> &badExtensions) const;

    /// Whether refused files are also reported by an alert. Off where a listener of filesRefused() tells of
    /// them.
    void setAlertsOfRefusedFiles(bool alerts) { m_alertsOfRefusedFiles = alerts; }
    /// Tells the person of files that can't be worked on because their names are not valid UTF-8.
    static void reportUndecodable(UserInterface &userInterface, const QStringList &names);
    /// Tells the person of folders that could not be looked into.
    static void reportUnreadable(UserInterface &userInterface, const QStringList &folders);

    void addButtonClick();
    void clearButtonClick() { clearFiles(); }
    virtual void clearFiles();
    void changeDisplayOptions() { displayRelevantOptions(); }
    void deleteSelectedRows(const QList<int> &rows);
    void filterGivenExtension(const QString &extension);

    /// Shows and hides, enables and disables the tab's options to fit its state.
    virtual void displayRelevantOptions() {}
    /// The tab's command: asks its questions, builds jobs and hands them to the queue.
    virtual void executeCommand() {}

    /// Full paths of the entries of `folder` with that extension in any case, in listing order. Not
    /// recursive.
    static QStringList getFilesFromOutputDirectory(const QString &folder, const QString &extension);

Q_SIGNALS:
    void takingInChanged();
    /// Files were refused at an intake, with their extensions ("" for none).
    void filesRefused(const QStringList &extensions, int count);

protected:
    /// Runs after every addition.
    virtual void filesAdded() {}
    /// Whether a file that it can't work on is not refused, as its command does something with it all the
    /// same.
    virtual bool goesAlong(const QString & /*file*/) const { return false; }

    TabHost &host() const { return m_host; }
    void submit(std::span<const std::shared_ptr<KruvTask>> jobs, const QString &plan = {})
    {
        m_host.submit(m_label, jobs, plan);
    }
    void submit(const std::shared_ptr<KruvTask> &job) { submit(std::span(&job, 1)); }
    std::optional<QString> chooseOutputFolder();
    std::optional<QString> openSavePanel(const QString &message, const QString &title,
                                         const QString &proposedName);
    void showBadFileMessage(const QString &text);

    /// Asks before originals are deleted, where the person wants to be asked. True when the command may go
    /// on.
    bool confirmDeletion(bool deleteOriginals);
    /// Asks whether outputs that are there already may be replaced; `detail` names them, or is empty.
    bool askToOverwrite(const QString &detail);
    /// What becomes of the files that have the outputs' names: asks whether they may be replaced where there
    /// are such. Nothing when the person doesn't go on.
    std::optional<FileCommit::Existing> agreeOnExisting(const QStringList &outputs);
    /// Tells the person which of the command's files nothing here converts to `format`.
    void reportWithoutJob(const QStringList &files, const QString &format);
    /// The person's button text where an alert has only one.
    static QString acknowledgeButton() { return QStringLiteral("OK"); }

private:
    struct Intake;
    static Intake collect(const QStringList &paths, const QSet<QString> &listed, const QString &label,
                          const TabHost &host, const std::stop_token &stop);
    void take(Intake intake);
    void takeInBackground(std::function<Intake(std::stop_token)> collect);
    void countIntakes(int change);

    const QString m_label;
    TabHost &m_host;
    FileList m_fileList;
    QStringList m_folders;
    const QString m_pathToCommandLineTools;
    bool m_intakeInBackground = false;
    int m_intakes = 0;
    BackgroundWork m_work;
    bool m_alertsOfRefusedFiles = true;
};

} // namespace kruv
