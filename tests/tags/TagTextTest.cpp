// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TagText.h"

#include "support/TaggedAudio.h"
#include "tags/LeadingNumber.h"
#include "tags/TagLibTagsHelper.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

struct DateCase
{
    const char *text;
    const char *date; ///< "year|month|day"
};

class ReadDate : public testing::TestWithParam<DateCase>
{
};

TEST_P(ReadDate, FirstPatternThatFitsTheWholeText)
{
    TagsObject record;
    TagLibTagsHelper().setBlankTags(record);
    const bool fits = readDate(QString::fromUtf8(GetParam().text), record);
    const QString date = record.yearText() + u'|' + record.monthText() + u'|' + record.dayText();
    EXPECT_EQ(date, QString::fromUtf8(GetParam().date));
    EXPECT_EQ(fits, date != u"||");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ReadDate,
    testing::Values(DateCase{"2004", "2004||"}, DateCase{"2004-05-06", "2004|05|06"},
                    DateCase{"2004/05/06", "2004|05|06"}, DateCase{"2004/31/12", "2004|12|31"},
                    DateCase{"2004-31-12", "2004|12|31"}, DateCase{"05-06-2004", "2004|05|06"},
                    DateCase{"31/12/2004", "2004|12|31"}, DateCase{"2004-02-30", "||"},
                    DateCase{"2004-05", "||"}, DateCase{"2004-5-6", "||"}, DateCase{" 2004", "||"},
                    DateCase{"2004-05-06T10:00", "||"}, DateCase{"+2004-05-06", "||"}, DateCase{"-004", "||"},
                    DateCase{"c. 1999", "||"}, DateCase{"", "||"},
                    DateCase{"\u0662\u0660\u0660\u0664", "||"}));

TEST(TagText, KeepsEveryCharacter)
{
    const QString text = u"a\u00e9\u6b4c\U0001F3B5\r\n\t\"%1\""_s;
    EXPECT_EQ(fromTagLibString(toTagLibString(text)), text);
    EXPECT_FALSE(fromTagLibString(toTagLibString({})).isNull());
}

TEST(LeadingNumber, ReadsWhatATextBeginsWith)
{
    EXPECT_EQ(leadingInt32(u" 12/20"), 12);
    EXPECT_EQ(leadingInt32(u"+7"), 7);
    EXPECT_EQ(leadingInt32(u"-7 "), -7);
    EXPECT_EQ(leadingInt32(u"/x/1.flac: ERROR"), 0);
    EXPECT_EQ(leadingInt32(u"99999999999"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(leadingInt64(u"4294967296\n"), 4294967296);
    EXPECT_EQ(leadingInt64(u"-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
}

} // namespace
} // namespace kruv
