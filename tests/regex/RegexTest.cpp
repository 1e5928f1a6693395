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

using kruv::Regex;

TEST(Regex, MatchesWholeTextsAndFindsParts)
{
    const Regex percentage(QStringLiteral("(\\d+)% complete(?:, ratio=([\\d,.]+))?"));
    EXPECT_TRUE(percentage.matches(u"42% complete"));
    EXPECT_FALSE(percentage.matches(u"a.wav: 42% complete"));
    EXPECT_TRUE(percentage.isIn(u"a.wav: 42% complete"));
    EXPECT_FALSE(percentage.isIn(u"a.wav: 42 % complete"));

    const QString line = QStringLiteral("𝄞.wav: 42% complete, ratio=0.581");
    const auto match = percentage.find(line);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->captures, (QStringList{QStringLiteral("42% complete, ratio=0.581"), QStringLiteral("42"),
                                            QStringLiteral("0.581")}));
    EXPECT_EQ(line.mid(match->start, match->length), match->captures[0]) << "positions are UTF-16 units";
    const auto withoutRatio = percentage.find(u"7% complete");
    ASSERT_TRUE(withoutRatio);
    EXPECT_TRUE(withoutRatio->captures[2].isNull());
    EXPECT_FALSE(percentage.find(QStringView()));
}

TEST(Regex, FindsAllMatches)
{
    const auto words = Regex(QStringLiteral("(\\w)(\\w*)")).findAll(u"ala ma kota");
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[1].captures,
              (QStringList{QStringLiteral("ma"), QStringLiteral("m"), QStringLiteral("a")}));
    EXPECT_EQ(words[2].start, 7);
    EXPECT_EQ(Regex(QStringLiteral("x*")).findAll(u"axb").size(), 4U) << "empty matches move on";
    EXPECT_TRUE(Regex(QStringLiteral("x")).findAll(u"abc").empty());
}

TEST(Regex, SearchesAPartOfAStringInPlace)
{
    const QString whole = QStringLiteral("12 34 56");
    const auto match = Regex(QStringLiteral("\\d+$")).find(QStringView(whole).left(5));
    ASSERT_TRUE(match);
    EXPECT_EQ(match->captures[0], QStringLiteral("34")) << "the text ends where the view ends";
}

TEST(Regex, IgnoresCaseWhenAsked)
{
    const QString pattern = QStringLiteral("ścieżka|STRASSE");
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
        {QStringLiteral(",\\s*"),
         QStringLiteral("a, b,c,, d,"),
         {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QString(), QStringLiteral("d"),
          QString()}},
        {QStringLiteral("x"), QStringLiteral("abc"), {QStringLiteral("abc")}},
        {QStringLiteral("x"), QString(), {QString()}},
        {QStringLiteral("\\r\\n|[\\r\\n]"),
         QStringLiteral("1\r\n2\r3\n4"),
         {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")}},
        {QStringLiteral("(?=\\d)"), QStringLiteral("1a2b"), {QStringLiteral("1a"), QStringLiteral("2b")}},
    };
    for (const Case &tested : cases) {
        EXPECT_EQ(Regex(tested.pattern).split(tested.text), tested.pieces) << tested.pattern.toStdString();
    }
}

TEST(Regex, ReplacesWithGroups)
{
    const Regex dates(QStringLiteral("(\\d{4})-(\\d\\d)"));
    EXPECT_EQ(dates.replace(u"1977-05, 1990-03", u"$2/$1"), QStringLiteral("05/1977, 03/1990"));
    EXPECT_EQ(dates.replace(u"1977-05", u"\\$1 [$0]"), QStringLiteral("$1 [1977-05]"));
    EXPECT_EQ(dates.replace(u"nothing", u"x"), QStringLiteral("nothing"));
    EXPECT_EQ(dates.replace(u"a1977-05b", u""), QStringLiteral("ab"));
    EXPECT_EQ(Regex(QStringLiteral(".")).replace(u"aaaa", u"a long way to go; "),
              QStringLiteral("a long way to go; ").repeated(4))
        << "far longer than the text";
    EXPECT_THROW(static_cast<void>(dates.replace(u"1977-05", u"$3")), std::invalid_argument);
}

TEST(Regex, SaysWhereAPatternIsWrong)
{
    const std::pair<QString, std::string> cases[] = {
        {QStringLiteral("ab(cd"), "\"ab(cd\" at position 5"},
        {QStringLiteral("a**"), "\"a**\" at position 3"},
        {QStringLiteral("[z-a]"), "at position 4"},
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
    const Regex catastrophic(QStringLiteral("(a+)+$"));
    EXPECT_THROW(static_cast<void>(catastrophic.isIn(text)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(catastrophic.replace(text, u"")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(Regex(QStringLiteral("(?:.|\\n)*x")).isIn(QString(20'000'000, u'a'))),
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
    const Regex shared(QStringLiteral("(\\d+)"));
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&right, &shared] {
            for (int i = 0; i < 500; ++i) {
                const QString text = QStringLiteral("track%1").arg(i % 100);
                const Regex own(QStringLiteral("track%1$").arg(i % 100));
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
