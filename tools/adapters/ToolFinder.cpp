// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ToolFinder.h"

#include "Arguments.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

struct KnownTool
{
    std::string_view name;
    std::string_view equivalent; // another program with the same command line; may be empty
    std::string_view package;    // Debian package; empty for the tools that come with Kruv
};

constexpr std::array knownTools{
    KnownTool{"flac", "", "flac"},
    KnownTool{"shntool", "", "shntool"},
    KnownTool{"wavpack", "", "wavpack"},
    KnownTool{"wvunpack", "", "wavpack"},
    KnownTool{"mkisofs", "genisoimage", "genisoimage"},
    KnownTool{"cdda2wav", "icedax", "icedax"},
    KnownTool{"sox", "", "sox"},
    KnownTool{"lame", "", "lame"},
};

const KnownTool *knownTool(std::string_view name)
{
    for (const auto &tool : knownTools) {
        if (tool.name == name) {
            return &tool;
        }
    }
    return nullptr;
}

bool isOwnProgram(const std::string &path)
{
    const std::unique_ptr<char, decltype(&free)> real(realpath(path.c_str(), nullptr), free);
    return !real || baseName(real.get()) == programName;
}

bool isProgram(const std::string &path)
{
    struct stat status;
    return access(path.c_str(), X_OK) == 0 && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           !isOwnProgram(path);
}

template <typename Visitor> bool visitElements(std::string_view path, const Visitor &visitor)
{
    while (!path.empty()) {
        const auto end = path.find(':');
        const auto element = path.substr(0, end);
        if (!element.empty() && visitor(element)) {
            return true;
        }
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
    return false;
}

} // namespace

ToolFinder::ToolFinder(std::string searchPath, std::string ownFolder)
    : m_searchPath(std::move(searchPath))
    , m_ownFolder(std::move(ownFolder))
{
    if (m_searchPath.find_first_not_of(':') == std::string::npos) {
        m_searchPath = "/usr/local/bin:/usr/bin:/bin";
    }
}

std::string ToolFinder::find(std::string_view tool) const
{
    auto found = findExactly(tool);
    if (const auto *known = knownTool(tool); found.empty() && known && !known->equivalent.empty()) {
        found = findExactly(known->equivalent);
    }
    return found;
}

std::string ToolFinder::findExactly(std::string_view name) const
{
    std::string found;
    const auto holdsTool = [&](std::string_view folder) {
        std::string candidate(folder);
        candidate += '/';
        candidate += name;
        if (!isProgram(candidate)) {
            return false;
        }
        found = std::move(candidate);
        return true;
    };
    if (!visitElements(m_searchPath, holdsTool)) {
        holdsTool(m_ownFolder);
    }
    return found;
}

std::string ToolFinder::childSearchPath() const
{
    std::string path;
    bool ownIncluded = false;
    visitElements(m_searchPath, [&](std::string_view element) {
        ownIncluded = ownIncluded || element == m_ownFolder;
        path.append(element).append(":");
        return false;
    });
    if (ownIncluded) {
        path.pop_back();
        return path;
    }
    return path + m_ownFolder;
}

std::string ToolFinder::missingText(std::string_view tool)
{
    std::string text = "the program \"";
    text.append(tool).append("\" was not found");
    const auto *known = knownTool(tool);
    if (known && !known->package.empty()) {
        text.append("; install the package \"").append(known->package).append("\"");
    } else {
        text.append("; it belongs to Kruv: build or install Kruv again");
    }
    return text;
}

} // namespace kruv::adapters
