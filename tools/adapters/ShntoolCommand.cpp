// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShntoolCommand.h"

#include <algorithm>
#include <array>
#include <strings.h>

namespace kruv::adapters {

namespace {

constexpr std::string_view commonValueOptions = "FOPadiorz";

// "conv" has no -n of its own: it is the exact output name of the command lines we are given.
constexpr std::array modes{
    ShntoolMode{.name = "conv", .valueOptions = "n", .writes = true},
    ShntoolMode{.name = "fix", .writes = true, .oneResult = true, .sorts = true},
    ShntoolMode{.name = "join", .writes = true, .oneResult = true, .sorts = true},
    ShntoolMode{.name = "split", .valueOptions = "ceflmntux", .writes = true, .oneResult = true},
    ShntoolMode{.name = "trim", .postfix = "-trimmed", .writes = true},
    ShntoolMode{.name = "pad", .postfix = "-padded", .writes = true},
    ShntoolMode{.name = "strip", .postfix = "-stripped", .writes = true},
    ShntoolMode{.name = "len", .valueOptions = "uU", .headersOnly = true},
    ShntoolMode{.name = "info", .headersOnly = true},
    ShntoolMode{.name = "cue", .headersOnly = true},
    ShntoolMode{.name = "hash"},
    ShntoolMode{.name = "cmp", .valueOptions = "cf"},
};

const ShntoolMode *findMode(std::string_view name)
{
    const auto *found =
        std::find_if(modes.begin(), modes.end(), [name](const auto &mode) { return mode.name == name; });
    return found == modes.end() ? nullptr : found;
}

// The encoder of "fix" comes as separate words with braces around its command: "cust" "ext=flac" "{" "flac"
// ... "}". shntool wants one word without braces.
Arguments joinEncoderWords(const Arguments &arguments)
{
    Arguments joined;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        joined.push_back(arguments[i]);
        if (arguments[i] != "cust" || i == 0 || arguments[i - 1] != "-o") {
            continue;
        }
        const auto closing =
            std::find(arguments.begin() + static_cast<std::ptrdiff_t>(i), arguments.end(), "}");
        if (i + 2 >= arguments.size() || arguments[i + 2] != "{" || closing == arguments.end()) {
            continue;
        }
        while (arguments[++i] != "}") {
            if (arguments[i] != "{") {
                joined.back().append(" ").append(arguments[i]);
            }
        }
    }
    return joined;
}

bool isDashName(const std::string &word, const std::function<bool(const std::string &)> &exists)
{
    static constexpr std::array extensions{".wav", ".aif", ".aiff", ".flac", ".shn", ".wv", ".ape", ".tta"};
    const auto dot = word.rfind('.');
    if (dot == std::string::npos) {
        return false;
    }
    const bool audio = std::any_of(extensions.begin(), extensions.end(), [&](const char *extension) {
        return strcasecmp(word.c_str() + dot, extension) == 0;
    });
    return (audio && word.find('/') == std::string::npos) || exists(word);
}

} // namespace

const std::string *ShntoolCommand::value(char letter) const
{
    const auto option = std::find_if(options.rbegin(), options.rend(),
                                     [letter](const auto &each) { return each.letter == letter; });
    return option == options.rend() ? nullptr : &option->value;
}

void ShntoolCommand::setValue(char letter, std::string value)
{
    const auto option = std::find_if(options.rbegin(), options.rend(),
                                     [letter](const auto &each) { return each.letter == letter; });
    if (option == options.rend()) {
        options.push_back({letter, true, std::move(value)});
    } else {
        option->value = std::move(value);
    }
}

void ShntoolCommand::remove(char letter)
{
    std::erase_if(options, [letter](const auto &each) { return each.letter == letter; });
}

std::optional<ShntoolCommand> ShntoolCommand::parse(const Arguments &given,
                                                    const std::function<bool(const std::string &)> &exists)
{
    ShntoolCommand command;
    command.mode = given.empty() ? nullptr : findMode(given.front());
    if (!command.mode) {
        return std::nullopt;
    }
    const auto takesValue = [&command](char letter) {
        return commonValueOptions.find(letter) != std::string_view::npos ||
               command.mode->valueOptions.find(letter) != std::string_view::npos;
    };
    const auto arguments = joinEncoderWords(given);
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const auto &word = arguments[i];
        if (word == "--") {
            command.files.insert(command.files.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                 arguments.end());
            break;
        }
        if (word.size() < 2 || word.front() != '-' || isDashName(word, exists)) {
            command.files.push_back(word);
            continue;
        }
        for (std::size_t at = 1; at < word.size(); ++at) {
            if (!takesValue(word[at])) {
                command.options.push_back({word[at], false, {}});
                continue;
            }
            if (at + 1 == word.size() && i + 1 == arguments.size()) {
                return std::nullopt; // shntool's own message fits
            }
            command.options.push_back(
                {word[at], true, at + 1 < word.size() ? word.substr(at + 1) : arguments[++i]});
            break;
        }
    }
    return command;
}

} // namespace kruv::adapters
