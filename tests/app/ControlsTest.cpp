// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/Controls.h"

#include "app/Preferences.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QFile>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

using namespace kruv;
using namespace kruv::test;

namespace {

const QStringList formats = {QStringLiteral("SHN"), QStringLiteral("WV"), QStringLiteral("FLAC"),
                             QStringLiteral("TTA"), QStringLiteral("APE")};

class ControlsTest : public testing::Test
{
protected:
    int changesOf(Control &control, const std::function<void()> &action)
    {
        int changes = 0;
        const auto connection =
            QObject::connect(&control, &Control::changed, &control, [&changes] { ++changes; });
        action();
        QObject::disconnect(connection);
        return changes;
    }

    TemporaryFolder folder;
    QString file = folder.file(QStringLiteral("kruv.conf"));
};

} // namespace

TEST_F(ControlsTest, TellEachChangeOnce)
{
    ToggleControl toggle;
    EXPECT_EQ(changesOf(toggle, [&] { toggle.setOn(true); }), 1);
    EXPECT_EQ(changesOf(toggle, [&] { toggle.setOn(true); }), 0);
    EXPECT_EQ(changesOf(toggle, [&] { toggle.setHidden(true); }), 1);
    EXPECT_EQ(changesOf(toggle, [&] { toggle.setEnabled(true); }), 0);
    EXPECT_EQ(changesOf(toggle, [&] { toggle.setEnabled(false); }), 1);
    TextControl text;
    EXPECT_EQ(changesOf(text,
                        [&] {
                            text.setText(QStringLiteral("a"));
                            text.setText(QStringLiteral("a"));
                        }),
              1);
    LabelControl label;
    EXPECT_EQ(changesOf(label, [&] { label.setText(QStringLiteral("b")); }), 1);
}

TEST_F(ControlsTest, AGridKnowsItsCells)
{
    ChoiceControl grid(formats, 2);
    EXPECT_EQ(grid.rows(), 3);
    EXPECT_EQ(grid.selectedTitle(), QStringLiteral("SHN"));
    EXPECT_TRUE(grid.selectTitle(QStringLiteral("TTA")));
    EXPECT_EQ(grid.selectedRow(), 1);
    EXPECT_EQ(grid.selectedColumn(), 1);
    EXPECT_EQ(grid.title(2, 0), QStringLiteral("APE"));
    EXPECT_EQ(grid.title(2, 1), QString()) << "the last row is not full";
    EXPECT_FALSE(grid.selectTitle(QStringLiteral("MP3")));
    EXPECT_EQ(grid.selectedIndex(), 3);
    grid.select(5);
    EXPECT_EQ(grid.selectedIndex(), -1);
    EXPECT_EQ(grid.selectedRow(), -1);
    EXPECT_EQ(grid.selectedColumn(), -1);
    EXPECT_EQ(grid.selectedTitle(), QString());
}

TEST_F(ControlsTest, NumbersStayInTheirRange)
{
    NumberControl level(0, 8, 5);
    level.setValue(11);
    EXPECT_EQ(level.value(), 8);
    level.setValue(-3);
    EXPECT_EQ(level.value(), 0);
}

TEST_F(ControlsTest, TheLastChoiceComesBack)
{
    {
        Preferences preferences(file);
        ChoiceControl format(formats, 2);
        NumberControl level(0, 8, 1);
        ToggleControl verify;
        ToggleControl warn;
        TextControl extension;
        format.tieTo(preferences, QStringLiteral("encodeOutputFormat"));
        level.tieTo(preferences, QStringLiteral("encodeFlacLevel"));
        verify.tieTo(preferences, QStringLiteral("flacVerifyButton"));
        warn.tieTo(preferences, QStringLiteral("warnOnDelete"));
        extension.tieTo(preferences, QStringLiteral("ffpExtension"));
        EXPECT_EQ(format.selectedTitle(), QStringLiteral("FLAC"));
        EXPECT_EQ(level.value(), 5);
        EXPECT_FALSE(verify.isOn());
        EXPECT_TRUE(warn.isOn());
        EXPECT_EQ(extension.text(), QStringLiteral("ffp.txt"));
        format.selectTitle(QStringLiteral("APE"));
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
    NumberControl level(0, 8, 1);
    ToggleControl verify;
    ToggleControl warn;
    TextControl extension;
    format.tieTo(again, QStringLiteral("encodeOutputFormat"));
    level.tieTo(again, QStringLiteral("encodeFlacLevel"));
    verify.tieTo(again, QStringLiteral("flacVerifyButton"));
    warn.tieTo(again, QStringLiteral("warnOnDelete"));
    extension.tieTo(again, QStringLiteral("ffpExtension"));
    EXPECT_EQ(format.selectedTitle(), QStringLiteral("APE"));
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
        NumberControl level(0, 8, 5);
        level.tieTo(preferences, QStringLiteral("encodeFlacLevel"));
        EXPECT_EQ(level.value(), std::clamp(stored, 0, 8));
    }
}
