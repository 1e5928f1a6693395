// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Review.h"

#include "base/InParallel.h"
#include "tabs/Estimates.h"
#include "tabs/TabHost.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>

namespace kruv {

namespace {

/// How long a plain command waits while files are looked at that nothing is known of, milliseconds.
constexpr qint64 patience = 300;
/// How long what is shown stays while files are looked at, milliseconds; and how many times as long at least
/// as it took to show it, so that the window stays at hand.
constexpr qint64 leastPause = 100;
constexpr qint64 pausesBetween = 9;

} // namespace

Review::Review(TabHost &host)
    : m_host(host)
{
    m_composeSoon.setSingleShot(true);
    connect(&m_composeSoon, &QTimer::timeout, this, &Review::compose);
}

void Review::begin(const ReviewSteps::Command &command, bool isWanted)
{
    end();
    m_command = std::make_shared<ReviewSteps::Command>(command);
    m_isWanted = isWanted;
    m_answers = {};
    Q_EMIT stateChanged();
    restart();
}

void Review::end()
{
    if (!m_command) {
        return;
    }
    m_work.abandon();
    m_composeSoon.stop();
    m_command.reset();
    m_base.reset();
    m_settled.reset();
    m_plan = {};
    m_looks.clear();
    m_isShown = false;
    Q_EMIT stateChanged();
}

void Review::restart()
{
    m_work.abandon();
    m_composeSoon.stop();
    m_base.reset();
    m_settled.reset();
    m_settling = 0;
    m_seen = 0;
    m_hasFlaws = false;
    m_looks.assign(static_cast<std::size_t>(m_command->files.size()), {});
    m_sinceBegin.start();
    const std::size_t threads = threadsForOneJob(m_host.taskQueue().maxThreads());
    m_work.start(
        [this, command = m_command, threads](const std::stop_token &stop) -> BackgroundWork::Outcome {
            auto base = std::make_shared<ReviewSteps::Base>(ReviewSteps::base(*command, threads, stop));
            return [this, base] { take(std::move(*base)); };
        });
}

void Review::take(ReviewSteps::Base base)
{
    if (!base.plan.entries().empty()) {
        m_command->addLists(base.plan);
    }
    m_rows = ReviewSteps::rowsOf(base.plan, m_command->files);
    m_base = std::make_shared<ReviewSteps::Base>(std::move(base));
    settle();
}

void Review::settle()
{
    ++m_settling;
    m_work.start([this, command = m_command, base = m_base,
                  choice = m_answers.existing](const std::stop_token &) -> BackgroundWork::Outcome {
        auto settled = std::make_shared<ReviewSteps::Settled>(ReviewSteps::settled(*command, *base, choice));
        return [this, settled, choice] {
            --m_settling;
            if (choice == m_answers.existing) {
                take(std::move(*settled));
            }
        };
    });
}

void Review::take(ReviewSteps::Settled settled)
{
    const bool isFirst = !m_settled;
    m_settled = std::move(settled);
    decide();
    if (!isUnderWay()) {
        return;
    }
    if (m_isShown) {
        compose();
    }
    if (isFirst) {
        lookAtMore();
    }
}

void Review::lookAtMore()
{
    if (unseen() == 0) {
        return;
    }
    auto slice = std::make_shared<ReviewSteps::Slice>(
        ReviewSteps::slice(*m_command, *m_base, m_seen, &m_host.taskQueue()));
    m_work.start([this, command = m_command, slice](const std::stop_token &stop) -> BackgroundWork::Outcome {
        auto looks = ReviewSteps::looks(*command, *slice, stop);
        // The jobs end where they were made.
        return [this, looks = std::move(looks), jobs = std::move(slice->jobs)] { take(looks); };
    });
}

void Review::take(const std::vector<ReviewSteps::Look> &looks)
{
    for (const ReviewSteps::Look &look : looks) {
        m_looks[m_rows[m_base->lookOrder[m_seen++]]] = look;
        m_hasFlaws = m_hasFlaws || !look.refusal.isEmpty() || !look.loss.isEmpty() || look.isChanged;
    }
    decide();
    if (!isUnderWay()) {
        return;
    }
    if (m_isShown && unseen() == 0) {
        compose();
    } else if (m_isShown && !m_composeSoon.isActive()) {
        m_composeSoon.start();
    }
    lookAtMore();
}

qsizetype Review::unseen() const
{
    return m_base ? static_cast<qsizetype>(m_base->lookOrder.size() - m_seen) : m_command->files.size();
}

bool Review::isSpecial() const
{
    return m_hasFlaws || m_settled->existing > 0 || !m_settled->warnings.isEmpty() ||
           m_base->plan.entries().size() < m_looks.size() ||
           std::ranges::find(m_base->lossy, true) != m_base->lossy.end() ||
           (m_command->order.deletes && m_command->asksBeforeDeleting);
}

void Review::decide()
{
    if (m_isShown) {
        return;
    }
    if (m_isWanted || isSpecial()) {
        m_isShown = true;
        compose();
        Q_EMIT stateChanged();
        return;
    }
    const bool knowsEnough =
        !m_command->order.deletes && m_seen >= m_base->firstLooks && m_sinceBegin.elapsed() >= patience;
    if (unseen() == 0 || knowsEnough) {
        Q_EMIT foundPlain();
    }
}

PlanEntry Review::composed(std::size_t row) const
{
    PlanEntry entry = m_settled->entries[row];
    if (row >= m_looks.size() || !entry.isMade()) {
        return entry;
    }
    const ReviewSteps::Look &look = m_looks[row];
    entry.sourceBytes = look.bytes;
    entry.bytes = look.outputBytes;
    entry.notes = look.notes;
    if (!look.refusal.isEmpty()) {
        entry.action = PlanEntry::Action::Refuse;
        entry.reason = look.refusal;
    } else if (m_base->lossy[row] && !m_answers.takesLossy) {
        entry.action = PlanEntry::Action::SkipOther;
        entry.reason = tr("It is lossy: a lossless format makes it larger, but brings nothing back.");
    } else if (m_command->order.deletes) {
        entry.loss = look.loss;
        if (!look.loss.isEmpty() && !m_answers.acceptsLosses) {
            entry.keepReason = look.loss;
        } else if (look.isChanged && !m_answers.deletesChanged) {
            entry.keepReason = tr("its sound is computed anew");
        }
        entry.deletesOriginal = entry.keepReason.isEmpty();
    }
    return entry;
}

void Review::compose()
{
    QElapsedTimer time;
    time.start();
    Plan plan;
    m_questions = {.existing = m_settled->existing};
    for (std::size_t row = 0; row < m_settled->entries.size(); ++row) {
        const bool isFile = row < m_looks.size();
        m_questions.lossy += isFile && m_base->lossy[row] && m_settled->entries[row].isMade();
        const PlanEntry entry = composed(row);
        if (isFile && entry.isMade() && m_command->order.deletes) {
            m_questions.losses += !m_looks[row].loss.isEmpty();
            m_questions.changed += m_looks[row].isChanged;
        }
        plan.add(entry);
    }
    for (const QString &sentence : std::as_const(m_settled->warnings)) {
        plan.warn(sentence);
    }
    m_base->estimates->applyTo(plan, m_host.taskQueue().maxThreads());
    m_plan = std::move(plan);
    Q_EMIT planChanged();
    m_composeSoon.setInterval(static_cast<int>(std::max(leastPause, pausesBetween * time.elapsed())));
}

bool Review::mayStart() const
{
    if (!m_settled || m_settling > 0 || (m_command->order.deletes && unseen() > 0)) {
        return false;
    }
    for (std::size_t row = 0; row < m_looks.size(); ++row) {
        if (composed(row).isMade()) {
            return true;
        }
    }
    return false;
}

void Review::answer(const Answers &answers)
{
    const bool isSettled = answers.existing == m_answers.existing;
    m_answers = answers;
    if (!isSettled && m_base) {
        settle();
    }
    if (m_settled) {
        compose();
    }
}

void Review::setFolder(const QString &folder)
{
    auto command = std::make_shared<ReviewSteps::Command>(*m_command);
    command->place.folder = folder;
    m_command = std::move(command);
    restart();
    Q_EMIT planChanged();
}

OutputPlan Review::outputs() const
{
    const std::vector<std::size_t> rows = ReviewSteps::rowsOf(m_settled->plan, m_command->files);
    std::vector<OutputPlan::Entry> made;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (const PlanEntry planned = composed(rows[index]); planned.isMade()) {
            made.push_back(m_settled->plan.entries()[index]);
            made.back().keepReason = planned.keepReason;
        }
    }
    return {std::move(made), m_settled->plan.lists()};
}

ConversionOrder Review::order() const
{
    ConversionOrder order = m_command->order;
    order.mayDeleteChanged = m_answers.deletesChanged;
    return order;
}

} // namespace kruv
