// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Preferences.h"

#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QFile>

#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace kruv;
using namespace kruv::test;

class PreferencesTest : public testing::Test
{
protected:
    TemporaryFolder folder;
    QString file = folder.file(QStringLiteral("a folder/kruv.conf"));
};

TEST_F(PreferencesTest, ValuesOutliveTheProgram)
{
    const QStringList texts = {QStringLiteral("%number, \"%name\"; [x] \\ %20"), QStringLiteral("@Invalid()"),
                               QStringLiteral("Zażółć 𝄞\nsecond line"), QString(), QStringLiteral(" a ")};
    for (const QString &text : texts) {
        {
            Preferences preferences(file);
            preferences.setValue(QStringLiteral("shntoolNamesFormat"), text);
            preferences.setValue(QStringLiteral("warnOnDelete"), false);
            preferences.setMaxThreads(7);
        }
        // Under another name, so that nothing comes from what the library remembers of the first file.
        const TemporaryFolder other;
        ASSERT_TRUE(QFile::copy(file, other.file(QStringLiteral("copy.conf"))));
        const Preferences again(other.file(QStringLiteral("copy.conf")));
        EXPECT_EQ(again.string(QStringLiteral("shntoolNamesFormat")), text);
        EXPECT_FALSE(again.boolean(QStringLiteral("warnOnDelete")));
        EXPECT_EQ(again.integer(QStringLiteral("maxThreads")), 7);
    }
}

TEST_F(PreferencesTest, StayAsTheyWereWhereTheDiskIsFull)
{
    const QString trash = QStringLiteral("trashOrDelete");
    const QString kept =
        folder.write(QStringLiteral("kept.conf"),
                     "[General]\nshntoolNamesFormat=\"Za\\x17c \\x142, \\\"x\\\"\"\ntrashOrDelete=1\n");
    const QByteArray before = readFile(kept);
    {
        Preferences preferences(kept);
        EXPECT_EQ(preferences.string(QStringLiteral("shntoolNamesFormat")), QStringLiteral("Zaż ł, \"x\""));
        const FullDisk full(0);
        preferences.setValue(trash, 0);
        serveEvents();
        EXPECT_EQ(preferences.integer(trash), 0) << "as long as the program runs";
        EXPECT_EQ(readFile(kept), before);
    }
    EXPECT_EQ(Preferences(kept).integer(trash), 0) << "stored as soon as there is room";
}

TEST_F(PreferencesTest, TheCommandLineNeitherReadsNorLeavesControlStates)
{
    const QString level = QStringLiteral("encodeFlacLevel");
    const QString trash = QStringLiteral("trashOrDelete");
    {
        Preferences window(file);
        window.setValue(level, 8);
        window.setValue(trash, 1);
    }
    {
        Preferences commandLine(file, Preferences::ControlState::Defaults);
        EXPECT_EQ(commandLine.integer(level), 5);
        EXPECT_EQ(commandLine.integer(trash), 1) << "settings hold for both";
        commandLine.setValue(level, 0);
        EXPECT_EQ(commandLine.integer(level), 0) << "within one run";
        commandLine.setValue(trash, 0);
    }
    const Preferences window(file);
    EXPECT_EQ(window.integer(level), 8);
    EXPECT_EQ(window.integer(trash), 0);
}

TEST_F(PreferencesTest, NonsenseInTheFileGivesWayToDefaults)
{
    const QString edited = folder.write(QStringLiteral("edited.conf"),
                                        "[General]\nmaxThreads=many\nencodeFlacLevel=\n\x01garbage\n");
    const Preferences preferences(edited);
    EXPECT_EQ(preferences.integer(QStringLiteral("maxThreads")), 2);
    EXPECT_EQ(preferences.integer(QStringLiteral("encodeFlacLevel")), 5);
    EXPECT_EQ(preferences.integer(QStringLiteral("no such key")), 0);
}

TEST_F(PreferencesTest, AnyThreadMayReadAndStore)
{
    Preferences preferences(file, Preferences::ControlState::Defaults);
    std::vector<std::thread> threads;
    for (const char *key : {"encodeFlacLevel", "trashOrDelete", "lameQValue"}) {
        threads.emplace_back([&preferences, name = QString::fromLatin1(key)] {
            for (int i = 0; i <= 200; ++i) {
                preferences.setValue(name, i);
                static_cast<void>(preferences.integer(QStringLiteral("encodeFlacLevel")));
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(preferences.integer(QStringLiteral("encodeFlacLevel")), 200);
    EXPECT_EQ(preferences.integer(QStringLiteral("lameQValue")), 200);
}
