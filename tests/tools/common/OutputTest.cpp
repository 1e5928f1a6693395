// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/MemorySink.h"
#include "common/OutputFile.h"
#include "common/SpoolFile.h"
#include "common/TestProcess.h"
#include "common/ToolError.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::tools::test {

namespace {

const Bytes oldBytes = {'o', 'l', 'd'};
const Bytes newBytes = {'n', 'e', 'w', '!'};

} // namespace

// Through a link too, which stays one.
TEST(OutputFile, AppearsOnlyWhenComplete)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("out", oldBytes);
    const std::string link = folder.path("link");
    ASSERT_EQ(::symlink(path.c_str(), link.c_str()), 0);
    ::chmod(path.c_str(), 0640);
    for (const std::string &name : {path, link}) {
        folder.write("out", oldBytes);
        {
            OutputFile dropped(name);
            dropped.write(newBytes);
        }
        OutputFile output(name);
        output.write(newBytes);
        output.rewrite(0, Bytes{'N'});
        EXPECT_EQ(readFile(path), oldBytes);
        output.commit();
        EXPECT_EQ(readFile(path), (Bytes{'N', 'e', 'w', '!'}));
        EXPECT_EQ(folder.names(), (std::vector<std::string>{"link", "out"}));
        EXPECT_TRUE(std::filesystem::is_symlink(link));
        struct stat status = {};
        ASSERT_EQ(::stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0640u);
    }
}

TEST(OutputFile, ReportsFailingWrites)
{
    EXPECT_THROW(OutputFile("/nonexistent-folder/out"), ToolError);
    OutputFile full("/dev/full");
    EXPECT_FALSE(full.canRewrite());
    EXPECT_THROW(full.write(Bytes(1 << 20)), ToolError);
    OutputFile alsoFull("/dev/full");
    alsoFull.write(newBytes);
    EXPECT_THROW(alsoFull.commit(), ToolError);
}

TEST(OutputFile, LeavesNothingWhenADiskIsFullOrASignalEndsIt)
{
    const TemporaryFolder folder;
    for (const bool bySignal : {false, true}) {
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit limit = {100000, 100000};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            ::signal(SIGXFSZ, SIG_IGN);
            try {
                OutputFile output(folder.path("out"));
                if (bySignal) {
                    ::raise(SIGTERM);
                }
                output.write(Bytes(1 << 20));
            } catch (const ToolError &) {
                ::_exit(7);
            }
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(bySignal ? WTERMSIG(status) : WEXITSTATUS(status), bySignal ? SIGTERM : 7);
        EXPECT_TRUE(folder.names().empty());
    }
}

TEST(SpoolFile, GivesBackMoreThanItKeepsInMemory)
{
    SpoolFile spool;
    Bytes all;
    for (unsigned i = 0; i < 70; ++i) {
        const Bytes block(300000 + i, static_cast<std::uint8_t>(i));
        spool.write(block);
        all.insert(all.end(), block.begin(), block.end());
    }
    MemorySink copy;
    spool.copyTo(copy);
    EXPECT_TRUE(copy.bytes() == all);
}

} // namespace kruv::tools::test
