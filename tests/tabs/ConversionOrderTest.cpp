// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionOrder.h"

#include "formats/FormatOption.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/flac/FlacOptions.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

TEST(ConversionOrder, IsReadAsItWasWritten)
{
    const OutputPlan plan({}, {{u"/music/it's \"1\".ffp"_s, u"ffp"_s, u"/music"_s}});
    for (const bool lossy : {false, true}) {
        for (const Format *format : Formats::made(lossy)) {
            SCOPED_TRACE(format->id);
            ConversionOrder order{
                .target = format, .deletes = true, .mayDeleteChanged = true, .proves = true};
            for (const FormatOption *option : format->options) { // none as it is by itself
                order.options.set(*option,
                                  option->standard == option->minimum ? option->maximum : option->minimum);
                if (!option->choices.empty() && option->kind == FormatOption::Kind::Choice) {
                    order.options.set(*option, static_cast<int>(option->choices.size()) - 1);
                }
            }
            const auto read = ConversionOrder::fromText(order.toText(plan));
            ASSERT_TRUE(read);
            EXPECT_EQ(read->order.target, format);
            EXPECT_TRUE(read->order.deletes && read->order.mayDeleteChanged && read->order.proves);
            for (const FormatOption *option : format->options) {
                EXPECT_EQ(read->order.options.number(*option), order.options.number(*option)) << option->id;
            }
            ASSERT_EQ(read->lists.size(), 1U);
            EXPECT_EQ(read->lists[0].path, plan.lists()[0].path);
            EXPECT_EQ(read->lists[0].folder, u"/music"_s);
        }
    }
    ConversionOrder decoding{.target = &aiffFormat, .decodes = true};
    decoding.options.set(FlacOptions::throughErrors, 1);
    const auto read = ConversionOrder::fromText(decoding.toText(plan));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->order.decodes && read->order.options.isOn(FlacOptions::throughErrors));
    EXPECT_FALSE(read->order.options.isOn(FlacOptions::keepForeignMetadata) || read->order.deletes);
}

TEST(ConversionOrder, RefusesWhatItCantCarryOut)
{
    for (const QString &text :
         {QString(), u"{}"_s, uR"({"version":2,"to":"flac"})"_s, uR"({"version":1,"to":"xyz"})"_s,
          uR"({"version":1,"to":"wv","options":{"wavpack-mode":"none of these"}})"_s}) {
        EXPECT_FALSE(ConversionOrder::fromText(text)) << text.toStdString();
    }
}

} // namespace kruv::test
