// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Cdda2wavAdapter.h"

namespace kruv::adapters {

Arguments cdda2wavArguments(Arguments arguments, const std::vector<OpticalDrive> &drives)
{
    constexpr std::string_view key = "dev=";
    for (auto &argument : arguments) {
        if (argument.compare(0, key.size(), key) == 0) {
            const auto device = deviceOfProvider(drives, std::string_view(argument).substr(key.size()));
            if (!device.empty()) {
                argument = std::string(key) + device;
            }
        }
    }
    return arguments;
}

} // namespace kruv::adapters
