// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Commands.h"

#include <algorithm>
#include <cctype>
#include <functional>

namespace kruv::Commands {

namespace {

/// With what roff would take for its own made plain.
std::string plain(const std::string &text)
{
    std::string result;
    for (const char each : text) {
        const bool beginsLine = result.empty() || result.back() == '\n';
        if (each == '\\') {
            result += "\\e";
        } else if (each == '-') {
            result += "\\-";
        } else if (each == '~') {
            result += "\\(ti";
        } else {
            result += beginsLine && (each == '.' || each == '\'') ? "\\&" : "";
            result += each;
        }
    }
    return result;
}

std::string bold(const std::string &text)
{
    return "\\fB" + plain(text) + "\\fP";
}

std::string italic(const std::string &text)
{
    return "\\fI" + plain(text) + "\\fP";
}

std::string typeOf(const CLI::Option &option)
{
    return option.get_type_name().substr(0, option.get_type_name().find(':'));
}

/// Calls `visit` for each command that can be run, with its whole name.
void forEachCommand(const CLI::App &app, const std::string &prefix,
                    const std::function<void(const CLI::App &, const std::string &)> &visit)
{
    for (const CLI::App *each : app.get_subcommands([](const CLI::App *) { return true; })) {
        const std::string name = prefix + ' ' + each->get_name();
        if (each->get_require_subcommand_min() == 0) {
            visit(*each, name);
        }
        forEachCommand(*each, name, visit);
    }
}

std::string synopsisOf(const CLI::App &command, const std::string &name)
{
    std::string line = ".br\n" + bold(name);
    std::string positionals;
    for (const CLI::Option *option : command.get_options()) {
        if (option->get_positional()) {
            positionals += ' ' + italic(typeOf(*option) + (option->get_expected_max() > 1 ? "..." : ""));
        } else if (option->get_required()) {
            line += ' ' + bold("--" + option->get_lnames().front()) + ' ' + italic(typeOf(*option));
        }
    }
    return line + " [" + italic("OPTION") + "...]" + positionals + '\n';
}

std::string flagOf(const CLI::Option &option)
{
    std::string names;
    for (const std::string &name : option.get_snames()) {
        names += bold('-' + name) + ", ";
    }
    for (const std::string &name : option.get_lnames()) {
        names += bold("--" + name);
    }
    const std::string type = option.get_type_size() == 0 ? std::string() : ' ' + italic(typeOf(option));
    return ".TP\n" + names + type + '\n' + plain(option.get_description()) + ".\n";
}

std::string sectionOf(const CLI::App &command, const std::string &name)
{
    std::string title = name;
    std::ranges::transform(title, title.begin(),
                           [](unsigned char each) { return static_cast<char>(std::toupper(each)); });
    std::string text = ".SH \"" + title + "\"\n" + plain(command.get_description()) + ".\n";
    for (const CLI::Option *option : command.get_options()) {
        if (!option->get_positional()) {
            text += flagOf(*option);
        }
    }
    if (!command.get_footer().empty()) {
        text += ".PP\n.nf\n" + plain(command.get_footer()) + "\n.fi\n";
    }
    return text;
}

} // namespace

std::string manualSynopsis(const CLI::App &app)
{
    std::string text;
    forEachCommand(app, "kruv", [&text](const CLI::App &command, const std::string &name) {
        text += synopsisOf(command, name);
    });
    return text;
}

std::string manualSections(const CLI::App &app)
{
    std::string text;
    forEachCommand(app, "kruv", [&text](const CLI::App &command, const std::string &name) {
        text += sectionOf(command, name);
    });
    return text;
}

} // namespace kruv::Commands
