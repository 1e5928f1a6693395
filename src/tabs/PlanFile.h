// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionOrder.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

class QFile;
class QJsonObject;

namespace kruv {

class Plan;

/// A plan of conversions on disk: a line of JSON with what all jobs have in common, and one for each entry
/// (docs/plan-format.md). Of the entries only those are in memory that somebody asks for. What can't be read
/// or written throws std::runtime_error, in words for a person.
class PlanFile
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PlanFile)
public:
    /// Keeps what a plan is going to make, and what was made before. Replaces a file that is there.
    static void write(const QString &path, const Plan &plan);

    /// Whether a file is one of these, by its first line. No link is.
    static bool isPlan(const QString &path);

    /// Goes through the whole file once.
    explicit PlanFile(const QString &path);

    const QString &path() const { return m_path; }
    /// Tells it from every other plan.
    const QString &id() const { return m_id; }
    /// Milliseconds since 1970.
    std::int64_t made() const { return m_made; }
    const ConversionOrder &order() const { return m_kept.order; }
    const std::vector<OutputPlan::List> &lists() const { return m_kept.lists; }
    /// Lists that are there may be replaced.
    bool replacesLists() const { return m_replacesLists; }
    std::size_t size() const { return m_costs.size(); }
    /// Of each entry, in microseconds of one job, as far as that can be foreseen.
    const std::vector<std::int64_t> &costs() const { return m_costs; }

    /// Whether it is no audio, and goes along as it is, once all audio is there.
    bool isCopy(std::size_t entry) const { return m_areCopies[entry]; }

    using Wanted = std::function<bool(std::size_t entry)>;
    using Visitor = std::function<void(std::size_t entry, const OutputPlan::Entry &what)>;
    /// In order.
    void forEach(const Wanted &wanted, const Visitor &visit) const;

private:
    void open(QFile &file) const;
    void readHeader(const QByteArray &line);
    [[noreturn]] void refuse(const QString &reason) const;
    [[noreturn]] void refuseKind() const;
    [[noreturn]] void refuseLine(std::size_t line, const QString &reason) const;

    const QString m_path;
    QString m_id;
    std::int64_t m_made = 0;
    std::size_t m_announced = 0; // entries
    ConversionOrder::Kept m_kept;
    bool m_replacesLists = false;
    std::vector<std::int64_t> m_costs;
    std::vector<bool> m_areCopies;
};

} // namespace kruv
