// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kruv {

/// The part of a plan that one process does, of several that together do all of it.
struct PlanShard
{
    int number = 1; ///< from 1
    int count = 1;

    /// "3/8". Nothing where that is no shard.
    static std::optional<PlanShard> fromText(const QString &text);
    QString toText() const;

    /// In which shard, from 1, each entry of a plan is, for entries of these costs. All shards cost about the
    /// same, and the same costs are always dealt out in the same way, wherever that is done.
    static std::vector<int> deal(std::span<const std::int64_t> costs, int count);

    bool operator==(const PlanShard &) const = default;
};

} // namespace kruv
