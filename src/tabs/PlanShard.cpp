// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanShard.h"

#include <QStringList>
#include <queue>

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace kruv {

std::optional<PlanShard> PlanShard::fromText(const QString &text)
{
    constexpr int mostShards = 1'000'000;
    const QStringList parts = text.split(u'/');
    bool areNumbers[] = {false, false};
    const PlanShard shard{parts.value(0).toInt(&areNumbers[0]), parts.value(1).toInt(&areNumbers[1])};
    const bool isShard = parts.size() == 2 && areNumbers[0] && areNumbers[1] && shard.number >= 1 &&
                         shard.number <= shard.count && shard.count <= mostShards;
    return isShard ? std::optional(shard) : std::nullopt;
}

QString PlanShard::toText() const
{
    return QStringLiteral("%1/%2").arg(number).arg(count);
}

/// The dearest first, each to the shard that has least by then.
std::vector<int> PlanShard::deal(std::span<const std::int64_t> costs, int count)
{
    std::vector<std::size_t> order(costs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::ranges::greater(), [&](std::size_t entry) { return costs[entry]; });
    using Load = std::pair<std::int64_t, int>; // of a shard
    std::priority_queue<Load, std::vector<Load>, std::greater<>> loads;
    for (int shard = 1; shard <= count; ++shard) {
        loads.emplace(0, shard);
    }
    std::vector<int> shards(costs.size());
    for (const std::size_t entry : order) {
        const auto [load, shard] = loads.top();
        loads.pop();
        shards[entry] = shard;
        loads.emplace(load + std::max<std::int64_t>(costs[entry], 1), shard);
    }
    return shards;
}

} // namespace kruv
