// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/OutputPlan.h"

#include <QHash>
#include <QString>

namespace kruv {

/// What the files of a plan are called that a cue sheet among them names. Any thread.
class NewFileNames
{
public:
    explicit NewFileNames(const OutputPlan &plan);

    /// `name` as the sheet has it, whatever its capitals, and be it that of an earlier format; null where no
    /// source is meant.
    QString of(const QString &name, const OutputPlan::Entry &sheet) const;

private:
    QHash<QString, QString> m_outputs; // by source
    QHash<QString, QString>
        m_outputsOfStems; // empty where several sources have the same but for their ending
};

} // namespace kruv
