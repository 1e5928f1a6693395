// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/PortableName.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace kruv {

using namespace Qt::Literals::StringLiterals;

TEST(PortableName, IsOneThatOtherSystemsTake)
{
    struct Case
    {
        QString name;
        QString portable;
    };
    const std::vector<Case> cases{
        {u"Plain name (2).flac"_s, u"Plain name (2).flac"_s},
        {u"What? <a|b>: \"c\"*\\d.flac"_s, u"What- -a-b-- 'c'--d.flac"_s},
        {u"line\nbreak\t\u007f.flac"_s, u"line-break--.flac"_s},
        {u"Vol. 2... . "_s, u"Vol. 2"_s},
        {u"..."_s, u"_"_s},
        {u"con"_s, u"con_"_s},
        {u"Aux.live.wav"_s, u"Aux_.live.wav"_s},
        {u"COM1 .txt"_s, u"COM1 _.txt"_s},
        {u"lpt\u00b2.flac"_s, u"lpt\u00b2_.flac"_s},
        {u"conductor.flac"_s, u"conductor.flac"_s},
        {u"com10.flac"_s, u"com10.flac"_s},
        {u"\u00e9\u4e2d\U0001F3B5.flac"_s, u"\u00e9\u4e2d\U0001F3B5.flac"_s},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(PortableName::of(each.name), each.portable);
    }
    EXPECT_EQ(PortableName::ofPath(u"/a:b/nul/x?.flac"_s), u"/a-b/nul_/x-.flac"_s);
}

TEST(PortableName, IsCutBetweenCharacters)
{
    const QString note = u"\U0001F3B5"_s; // 4 bytes, two UTF-16 units
    const QString cut = PortableName::cut(note.repeated(100), u".flac"_s);
    EXPECT_EQ(cut, note.repeated(62) + u".flac"_s);
    EXPECT_EQ(PortableName::cut(u"x"_s.repeated(250), u".flac"_s).size(), 255);
    EXPECT_EQ(PortableName::cut(u"x"_s.repeated(249) + u"e\u0301"_s, u".flac"_s),
              u"x"_s.repeated(249) + u".flac"_s);
    EXPECT_EQ(PortableName::cut(u"short"_s, u" (2).flac"_s), u"short (2).flac"_s);
}

} // namespace kruv
