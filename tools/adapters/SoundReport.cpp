// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SoundReport.h"

#include "File.h"

#include <cstdlib>
#include <fcntl.h>
#include <memory>

namespace kruv::adapters {

namespace {

constexpr const char *variable = "KRUV_SOUND_REPORT";
constexpr std::size_t sizeLimit = std::size_t{16} << 20;

std::string realPath(const std::string &file)
{
    const std::unique_ptr<char, decltype(&free)> real(realpath(file.c_str(), nullptr), free);
    return real ? real.get() : file;
}

std::string takeWord(std::string_view &text)
{
    const auto end = text.find('\0');
    const std::string word(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return word;
}

} // namespace

SoundReport::SoundReport()
    : m_folder(ScratchFolder::temporaryParent())
{
    setenv(variable, (m_folder.path() + "/report").c_str(), 1);
}

void SoundReport::read()
{
    const auto content = readStart(m_folder.path() + "/report", sizeLimit);
    for (std::string_view rest = content; !rest.empty();) {
        const auto file = takeWord(rest);
        auto complaint = takeWord(rest);
        // Each file is decoded several times. What went wrong once counts.
        if (auto &known = m_complaints[file]; known.empty()) {
            known = std::move(complaint);
        }
    }
}

bool SoundReport::knows(const std::string &file) const
{
    return m_complaints.count(realPath(file)) != 0;
}

std::string SoundReport::complaint(const std::string &file) const
{
    const auto found = m_complaints.find(realPath(file));
    return found == m_complaints.end() ? std::string() : found->second;
}

void SoundReport::note(const std::string &file, const std::string &complaint)
{
    const char *path = getenv(variable);
    if (path == nullptr) {
        return;
    }
    constexpr mode_t ownerOnly = 0600;
    const File report(open(path, O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, ownerOnly));
    const auto line = realPath(file) + '\0' + complaint + '\0';
    if (report && !writeAll(report.descriptor(), line)) {
        complain("kruv-adapters", "could not report on " + file);
    }
}

} // namespace kruv::adapters
