// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ShntoolHash.h"
#include "formats/VerifyOutput.h"
#include "support/QtPrinters.h"
#include "tasks/TerminalText.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;

namespace {

QString onScreen(std::initializer_list<const char *> pieces)
{
    TerminalText screen;
    for (const char *piece : pieces) {
        screen.append(QString::fromUtf8(piece));
    }
    return screen.text();
}

TEST(TerminalText, ShowsWhatATerminalShows)
{
    EXPECT_EQ(onScreen({"a, 10% done...", "\b\b\b\b\b\b\b\b\b\b\b", "11% done...\n"}), u"a, 11% done...\n"_s);
    EXPECT_EQ(onScreen({"12% done", "\r", "100% done\r", "\n"}), u"100% done\n"_s);
    EXPECT_EQ(onScreen({"\b\b", "ok      "}), u"ok"_s);
}

TEST(VerifyOutput, FindsThePercentage)
{
    using VerifyOutput::percentAfterProgress;
    using VerifyOutput::percentDone;
    EXPECT_EQ(percentDone(u"verifying 9% done.wv,  38% done..."), 38.0);
    EXPECT_EQ(percentDone(u"71% done..."), 71.0);
    EXPECT_FALSE(percentDone(u"verified x.wv in 0.11 secs (lossless, 46.37%)"));
    EXPECT_EQ(percentAfterProgress(u"Progress: 12.5% (3.2 seconds remaining, 5.3 seconds total)"), 12.5);
    EXPECT_FALSE(percentAfterProgress(u"Progress: "));
    EXPECT_FALSE(percentAfterProgress(u"Success"));
}

TEST(VerifyOutput, KeepsWhatAReportNeeds)
{
    const QString wavpack =
        onScreen({"\n WVUNPACK  Hybrid Lossless Audio Decompressor  linux-gnu Version 5.6.0\n",
                  " Copyright (c) 1998 - 2022 David Bryant.  All Rights Reserved.\n\n", "verifying a.wv,",
                  "  38% done...", "\b\b\b\b\b\b\b\b\b\b\b\b", " 100% done...",
                  "\rverified a.wv in 0.11 secs (lossless, 46.37%)    \n"});
    EXPECT_EQ(VerifyOutput::namedLines(wavpack, u"a.wv"_s),
              u"a.wv: verified a.wv in 0.11 secs (lossless, 46.37%)\n"_s);
    EXPECT_EQ(VerifyOutput::fromLastProgress(u"--- tool ---\nProgress: 1%\nProgress: 100.0%\n\nSuccess..."_s),
              u"Progress: 100.0%\nSuccess...\n"_s);
    EXPECT_EQ(VerifyOutput::fromLastProgress(u"Error: 1009"_s), u"Error: 1009"_s);
}

TEST(ShntoolHash, ReadsProgressPastNamesThatLookLikeIt)
{
    using ShntoolHash::currentName;
    using ShntoolHash::percentage;
    EXPECT_EQ(percentage(u"Hashing [50% off.wav] (0:11.09) :  37% "), 37.0);
    EXPECT_EQ(percentage(u"42% "), 42.0);
    EXPECT_FALSE(percentage(u"Hashing [a.wav] (0:11.09) : "));
    EXPECT_FALSE(percentage(u"2fb80136fd29456c798b920ba28158b5  [shntool]  50% off.wav"));
    EXPECT_EQ(currentName(u"Hashing [a] (live).wav] (0:11.09) :   0% "), u"a] (live).wav"_s);
    EXPECT_TRUE(currentName(u"Hashing [").isNull());
}

TEST(ShntoolHash, TellsHashesFromComplaints)
{
    const QString text = u"shntool [hash]: warning: cannot open non-existent file: [no.wav]\n"
                         "Hashing [warning.wav] (0:11.09) : 100% OK\n"
                         "shntool [hash]: warning: cannot open non-existent file: [no.wav]\n"
                         "2fb80136fd29456c798b920ba28158b5  [shntool]  warning.wav\n"_s;
    EXPECT_EQ(ShntoolHash::hashLines(text),
              QStringList(u"2fb80136fd29456c798b920ba28158b5  [shntool]  warning.wav"_s));
    EXPECT_EQ(ShntoolHash::complaints(text),
              QStringList(u"shntool [hash]: warning: cannot open non-existent file: [no.wav]"_s));
}

TEST(ShntoolHash, LeavesUnsoundFilesOut)
{
    const QString text =
        u"shntool [hash]: warning: possibly truncated and/or corrupt file: [b [1].wv]\n"
        "2fb80136fd29456c798b920ba28158b5  [shntool]  a.wv\n"
        "3fb80136fd29456c798b920ba28158b5  [shntool]  b [1].wv\n"
        "shntool [hash]: error: [b [1].wv] is damaged: wvunpack could not decode all of it\n"_s;
    EXPECT_EQ(ShntoolHash::hashLines(text),
              QStringList(u"2fb80136fd29456c798b920ba28158b5  [shntool]  a.wv"_s));
    EXPECT_EQ(ShntoolHash::complaints(text),
              QStringList(u"b [1].wv is damaged: wvunpack could not decode all of it."_s));
    EXPECT_EQ(ShntoolHash::unsound(text), QStringList(u"b [1].wv"_s));
}

TEST(ShntoolHash, KeepsTheHashLinesOfARunWithinOneWrite)
{
    QStringList names;
    for (int index = 0; index < 1000; ++index) {
        names << u"Übung %1.wav"_s.arg(index);
    }
    QStringList again;
    for (const QStringList &run : ShntoolHash::runs(names)) {
        qsizetype printed = 0;
        for (const QString &name : run) {
            printed += 32 + 13 + name.toUtf8().size() + 1;
        }
        EXPECT_LE(printed, 4096);
        again += run;
    }
    EXPECT_EQ(again, names);
    EXPECT_TRUE(ShntoolHash::runs({}).isEmpty());
}

} // namespace
