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
    std::string program(const std::string &name)
    {
        auto path = m_folder.path() + "/" + name;
        fs::create_directories(fs::path(path).parent_path());
        std::ofstream(path) << "#!/bin/sh\n";
        fs::permissions(path, fs::perms::owner_all);
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

TEST_F(ToolFinderTest, ChildrenNeverSearchTheWorkingFolder)
{
    EXPECT_EQ(ToolFinder(":/a::/b:", "/own").childSearchPath(), "/a:/b:/own");
    EXPECT_EQ(ToolFinder("/a:/own", "/own").childSearchPath(), "/a:/own");
    EXPECT_EQ(ToolFinder(":", "/own").childSearchPath(), "/usr/local/bin:/usr/bin:/bin:/own");
}

} // namespace kruv::adapters
