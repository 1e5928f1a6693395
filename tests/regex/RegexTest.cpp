// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "regex/Regex.h"

#include "regex/CompiledExpressions.h"
#include "support/QtPrinters.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
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

TEST(Regex, FindsAllMatches)
{
    const auto words = Regex(u"(\\w)(\\w*)"_s).findAll(u"ala ma kota");
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[1].captures, (QStringList{u"ma"_s, u"m"_s, u"a"_s}));
    EXPECT_EQ(words[2].start, 7);
    EXPECT_EQ(Regex(u"x*"_s).findAll(u"axb").size(), 4U) << "empty matches move on";
    EXPECT_TRUE(Regex(u"x"_s).findAll(u"abc").empty());
}

TEST(Regex, SearchesAPartOfAStringInPlace)
{
    const QString whole = u"12 34 56"_s;
    const auto match = Regex(u"\\d+$"_s).find(QStringView(whole).left(5));
    ASSERT_TRUE(match);
    EXPECT_EQ(match->captures[0], u"34"_s) << "the text ends where the view ends";
}

TEST(Regex, IgnoresCaseWhenAsked)
{
    const QString pattern = u"ścieżka|STRASSE"_s;
    EXPECT_TRUE(Regex(pattern, Qt::CaseInsensitive).matches(u"ŚCIEŻKA"));
    EXPECT_TRUE(Regex(pattern, Qt::CaseInsensitive).matches(u"straße"));
    EXPECT_FALSE(Regex(pattern).matches(u"ŚCIEŻKA")) << "the compiled one of the other kind was used";
}

TEST(Regex, SplitsBetweenMatches)
{
    struct Case
    {
        QString pattern, text;
        QStringList pieces;
    };
    const Case cases[] = {
        {u",\\s*"_s, u"a, b,c,, d,"_s, {u"a"_s, u"b"_s, u"c"_s, QString(), u"d"_s, QString()}},
        {u"x"_s, u"abc"_s, {u"abc"_s}},
        {u"x"_s, QString(), {QString()}},
        {u"\\r\\n|[\\r\\n]"_s, u"1\r\n2\r3\n4"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s}},
        {u"(?=\\d)"_s, u"1a2b"_s, {u"1a"_s, u"2b"_s}},
    };
    for (const Case &tested : cases) {
        EXPECT_EQ(Regex(tested.pattern).split(tested.text), tested.pieces) << tested.pattern.toStdString();
    }
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

TEST(Regex, SaysWhereAPatternIsWrong)
{
    const std::pair<QString, std::string> cases[] = {
        {u"ab(cd"_s, "\"ab(cd\" at position 5"},
        {u"a**"_s, "\"a**\" at position 3"},
        {u"[z-a]"_s, "at position 4"},
        {QString(), "\"\" at position 0"},
    };
    for (const auto &[pattern, words] : cases) {
        try {
            const Regex regex(pattern);
            ADD_FAILURE() << pattern.toStdString() << " was taken";
        } catch (const std::invalid_argument &problem) {
            EXPECT_NE(std::string(problem.what()).find(words), std::string::npos) << problem.what();
        }
    }
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

TEST(Regex, KeepsCompiledExpressionsInBounds)
{
    kruv::CompiledExpressions expressions;
    const auto number = [](std::size_t value) { return QString::number(value); };
    const auto first = expressions.get(number(0), 0);
    EXPECT_EQ(expressions.get(number(0), 0), first);
    for (std::size_t i = 1; i < kruv::CompiledExpressions::capacity; ++i) {
        static_cast<void>(expressions.get(number(i), 0));
    }
    EXPECT_EQ(expressions.get(number(0), 0), first) << "used again, so the youngest";
    const std::weak_ptr second = expressions.get(number(1), 0);
    EXPECT_FALSE(second.expired());
    for (std::size_t i = 0; i < kruv::CompiledExpressions::capacity; ++i) {
        static_cast<void>(expressions.get(number(1000 + i), 0));
    }
    EXPECT_TRUE(second.expired());
    EXPECT_NE(expressions.get(number(0), 0), first);
}

TEST(Regex, ManyThreadsShareTheCompiledExpressions)
{
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
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
