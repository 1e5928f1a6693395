// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace kruv {

/// Where the folders of a plan are on this machine, which may have mounted them elsewhere.
class PlanRoots
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PlanRoots)
public:
    PlanRoots() = default;
    /// Of texts "OLD=NEW". Throws std::runtime_error for one that is none.
    explicit PlanRoots(const QStringList &texts);

    /// Of several old folders that a path lies in the innermost counts.
    QString moved(const QString &path) const;

private:
    std::vector<std::pair<QString, QString>> m_roots; // the longest old one first
};

} // namespace kruv
