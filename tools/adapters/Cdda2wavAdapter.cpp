// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Cdda2wavAdapter.h"

namespace kruv::adapters {

Cdda2wavPlan planCdda2wav(Arguments arguments, const std::vector<OpticalDrive> &drives)
{
    constexpr std::string_view key = "dev=";
    Cdda2wavPlan plan;
    for (auto &argument : arguments) {
        if (argument.compare(0, key.size(), key) != 0) {
            continue;
        }
        const auto provider = argument.substr(key.size());
        if (!provider.empty() && !isProviderName(provider)) {
            continue;
        }
        const auto device = deviceOfProvider(drives, provider);
        if (device.empty()) {
            plan.error =
                "no optical drive fits \"" + provider + "\" (" + std::to_string(drives.size()) + " found)";
        }
        argument = std::string(key).append(device);
    }
    plan.arguments = std::move(arguments);
    return plan;
}

} // namespace kruv::adapters
