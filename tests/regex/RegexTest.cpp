// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "regex/Regex.h"

#include "support/QtPrinters.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

using namespace Qt::Literals::StringLiterals;

using kruv::Regex;

TEST(Regex, MatchesWholeTextsAndFindsParts)
{
    const Regex percentage(u"(\\d+)% complete(?:, ratio=([\\d,.]+))?"_s);
    EXPECT_TRUE(percentage.matches(u"42% complete"));
    EXPECT_FALSE(percentage.matches(u"a.wav: 42% complete"));
    EXPECT_TRUE(percentage.isIn(u"a.wav: 42% complete"));
    EXPECT_FALSE(percentage.isIn(u"a.wav: 42 % complete"));

    const QString line = u"𝄞.wav: 42% complete, ratio=0.581"_s;
    const auto match = percentage.find(line);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->captures, (QStringList{u"42% complete, ratio=0.581"_s, u"42"_s, u"0.581"_s}));
    EXPECT_EQ(line.mid(match->start, match->length), match->captures[0]) << "positions are UTF-16 units";
    const auto withoutRatio = percentage.find(u"7% complete");
    ASSERT_TRUE(withoutRatio);
    EXPECT_TRUE(withoutRatio->captures[2].isNull());
    EXPECT_FALSE(percentage.find(QStringView()));
}

TEST(Regex, ReplacesWithGroups)
{
    const Regex dates(u"(\\d{4})-(\\d\\d)"_s);
    EXPECT_EQ(dates.replace(u"1977-05, 1990-03", u"$2/$1"), u"05/1977, 03/1990"_s);
    EXPECT_EQ(dates.replace(u"1977-05", u"\\$1 [$0]"), u"$1 [1977-05]"_s);
    EXPECT_EQ(dates.replace(u"nothing", u"x"), u"nothing"_s);
    EXPECT_EQ(dates.replace(u"a1977-05b", u""), u"ab"_s);
    EXPECT_EQ(Regex(u"."_s).replace(u"aaaa", u"a long way to go; "), u"a long way to go; "_s.repeated(4))
        << "far longer than the text";
    EXPECT_THROW(static_cast<void>(dates.replace(u"1977-05", u"$3")), std::invalid_argument);
}

TEST(Regex, GivesUpOnPatternsThatNeverEnd)
{
    const QString text = QString(60, u'a') + u'b';
    const Regex catastrophic(u"(a+)+$"_s);
    EXPECT_THROW(static_cast<void>(catastrophic.isIn(text)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(catastrophic.replace(text, u"")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(Regex(u"(?:.|\\n)*x"_s).isIn(QString(20'000'000, u'a'))),
                 std::runtime_error)
        << "a stack without end";
    EXPECT_TRUE(catastrophic.isIn(u"aaa")) << "good for the next text";
}

TEST(Regex, ManyThreadsShareTheCompiledExpressions)
{
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    const Regex shared(u"(\\d+)"_s);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&right, &shared] {
            for (int i = 0; i < 500; ++i) {
                const QString text = u"track%1"_s.arg(i % 100);
                const Regex own(u"track%1$"_s.arg(i % 100));
                const auto match = shared.find(text);
                right += own.matches(text) && match && match->captures[1] == QString::number(i % 100);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 2000);
}
