// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Controls.h"

#include "base/Preferences.h"
#include "formats/Formats.h"
#include "formats/vorbis/VorbisTool.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "tabs/FormatControls.h"

#include <QFile>

#include <algorithm>
#include <gtest/gtest.h>

using namespace kruv;
using namespace kruv::test;

namespace {

const QList<ChoiceControl::Choice> formats = {{QStringLiteral("shn"), QStringLiteral("Shorten")},
                                              {QStringLiteral("wv"), QStringLiteral("WavPack")},
                                              {QStringLiteral("flac"), QStringLiteral("FLAC")},
                                              {QStringLiteral("tta"), QStringLiteral("TTA")},
                                              {QStringLiteral("ape"), QStringLiteral("APE")}};

class ControlsTest : public testing::Test
{
protected:
    TemporaryFolder folder;
    QString file = folder.file(QStringLiteral("kruv.conf"));
};

} // namespace

TEST_F(ControlsTest, OptionsOfFormatsBeginAsTheHelpSaysAndTheCommandLineStoresNone)
{
    const QList<const Format *> all = Formats::made(true) + Formats::made(false);
    {
        Preferences fresh(file);
        const FormatControls controls(all, fresh);
        for (const Format *format : all) {
            for (const FormatOption *option : format->options) {
                if (option->kind != FormatOption::Kind::Rate) {
                    EXPECT_EQ(controls.value(*option), option->standard) << format->id << ' ' << option->id;
                }
            }
        }
        controls.number(VorbisTool::quality).setValue(9);
    }
    {
        Preferences commandLine(file, Preferences::ControlState::Defaults);
        const FormatControls controls(all, commandLine);
        EXPECT_EQ(controls.value(VorbisTool::quality), VorbisTool::quality.standard);
        controls.number(VorbisTool::quality).setValue(1);
    }
    Preferences window(file);
    EXPECT_EQ(FormatControls(all, window).value(VorbisTool::quality), 9);
}

TEST_F(ControlsTest, TheLastChoiceComesBack)
{
    {
        Preferences preferences(file);
        ChoiceControl format(formats, 2);
        NumberControl level({.minimum = 0, .maximum = 8, .step = 1}, 1);
        ToggleControl verify;
        ToggleControl warn;
        TextControl extension;
        format.tieTo(preferences, QStringLiteral("encodeOutputFormat"));
        level.tieTo(preferences, QStringLiteral("encodeFlacLevel"));
        verify.tieTo(preferences, QStringLiteral("flacVerifyButton"));
        warn.tieTo(preferences, QStringLiteral("warnOnDelete"));
        extension.tieTo(preferences, QStringLiteral("ffpExtension"));
        EXPECT_EQ(format.selectedId(), QStringLiteral("flac"));
        EXPECT_EQ(level.value(), 5);
        EXPECT_FALSE(verify.isOn());
        EXPECT_TRUE(warn.isOn());
        EXPECT_EQ(extension.text(), QStringLiteral("ffp.txt"));
        format.selectId(QStringLiteral("ape"));
        level.setValue(8);
        verify.setOn(true);
        extension.setText(QStringLiteral("ffp"));
        preferences.setValue(QStringLiteral("warnOnDelete"), true);
    }
    // Under another name, so that nothing comes from what the library remembers of the first file.
    const QString copy = folder.file(QStringLiteral("copy.conf"));
    ASSERT_TRUE(QFile::copy(file, copy));
    Preferences again(copy);
    EXPECT_EQ(again.integer(QStringLiteral("flacVerifyButton")), 1);
    ChoiceControl format(formats, 2);
    NumberControl level({.minimum = 0, .maximum = 8, .step = 1}, 1);
    ToggleControl verify;
    ToggleControl warn;
    TextControl extension;
    format.tieTo(again, QStringLiteral("encodeOutputFormat"));
    level.tieTo(again, QStringLiteral("encodeFlacLevel"));
    verify.tieTo(again, QStringLiteral("flacVerifyButton"));
    warn.tieTo(again, QStringLiteral("warnOnDelete"));
    extension.tieTo(again, QStringLiteral("ffpExtension"));
    EXPECT_EQ(format.selectedId(), QStringLiteral("ape"));
    EXPECT_EQ(level.value(), 8);
    EXPECT_TRUE(verify.isOn());
    EXPECT_TRUE(warn.isOn()) << "stored as a truth value";
    EXPECT_EQ(extension.text(), QStringLiteral("ffp"));
}

TEST_F(ControlsTest, AStoredChoiceThatIsNoneLeavesTheFirst)
{
    Preferences preferences(file);
    for (const int stored : {-1, 5, 99}) {
        preferences.setValue(QStringLiteral("encodeOutputFormat"), stored);
        preferences.setValue(QStringLiteral("encodeFlacLevel"), stored);
        ChoiceControl format(formats);
        format.tieTo(preferences, QStringLiteral("encodeOutputFormat"));
        EXPECT_EQ(format.selectedIndex(), 0);
        NumberControl level({.minimum = 0, .maximum = 8, .step = 1}, 5);
        level.tieTo(preferences, QStringLiteral("encodeFlacLevel"));
        EXPECT_EQ(level.value(), std::clamp(stored, 0, 8));
    }
}
