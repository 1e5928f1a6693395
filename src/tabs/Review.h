// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "tabs/Plan.h"
#include "tabs/ReviewSteps.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace kruv {

class TabHost;

/// A conversion command before it starts. Whether it is plain shows soon, however many files there are; where
/// it is not, the plan of what it would do is there for a person to look at, who answers what it asks. Files
/// are looked at on the pool. Main thread.
class Review : public QObject
{
    Q_OBJECT
public:
    /// `host` must outlive it.
    explicit Review(TabHost &host);

    /// `isWanted`: the plan is shown also where the command is plain.
    void begin(const ReviewSteps::Command &command, bool isWanted);
    /// Gives the command up.
    void end();
    /// It was begun and is not over.
    bool isUnderWay() const { return m_command != nullptr; }
    bool isShown() const { return m_isShown; }

    /// Of each file of the command, in its order, and then of its lists.
    const Plan &plan() const { return m_plan; }
    const ReviewSteps::Command &command() const { return *m_command; }
    /// How many files are still to be looked at.
    qsizetype unseen() const;
    /// There is something to do, and all is known that is asked about.
    bool mayStart() const;

    struct Questions
    {
        qsizetype existing = 0; ///< names that are taken
        qsizetype lossy = 0;    ///< sources of a lossless target
        qsizetype losses = 0;   ///< originals to go that hold more than their outputs will
        qsizetype changed = 0;  ///< originals to go whose outputs have other samples
    };
    const Questions &questions() const { return m_questions; }

    struct Answers
    {
        ExistingFiles existing = ExistingFiles::Skip;
        bool takesLossy = false;
        bool acceptsLosses = false;
        bool deletesChanged = false;
    };
    const Answers &answers() const { return m_answers; }
    void answer(const Answers &answers);
    /// Another one for the outputs; the answers stay.
    void setFolder(const QString &folder);

    /// What is to be queued: what the plan says that is made, and how.
    OutputPlan outputs() const;
    ConversionOrder order() const;

Q_SIGNALS:
    /// It was begun, is to be shown from now on, or is over.
    void stateChanged();
    /// The plan, or what is asked.
    void planChanged();
    /// Nothing speaks against starting the command at once.
    void foundPlain();

private:
    void restart();
    void take(ReviewSteps::Base base);
    void settle();
    void take(ReviewSteps::Settled settled);
    void lookAtMore();
    void take(const std::vector<ReviewSteps::Look> &looks);
    void decide();
    bool isSpecial() const;
    void compose();
    PlanEntry composed(std::size_t row) const;

    TabHost &m_host;
    // What the pool reads is not changed, but replaced.
    std::shared_ptr<const ReviewSteps::Command> m_command;
    std::shared_ptr<const ReviewSteps::Base> m_base;
    std::vector<std::size_t> m_rows; // of the base's entries
    std::optional<ReviewSteps::Settled> m_settled;
    int m_settling = 0;
    std::vector<ReviewSteps::Look> m_looks; // by file
    std::size_t m_seen = 0;                 // of the base's order
    bool m_hasFlaws = false;                // of those that were looked at
    Plan m_plan;
    Questions m_questions;
    Answers m_answers;
    bool m_isWanted = false;
    bool m_isShown = false;
    QElapsedTimer m_sinceBegin;
    QTimer m_composeSoon;
    BackgroundWork m_work;
};

} // namespace kruv
