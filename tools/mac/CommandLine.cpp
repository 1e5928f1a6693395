// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include <charconv>

namespace kruv::mac {

namespace {

bool isMode(const std::string &argument, char letter)
{
    return argument.size() >= 2 && argument[0] == '-' && (argument[1] | 0x20) == letter;
}

bool isWholeMode(const std::string &argument, char letter)
{
    return argument.size() == 2 && isMode(argument, letter);
}

const Level *levelOf(const std::string &argument)
{
    unsigned number = 0;
    const char *end = argument.data() + argument.size();
    const auto [stop, error] = std::from_chars(argument.data() + 2, end, number);
    return error == std::errc() && stop == end ? findLevel(number) : nullptr;
}

} // namespace

std::optional<CommandLine> CommandLine::parse(std::span<const std::string> arguments)
{
    CommandLine result;
    if (arguments.size() == 2) {
        const bool modeFirst = isWholeMode(arguments[0], 'v');
        if (!modeFirst && !isWholeMode(arguments[1], 'v')) {
            return std::nullopt;
        }
        result.input = arguments[modeFirst ? 1 : 0];
        return result;
    }
    if (arguments.size() != 3) {
        return std::nullopt;
    }
    result.input = arguments[0];
    result.output = arguments[1];
    if (isWholeMode(arguments[2], 'd')) {
        result.mode = Mode::Decompress;
    } else if (isMode(arguments[2], 'c')) {
        result.mode = Mode::Compress;
        result.level = levelOf(arguments[2]);
        if (!result.level) {
            return std::nullopt;
        }
    } else {
        return std::nullopt;
    }
    return result;
}

std::string CommandLine::usage()
{
    return "Usage:\n"
           "  mac INPUT.wav OUTPUT.ape -cLEVEL   compress\n"
           "  mac INPUT.ape OUTPUT.wav -d        decompress\n"
           "  mac INPUT.ape -v                   verify\n"
           "LEVEL is 1000 (fast), 2000 (normal), 3000 (high), 4000 (extra high) or 5000 (insane).\n"
           "\"-\" stands for standard input and output; a compressed output must be a file.\n";
}

} // namespace kruv::mac
