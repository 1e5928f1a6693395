// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "FlacAdapter.h"

#include <algorithm>

namespace kruv::adapters {

namespace {

bool asksForDecoding(const std::string &argument)
{
    if (argument == "--decode") {
        return true;
    }
    // A cluster of short options, such as "-d" or "-sd".
    return argument.size() > 1 && argument[0] == '-' && argument[1] != '-' &&
           argument.find_first_not_of("acdfFstV", 1) == std::string::npos &&
           argument.find('d') != std::string::npos;
}

} // namespace

void guardDashNames(Arguments &arguments, const std::function<bool(const std::string &)> &exists)
{
    for (auto &argument : arguments) {
        // Options of these tools hold a dot only behind "=" or as a value of their own, so the file system is
        // asked about next to nothing.
        if (argument.size() > 1 && argument.front() == '-' && argument.find('.') != std::string::npos &&
            exists(argument)) {
            argument.insert(0, "./");
        }
    }
}

Arguments flacArguments(Arguments arguments, const std::function<bool(const std::string &)> &exists)
{
    if (std::any_of(arguments.begin(), arguments.end(), asksForDecoding)) {
        std::replace(arguments.begin(), arguments.end(), std::string("--keep-foreign-metadata"),
                     std::string("--keep-foreign-metadata-if-present"));
    }
    guardDashNames(arguments, exists);
    return arguments;
}

} // namespace kruv::adapters
