// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Verb.h"

#include "cli/CommonOptions.h"

namespace kruv {

void Verb::declareRunFlags(CommonOptions &options)
{
    constexpr int mostJobs = 256;
    addOption("-j,--jobs", options.jobs,
              tr("Jobs at once, 1 to %1 (default: the preference, 2 at first)").arg(mostJobs))
        ->check(CLI::Range(1, mostJobs).description(std::string()))
        ->type_name("N");
    addFlag("-q,--quiet", options.quiet, tr("Say nothing but errors and results"));
    addFlag("--json", options.json, tr("One JSON object a line on standard output"));
    addFlag("--no-color", options.noColor, tr("No colours (the same as setting NO_COLOR)"));
}

} // namespace kruv
