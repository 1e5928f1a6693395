// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ToolFinder.h"

#include "ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace kruv::adapters {

namespace {

namespace fs = std::filesystem;

class ToolFinderTest : public testing::Test
{
protected:
    std::string program(const std::string &name, fs::perms rights = fs::perms::owner_all)
    {
        const auto path = m_folder.path() + "/" + name;
        fs::create_directories(fs::path(path).parent_path());
        std::ofstream(path) << "#!/bin/sh\n";
        fs::permissions(path, rights);
        return path;
    }

    void link(const std::string &target, const std::string &name)
    {
        const auto path = m_folder.path() + "/" + name;
        fs::create_directories(fs::path(path).parent_path());
        fs::create_symlink(target, path);
    }

    std::string folder(const std::string &name) const { return m_folder.path() + "/" + name; }

private:
    ScratchFolder m_folder{testing::TempDir()};
};

} // namespace

TEST_F(ToolFinderTest, PassesOverEveryResourcesFolder)
{
    // Two resources folders and a personal link to one of them stand before the real tool.
    program("one/kruv-adapters");
    program("other/kruv-adapters");
    link("kruv-adapters", "one/flac");
    link("kruv-adapters", "other/flac");
    link(folder("other/flac"), "home/flac");
    const auto real = program("usr/flac");
    const ToolFinder finder(
        folder("home") + ":" + folder("one") + "::" + folder("other") + ":" + folder("usr"), folder("one"));
    EXPECT_EQ(finder.find("flac"), real);
}

TEST_F(ToolFinderTest, TakesOnlyProgramsAndKnowsEquivalents)
{
    program("a/mkisofs", fs::perms::owner_read);
    fs::create_directories(folder("b/mkisofs"));
    link("gone", "c/mkisofs");
    const auto path = folder("a") + ":" + folder("b") + ":" + folder("c") + ":" + folder("d");
    EXPECT_EQ(ToolFinder(path, folder("own")).find("mkisofs"), "");
    const auto equivalent = program("d/genisoimage");
    EXPECT_EQ(ToolFinder(path, folder("own")).find("mkisofs"), equivalent);
}

TEST_F(ToolFinderTest, FindsOurOwnCodersLast)
{
    const auto own = program("own/mac");
    EXPECT_EQ(ToolFinder(folder("usr"), folder("own")).find("mac"), own);
    const auto installed = program("usr/mac");
    EXPECT_EQ(ToolFinder(folder("usr"), folder("own")).find("mac"), installed);
}

TEST_F(ToolFinderTest, ChildrenNeverSearchTheWorkingFolder)
{
    EXPECT_EQ(ToolFinder(":/a::/b:", "/own").childSearchPath(), "/a:/b:/own");
    EXPECT_EQ(ToolFinder("/a:/own", "/own").childSearchPath(), "/a:/own");
    EXPECT_EQ(ToolFinder(":", "/own").childSearchPath(), "/usr/local/bin:/usr/bin:/bin:/own");
}

} // namespace kruv::adapters
