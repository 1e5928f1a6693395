// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Commands.h"

#include <QCoreApplication>

#include <algorithm>
#include <sstream>

namespace kruv::Commands {

namespace {

struct CompletionText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Completion)
};

constexpr const char *files = ":files\n";
constexpr const char *folders = ":folders\n";

/// Flags that no command declares, because they are the program's own.
constexpr const char *windowFlag = "--tab";
constexpr const char *newWindowFlag = "--new-window";
constexpr const char *tabs = "decode|encode|checksum|shntool|fix SBE|util|Tags|lossy|about";

using Subcommands = std::vector<const CLI::App *>;
Subcommands subcommandsOf(const CLI::App &app)
{
    return app.get_subcommands([](const CLI::App *) { return true; });
}

std::string candidate(const std::string &word, const std::string &description, const std::string &begin)
{
    if (word.compare(0, begin.size(), begin) != 0) {
        return {};
    }
    return description.empty() ? word + '\n' : word + '\t' + description + '\n';
}

/// The values of an option by the name of their type: choices are named in it, with bars between.
std::string values(const std::string &type, const std::string &begin)
{
    if (type == "DIR") {
        return folders;
    }
    if (type == "FILE" || type == "PATH") {
        return files;
    }
    std::string found;
    if (type.find('|') != std::string::npos) {
        std::istringstream choices(type);
        for (std::string choice; std::getline(choices, choice, '|');) {
            found += candidate(choice, {}, begin);
        }
    }
    return found;
}

/// The command that `words` lead to, without the last, which is being typed.
const CLI::App &commandOf(const CLI::App &app, const std::vector<std::string> &words)
{
    const CLI::App *command = &app;
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        const auto inner = subcommandsOf(*command);
        const auto found = std::ranges::find_if(
            inner, [&](const CLI::App *each) { return each->get_name() == words[index]; });
        if (found == inner.end()) {
            break;
        }
        command = *found;
    }
    return *command;
}

std::string flags(const CLI::App &command, const std::string &begin)
{
    std::string found;
    for (const CLI::Option *option : command.get_options()) {
        for (const std::string &name : option->get_lnames()) {
            found += candidate("--" + name, option->get_description(), begin);
        }
    }
    return found;
}

} // namespace

std::string completions(const CLI::App &app, const std::vector<std::string> &words)
{
    const std::string begin = words.empty() ? std::string() : words.back();
    const std::string before = words.size() < 2 ? std::string() : words[words.size() - 2];
    const CLI::App &command = commandOf(app, words);
    const bool isRoot = &command == &app;
    if (isRoot && before == windowFlag) {
        return values(tabs, begin);
    }
    const CLI::Option *option =
        before.empty() || before[0] != '-' ? nullptr : command.get_option_no_throw(before);
    if (option && option->get_type_size() != 0) {
        return values(option->get_type_name().substr(0, option->get_type_name().find(':')), begin);
    }
    if (!begin.empty() && begin[0] == '-') {
        return flags(command, begin) +
               (isRoot ? candidate(windowFlag,
                                   CompletionText::tr("Open the window on this tab").toStdString(), begin) +
                             candidate(newWindowFlag, CompletionText::tr("Open another window").toStdString(),
                                       begin)
                       : std::string());
    }
    std::string found;
    for (const CLI::App *each : subcommandsOf(command)) {
        found += candidate(each->get_name(), each->get_description(), begin);
    }
    return isRoot || found.empty() ? found + files : found;
}

} // namespace kruv::Commands
