// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "journal/History.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <set>

class QAbstractItemModel;
class QLabel;
class QLineEdit;
class QPushButton;
class QSplitter;
class QTreeView;

namespace kruv {

class HistoryJobsModel;
class HistoryRunsModel;
class KruvController;

/// What was done: the runs, the jobs of the one that is selected, and what became of a file. Runs that were
/// broken off can be carried on from here, or forgotten.
class HistoryWindow : public QWidget
{
    Q_OBJECT
public:
    /// `controller` must outlive it.
    explicit HistoryWindow(KruvController &controller);

    /// Comes to the front, with that run selected where one is given, else what was.
    void showRun(std::optional<std::int64_t> run);

Q_SIGNALS:
    void undoWanted(const kruv::HistoryRun &run);

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Runs
    {
        std::vector<HistoryRun> all;
        std::set<std::int64_t> resumable;
        std::set<std::int64_t> undoable;
    };

    QTreeView *makeList(QAbstractItemModel *model, const char *name, const QString &title);
    void makeColumns();
    void makeSearch();
    void makeDetails();
    QLayout *makeButtons();
    QPushButton *makeButton(const char *name, const QString &text, void (HistoryWindow::*action)());
    void makeShortcuts();
    void refresh();
    void take(const Runs &runs);
    /// In place of the lists; empty for the lists.
    void say(const QString &message);
    void showSelectedRun();
    void search();
    using Find = std::function<void(const History &history, const History::EntryVisitor &visit)>;
    void loadJobs(const Find &find);
    void takeJobs(std::vector<HistoryEntry> entries);
    void showDetails();
    void updateButtons();
    std::optional<HistoryRun> selectedRun() const;
    bool isSearching() const;
    void act(const std::function<void(const HistoryRun &)> &action);
    void continueRun();
    void forgetRun();
    void undoRun();
    void exportJobs();

    KruvController &m_controller;
    HistoryRunsModel *m_runsModel;
    HistoryJobsModel *m_jobsModel;
    QLineEdit *m_search;
    QTreeView *m_runs;
    QTreeView *m_jobs;
    QSplitter *m_lists;
    QLabel *m_message; // where there is nothing to list
    QLabel *m_details;
    QLabel *m_summary;
    QPushButton *m_continue = nullptr;
    QPushButton *m_forget = nullptr;
    QPushButton *m_undo = nullptr;
    QPushButton *m_export = nullptr;
    std::set<std::int64_t> m_resumable;
    std::set<std::int64_t> m_undoable;
    std::optional<std::int64_t> m_wanted; // to be selected when the runs are read
    bool m_choosing = false;              // the window itself selects a run
    QTimer m_refreshSoon;
    QTimer m_searchSoon;
    BackgroundWork m_readingRuns;
    BackgroundWork m_readingJobs;
};

} // namespace kruv
