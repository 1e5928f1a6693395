// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/HistoryWindow.h"

#include "base/Preferences.h"
#include "gui/HistoryExport.h"
#include "gui/HistoryJobsModel.h"
#include "gui/HistoryRunsModel.h"
#include "gui/PromptStyle.h"
#include "gui/Spacing.h"
#include "gui/WindowPlace.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "tabs/KruvController.h"
#include "tabs/Resumption.h"
#include "tabs/Undoing.h"

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <stdexcept>

using namespace std::chrono_literals;

namespace kruv {

namespace {

const QString historyPlaceKey = QStringLiteral("historyWindowPlace");
constexpr QSize firstHistorySize(860, 560);

History openHistory()
{
    const QString path = JournalFile::usualPath();
    if (path.isEmpty()) {
        throw std::runtime_error(
            HistoryWindow::tr("Nothing is recorded, because KRUV_JOURNAL is set to nothing.").toStdString());
    }
    return History(path);
}

/// Columns as wide as what they usually hold, but for the one that takes the rest.
void setColumns(QTreeView &list, int wide, const QStringList &examples)
{
    QHeaderView &header = *list.header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(QHeaderView::Interactive);
    const int margin = 4 * header.fontMetrics().averageCharWidth();
    for (int column = 0; column < examples.size(); ++column) {
        header.resizeSection(column, header.fontMetrics().horizontalAdvance(examples[column]) + margin);
    }
    header.setSectionResizeMode(wide, QHeaderView::Stretch);
}

} // namespace

HistoryWindow::HistoryWindow(KruvController &controller)
    : QWidget(nullptr, Qt::Window)
    , m_controller(controller)
    , m_runsModel(new HistoryRunsModel(this))
    , m_jobsModel(new HistoryJobsModel(this))
    , m_search(new QLineEdit(this))
    , m_runs(makeList(m_runsModel, "historyRuns", tr("Runs")))
    , m_jobs(makeList(m_jobsModel, "historyJobs", tr("Jobs of the run")))
    , m_lists(new QSplitter(Qt::Vertical, this))
    , m_message(new QLabel(this))
    , m_details(new QLabel(this))
    , m_summary(new QLabel(this))
{
    setObjectName(QStringLiteral("historyWindow"));
    setWindowTitle(tr("History"));
    makeColumns();
    makeSearch();
    makeDetails();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(outerMargin, outerMargin, outerMargin, outerMargin);
    layout->addWidget(m_search);
    layout->addWidget(m_message, 1);
    layout->addWidget(m_lists, 1);
    layout->addWidget(m_details);
    layout->addLayout(makeButtons());
    makeShortcuts();
    m_runs->setFocus();
    connect(m_runs->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!m_choosing) {
            m_jobs->setCurrentIndex({});
            showSelectedRun();
        }
    });
    connect(m_jobs->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &HistoryWindow::showDetails);
    m_refreshSoon.setSingleShot(true);
    connect(&m_refreshSoon, &QTimer::timeout, this, &HistoryWindow::refresh);
    connect(&controller.taskQueue(), &KruvTaskQueue::taskEnded, this, [this] {
        if (isVisible() && !m_refreshSoon.isActive()) {
            m_refreshSoon.start(1s);
        }
    });
    resize(firstHistorySize);
    WindowPlace::restore(*this, controller.preferences(), historyPlaceKey);
}

QTreeView *HistoryWindow::makeList(QAbstractItemModel *model, const char *name, const QString &title)
{
    auto *list = new QTreeView(this);
    list->setObjectName(QString::fromLatin1(name));
    list->setAccessibleName(title);
    list->setModel(model);
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setAllColumnsShowFocus(true);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    return list;
}

void HistoryWindow::makeColumns()
{
    const QString date =
        QLocale().toString(QDateTime(QDate(2028, 12, 28), QTime(22, 58)), QLocale::ShortFormat);
    const QString state = tr("broken off");
    setColumns(*m_runs, HistoryRunsModel::What,
               {date, QString(), tr("%1 of %2 jobs done").arg(20000).arg(20000), state});
    setColumns(*m_jobs, HistoryJobsModel::Files,
               {date, state, QString(), QStringLiteral("88.88 MiB → 88.88 MiB"), tr("Seconds"),
                QStringLiteral("same-audio")});
    m_lists->addWidget(m_runs);
    m_lists->addWidget(m_jobs);
    m_lists->setStretchFactor(0, 1);
    m_lists->setStretchFactor(1, 2);
    m_lists->setChildrenCollapsible(false);
}

