// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/Crc32.h"
#include "common/MemorySink.h"
#include "common/OutputFile.h"
#include "common/ProgressPrinter.h"
#include "common/SpoolFile.h"
#include "common/TestProcess.h"
#include "common/ToolError.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
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

TEST(OutputFile, AppearsOnlyWhenComplete)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("out", oldBytes);
    ::chmod(path.c_str(), 0640);
    {
        OutputFile output(path);
        output.write(newBytes);
        EXPECT_EQ(readFile(path), oldBytes);
    }
    EXPECT_EQ(readFile(path), oldBytes);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});

    OutputFile output(path);
    output.write(newBytes);
    output.rewrite(0, Bytes{'N'});
    output.commit();
    EXPECT_EQ(readFile(path), (Bytes{'N', 'e', 'w', '!'}));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"out"});
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST(OutputFile, KeepsALinkAndReplacesItsTarget)
{
    const TemporaryFolder folder;
    const std::string target = folder.write("target", oldBytes);
    const std::string link = folder.path("link");
    ASSERT_EQ(::symlink(target.c_str(), link.c_str()), 0);
    OutputFile output(link);
    output.write(newBytes);
    output.commit();
    EXPECT_EQ(readFile(target), newBytes);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST(OutputFile, ReportsFailingWrites)
{
    EXPECT_THROW(OutputFile("/nonexistent-folder/out"), ToolError);
    OutputFile full("/dev/full");
    EXPECT_FALSE(full.canRewrite());
    EXPECT_THROW(full.write(Bytes(1024 * 1024)), ToolError);
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
                output.write(Bytes(1024 * 1024));
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

TEST(ProgressPrinter, PrintsEachPercentOnceAndEndsWith100)
{
    const TemporaryFolder folder;
    const int file = ::open(folder.path("log").c_str(), O_CREAT | O_WRONLY, 0600);
    const int saved = ::dup(STDERR_FILENO);
    ::dup2(file, STDERR_FILENO);
    ProgressPrinter progress({"[", "%]", 3, "\n"});
    progress.update(0, 0);
    for (const unsigned done : {1u, 1u, 2u, 3u, 3u}) {
        progress.update(done, 3);
    }
    progress.finish();
    ::dup2(saved, STDERR_FILENO);
    ::close(saved);
    ::close(file);

    std::string expected;
    for (int i = 0; i <= 100; ++i) {
        char piece[16];
        std::snprintf(piece, sizeof piece, "[%3d%%]", i);
        expected += piece;
    }
    const Bytes log = readFile(folder.path("log"));
    EXPECT_EQ(std::string(log.begin(), log.end()), expected + "\n");
}

TEST(Crc32, HasTheStandardCheckValueAndCanBeContinued)
{
    const std::string digits = "123456789";
    const Bytes bytes(digits.begin(), digits.end());
    EXPECT_EQ(crc32(bytes), 0xCBF43926u);
    EXPECT_EQ(crc32(std::span(bytes).subspan(4), crc32(std::span(bytes).first(4))), 0xCBF43926u);
}

} // namespace kruv::tools::test
