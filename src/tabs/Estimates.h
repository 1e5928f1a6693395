// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionOrder.h"
#include "tabs/Plan.h"

#include <QHash>

#include <optional>

namespace kruv {

/// What an output is going to cost, judged by what earlier runs of the same order made of the same kinds of
/// files on this machine. Asks the journal; where that can't be read, nothing is known.
class Estimates
{
public:
    explicit Estimates(const ConversionOrder &order);

    bool areKnown() const { return !m_sums.isEmpty(); }
    /// Puts the costs that are known into the plan's entries.
    void applyTo(Plan &plan, int jobsAtOnce) const;
    /// Of a source of so many bytes.
    std::optional<Cost> of(const QString &source, qint64 bytes) const;
    /// Of the disks that are too small for what the order makes of a plan, a sentence each. `freesOriginals`:
    /// originals that go leave room. Sources are not looked into.
    QStringList shortages(const OutputPlan &plan, const ConversionOrder &order, bool freesOriginals) const;

private:
    struct Sum
    {
        int files = 0;
        double sourceBytes = 0.0;
        double outputBytes = 0.0;
        double seconds = 0.0;
    };
    void learn(const ConversionOrder &order);

    QHash<QString, Sum> m_sums; // by the sources' types
};

} // namespace kruv
