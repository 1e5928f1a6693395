// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanShard.h"

#include "support/QtPrinters.h"
#include "tabs/PlanRoots.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <stdexcept>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

TEST(PlanShard, DealsOutAboutTheSameToEach)
{
    struct Case
    {
        std::size_t entries;
        int shards;
        std::int64_t longest; // costs, against a shortest of 1
        double mostApart;     // of the dearest and the cheapest shard
    };
    const Case cases[] = {{100'000, 64, 600'000'000, 1.05},
                          {200, 8, 1, 1.0},
                          {200, 8, 40, 1.05},
                          {1000, 3, 1'000'000, 1.05},
                          {0, 4, 1, 1.0}};
    for (const Case &each : cases) {
        SCOPED_TRACE(each.entries);
        std::minstd_rand random(7);
        std::vector<std::int64_t> costs(each.entries);
        for (std::int64_t &cost : costs) {
            cost = 1 + static_cast<std::int64_t>(random()) % each.longest;
        }
        const std::vector<int> shards = PlanShard::deal(costs, each.shards);
        EXPECT_EQ(shards, PlanShard::deal(costs, each.shards));
        std::vector<std::int64_t> sums(static_cast<std::size_t>(each.shards));
        for (std::size_t entry = 0; entry < costs.size(); ++entry) {
            ASSERT_GE(shards[entry], 1); // so that each is in one, and in no other
            ASSERT_LE(shards[entry], each.shards);
            sums[static_cast<std::size_t>(shards[entry]) - 1] += costs[entry];
        }
        const auto [least, most] = std::ranges::minmax(sums);
        EXPECT_LE(static_cast<double>(most), static_cast<double>(least) * each.mostApart);
    }
    // Written down, for another version must cut a plan as this one does; what costs nothing is spread, too.
    EXPECT_EQ(PlanShard::deal(std::vector<std::int64_t>{5, 9, 1, 4, 4, 7}, 3),
              (std::vector{3, 1, 1, 3, 2, 2}));
    EXPECT_EQ(PlanShard::deal(std::vector<std::int64_t>{0, 0, 0, 0}, 2), (std::vector{1, 2, 1, 2}));
}

TEST(PlanShard, IsReadAsItIsGiven)
{
    EXPECT_EQ(PlanShard::fromText(u"3/8"_s), (PlanShard{3, 8}));
    EXPECT_EQ(PlanShard::fromText(u"1/1"_s), PlanShard());
    for (const QString &wrong : {u"0/8"_s, u"9/8"_s, u"x/y"_s, u"3"_s, u"3/8/1"_s, u"-1/8"_s, u""_s, u"/"_s,
                                 u"1/99999999999"_s, u"1/2000000"_s}) {
        EXPECT_FALSE(PlanShard::fromText(wrong)) << qPrintable(wrong);
    }
}

TEST(PlanRoots, MoveWholeFoldersOnly)
{
    const PlanRoots roots({u"/data=/mnt/nas"_s, u"/data/out/=/scratch/a=b"_s});
    const std::pair<QString, QString> paths[] = {
        {u"/data/x.wav"_s, u"/mnt/nas/x.wav"_s},      {u"/data"_s, u"/mnt/nas"_s},
        {u"/database/x.wav"_s, u"/database/x.wav"_s}, {u"/data/out/y"_s, u"/scratch/a=b/y"_s},
        {u"/else/data/x"_s, u"/else/data/x"_s},       {u""_s, u""_s}};
    for (const auto &[before, after] : paths) {
        EXPECT_EQ(roots.moved(before), after);
    }
    EXPECT_EQ(PlanRoots({u"/=/mnt"_s}).moved(u"/a/b"_s), u"/mnt/a/b"_s);
    for (const QString &wrong : {u"/data"_s, u"=/mnt"_s, u"/data="_s, u"data=/mnt"_s}) {
        EXPECT_THROW(PlanRoots({wrong}), std::runtime_error) << qPrintable(wrong);
    }
}

} // namespace kruv::test
