// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/TestProcess.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::tools::test {

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "kruv-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) {
        throw std::runtime_error("no temporary folder");
    }
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(const std::string &name, const Bytes &bytes) const
{
    std::ofstream(path(name), std::ios::binary)
        .write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path(name);
}

std::vector<std::string> TemporaryFolder::names() const
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(m_path)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

Bytes readFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

namespace {

std::string programPath(const std::string &program)
{
    const char *resources = std::getenv("KRUV_RESOURCES");
    const std::string own = std::string(resources ? resources : ".") + "/" + program;
    return ::access(own.c_str(), X_OK) == 0 ? own : program;
}

int spawn(const std::string &program, const std::vector<std::string> &arguments, const std::string &input,
          const std::string &output, const std::string &errors)
{
    std::vector<std::string> words = {programPath(program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> argv;
    argv.reserve(words.size() + 1);
    for (std::string &word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 0, input.c_str(), O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT, 0600);
    ::posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t child = 0;
    const int failed = ::posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot run " + words[0]);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string text(const Bytes &bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

ProcessResult run(const std::string &program, const std::vector<std::string> &arguments, const Bytes &input)
{
    // A pipe would need a second thread; cat makes one where it matters that the input is not a regular file.
    const TemporaryFolder folder;
    const std::string inputPath = folder.write("input", input);
    ProcessResult result;
    result.status = spawn(program, arguments, inputPath, folder.path("output"), folder.path("errors"));
    result.output = readFile(folder.path("output"));
    result.errors = text(readFile(folder.path("errors")));
    return result;
}

ProcessResult runInto(const std::string &outputPath, const std::string &program,
                      const std::vector<std::string> &arguments)
{
    const TemporaryFolder folder;
    ProcessResult result;
    result.status = spawn(program, arguments, "/dev/null", outputPath, folder.path("errors"));
    result.errors = text(readFile(folder.path("errors")));
    return result;
}

Bytes decodeWithFfmpeg(const std::string &path, const std::string &rawFormat)
{
    const ProcessResult result = run("ffmpeg", {"-v", "error", "-nostdin", "-err_detect", "crccheck", "-i",
                                                path, "-map", "0:a", "-f", rawFormat, "-"});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return result.output;
}

const char *rawFormatFor(const WavFormat &format)
{
    return format.bitsPerSample == 8 ? "u8" : format.bitsPerSample == 16 ? "s16le" : "s24le";
}

} // namespace kruv::tools::test