void HistoryWindow::makeSearch()
{
    m_search->setObjectName(QStringLiteral("historySearch"));
    m_search->setPlaceholderText(
        tr("What became of a file? Type its path, a part of its name, or the MD5 of its samples (Ctrl+F)"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_searchSoon.setSingleShot(true);
    m_searchSoon.setInterval(300ms);
    connect(m_search, &QLineEdit::textChanged, this, [this] { m_searchSoon.start(); });
    connect(&m_searchSoon, &QTimer::timeout, this, &HistoryWindow::search);
}

void HistoryWindow::makeDetails()
{
    m_message->setObjectName(QStringLiteral("historyMessage"));
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_details->setObjectName(QStringLiteral("historyDetails"));
    m_details->setAccessibleName(tr("The selected job"));
    m_details->setTextFormat(Qt::PlainText);
    m_details->setWordWrap(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_details->hide();
    m_summary->setObjectName(QStringLiteral("historySummary"));
}

QLayout *HistoryWindow::makeButtons()
{
    m_continue = makeButton("historyContinue", tr("&Continue"), &HistoryWindow::continueRun);
    m_forget = makeButton("historyForget", tr("&Forget"), &HistoryWindow::forgetRun);
    m_forget->setToolTip(tr("Don't offer to continue this run any more; the files stay as they are"));
    m_undo = makeButton("historyUndo", tr("&Undo…"), &HistoryWindow::undoRun);
    m_undo->setToolTip(tr("Take back what this run did to names, tags and originals"));
    m_export = makeButton("historyExport", tr("&Export…"), &HistoryWindow::exportJobs);
    m_export->setToolTip(tr("Save the jobs that are listed, as CSV or JSON"));
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_summary, 1);
    for (QPushButton *button : {m_continue, m_forget, m_undo, m_export}) {
        bar->addWidget(button);
    }
    return bar;
}

QPushButton *HistoryWindow::makeButton(const char *name, const QString &text, void (HistoryWindow::*action)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setEnabled(false);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

void HistoryWindow::makeShortcuts()
{
    const auto onKeys = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    onKeys(QKeySequence::Find, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    onKeys(QKeySequence::Refresh, [this] { refresh(); });
    onKeys(QKeySequence::Save, [this] { m_export->click(); });
    const auto copy = [this] { QGuiApplication::clipboard()->setText(m_details->text()); };
    connect(new QShortcut(QKeySequence::Copy, m_jobs, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, copy);
}

void HistoryWindow::showRun(std::optional<std::int64_t> run)
{
    if (run) {
        m_search->clear();
        m_wanted = run;
    }
    show();
    raise();
    activateWindow();
    refresh();
}

void HistoryWindow::hideEvent(QHideEvent *event)
{
    WindowPlace::store(*this, m_controller.preferences(), historyPlaceKey);
    QWidget::hideEvent(event);
}

void HistoryWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void HistoryWindow::refresh()
{
    m_controller.journal().waitUntilWritten();
    m_readingRuns.abandon();
    m_readingRuns.start([this](const std::stop_token &) -> BackgroundWork::Outcome {
        try {
            Runs runs;
            openHistory().forEachRun([&runs](const HistoryRun &run) { runs.all.push_back(run); });
            for (const HistoryRun &run : Resumption::candidates(History::Jobs::NotDone)) {
                runs.resumable.insert(run.id);
            }
            for (const HistoryRun &run : Undoing::candidates()) {
                runs.undoable.insert(run.id);
            }
            return [this, runs = std::move(runs)] { take(runs); };
        } catch (const std::runtime_error &error) {
            return [this, problem = QString::fromUtf8(error.what())] {
                say(tr("The journal can't be read: %1.").arg(problem));
            };
        }
    });
}

void HistoryWindow::say(const QString &message)
{
    m_message->setText(message);
    m_message->setVisible(!message.isEmpty());
    m_lists->setVisible(message.isEmpty());
    m_search->setEnabled(message.isEmpty());
}

void HistoryWindow::take(const Runs &runs)
{
    const auto before = selectedRun();
    m_resumable = runs.resumable;
    m_undoable = runs.undoable;
    const QScopedValueRollback choosing(m_choosing, true);
    m_runsModel->setRuns(runs.all);
    say(runs.all.empty() ? tr("Nothing was done yet. What you convert, check, tag and rename is listed here.")
                         : QString());
    if (isSearching()) {
        return search();
    }
    const std::int64_t wanted = m_wanted ? *m_wanted : before ? before->id : 0;
    m_wanted.reset();
    const int row = std::max(0, m_runsModel->rowOf(wanted));
    m_runs->setCurrentIndex(m_runsModel->index(row, 0));
    m_runs->scrollTo(m_runs->currentIndex());
    showSelectedRun();
}

std::optional<HistoryRun> HistoryWindow::selectedRun() const
{
    const QModelIndex current = m_runs->currentIndex();
    return current.isValid() ? std::optional(m_runsModel->runs()[static_cast<std::size_t>(current.row())])
                             : std::nullopt;
}

bool HistoryWindow::isSearching() const
{
    return !m_search->text().trimmed().isEmpty();
}

void HistoryWindow::showSelectedRun()
{
    if (const auto run = selectedRun()) {
        m_search->clear();
        m_jobs->setColumnHidden(HistoryJobsModel::When, true);
        loadJobs([id = run->id](const History &history, const History::EntryVisitor &visit) {
            history.forEachEntryOf(id, visit);
        });
    } else {
        takeJobs({});
    }
}

void HistoryWindow::search()
{
    m_searchSoon.stop();
    if (!isSearching()) {
        return m_runs->currentIndex().isValid() ? void() : refresh();
    }
    const QScopedValueRollback choosing(m_choosing, true);
    m_runs->setCurrentIndex({});
    m_jobs->setColumnHidden(HistoryJobsModel::When, false);
    loadJobs([text = m_search->text().trimmed()](const History &history, const History::EntryVisitor &visit) {
        history.find(History::Question::from(text), visit);
    });
}

void HistoryWindow::loadJobs(const Find &find)
{
    m_readingJobs.abandon();
    m_readingJobs.start([this, find](const std::stop_token &) -> BackgroundWork::Outcome {
        std::vector<HistoryEntry> entries;
        try {
            find(openHistory(), [&entries](const HistoryEntry &entry) { entries.push_back(entry); });
        } catch (const std::runtime_error &) { // said where the runs are read
        }
        return [this, entries = std::move(entries)]() mutable { takeJobs(std::move(entries)); };
    });
    updateButtons();
}

void HistoryWindow::takeJobs(std::vector<HistoryEntry> entries)
{
    const int row = m_jobs->currentIndex().row();
    const int position = m_jobs->verticalScrollBar()->value();
    const auto count = static_cast<int>(entries.size());
    m_jobsModel->setEntries(std::move(entries));
    if (row >= 0 && row < count) { // the same run as it goes on
        m_jobs->setCurrentIndex(m_jobsModel->index(row, 0));
        m_jobs->verticalScrollBar()->setValue(position);
    }
    m_summary->setText(isSearching() && count == 0 ? tr("Nothing is recorded of that.")
                                                   : tr("%n job(s)", nullptr, count));
    showDetails();
    updateButtons();
}

void HistoryWindow::showDetails()
{
    const QModelIndex current = m_jobs->currentIndex();
    m_details->setVisible(current.isValid());
    m_details->setText(current.isValid() ? m_jobsModel->detailsOf(current.row()) : QString());
}

void HistoryWindow::updateButtons()
{
    const auto run = selectedRun();
    m_continue->setEnabled(run && m_resumable.contains(run->id));
    m_continue->setToolTip(
        m_continue->isEnabled() || !run || run->done + run->failed + run->undone == run->all
            ? tr("Do what is left of this run")
            : tr("Only conversions go on in the window; kruv resume goes on with some other "
                 "runs, or says what to type"));
    m_forget->setEnabled(run && m_resumable.contains(run->id));
    m_undo->setEnabled(run && m_undoable.contains(run->id));
    m_export->setEnabled(m_jobsModel->rowCount() > 0);
}

void HistoryWindow::continueRun()
{
    act([this](const HistoryRun &run) {
        Resumption::goOn(run, m_controller.taskQueue(), m_controller.runRecorder());
    });
}

void HistoryWindow::forgetRun()
{
    act([](const HistoryRun &run) { Resumption::forget(run); });
}

void HistoryWindow::undoRun()
{
    act([this](const HistoryRun &run) { Q_EMIT undoWanted(run); });
}

void HistoryWindow::act(const std::function<void(const HistoryRun &)> &action)
{
    const auto run = selectedRun();
    if (!run) {
        return;
    }
    try {
        action(*run);
    } catch (const std::runtime_error &error) {
        PromptStyle::message(this, tr("That could not be done."), QString::fromUtf8(error.what()))->open();
    }
    refresh();
}

void HistoryWindow::exportJobs()
{
    HistoryExport::askAndSave(this, m_jobsModel->entries());
}

} // namespace kruv
