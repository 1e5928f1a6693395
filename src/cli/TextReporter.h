// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkClock.h"
#include "cli/JobReporter.h"

#include <QCoreApplication>
#include <QHash>

#include <memory>

class QTimer;

namespace kruv {

/// For people: rows that move on a terminal (one per running job, and a total with the time left), a plain
/// line per job elsewhere. Everything but results goes to standard error.
class TextReporter : public JobReporter
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TextReporter)
public:
    struct Style
    {
        bool rows = false;
        bool color = false;
        bool quiet = false;
    };

    explicit TextReporter(const Style &style);
    ~TextReporter() override;

    void expects(const Totals &totals) override { m_totals = totals; }
    void started(const KruvTask &task) override;
    void progressed(const KruvTask &task) override;
    void ended(const KruvTask &task, const Totals &totals) override;
    void results(const QString &title, const QString &text) override;
    void message(const QString &line) override;
    void summary(const Totals &totals) override;
    void held(bool held) override;

private:
    struct Row
    {
        QString title;
        double percent = 0.0;
    };

    void drawRows();
    void eraseRows();
    QString totalRow() const;
    QString rowText(const Row &row, int width) const;
    QString colored(const QString &text, const char *code) const;
    /// What became of a job that did not fail.
    static QString wordsFor(const KruvTask &task, bool hadBegun);
    void printFailure(const KruvTask &task);

    const Style m_style;
    QHash<const KruvTask *, Row> m_running;
    QList<const KruvTask *> m_order;
    Totals m_totals;
    int m_rowsOnScreen = 0;
    WorkClock m_clock;
    std::unique_ptr<QTimer> m_redraw;
};

} // namespace kruv
