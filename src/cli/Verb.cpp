// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Verb.h"

#include "cli/CommonOptions.h"
#include "cli/TimeSpan.h"

namespace kruv {

void Verb::declareRunFlags(CommonOptions &options)
{
    constexpr int mostJobs = 256;
    addOption("-j,--jobs", options.jobs,
              tr("Jobs at once, 1 to %1 (default: the preference, 2 at first)").arg(mostJobs))
        ->check(CLI::Range(1, mostJobs).description(std::string()))
        ->type_name("N");
    declareSteeringFlags(options);
    addFlag("-q,--quiet", options.quiet, tr("Say nothing but errors and results"));
    addFlag("--json", options.json, tr("One JSON object a line on standard output"));
    addFlag("--no-color", options.noColor, tr("No colours (the same as setting NO_COLOR)"));
}

CLI::Option *Verb::addRunNumber(std::int64_t &number, const QString &help)
{
    return addOption("run", number, help)
        ->check([](const std::string &text) {
            return QString::fromStdString(text).toLongLong() > 0
                       ? std::string()
                       : tr("give a run's number, as kruv history shows it").toStdString();
        })
        ->type_name("RUN");
}

void Verb::declareSteeringFlags(CommonOptions &options)
{
    addOption("--stop-after", options.stopAfter,
              tr("Begin no further job after that time, such as 8h, 30m or 90s; those that run may finish"))
        ->check([](const std::string &text) {
            return TimeSpan::fromText(QString::fromStdString(text))
                       ? std::string()
                       : tr("give hours, minutes or seconds with their letter: 8h, 1h30m, 90s").toStdString();
        })
        ->type_name("TIME");
    CLI::Option *nice =
        addFlag("--nice", options.nice,
                options.nice ? tr("Let other programs have processors and disks first (the default here)")
                             : tr("Let other programs have processors and disks first"));
    addFlag("--no-nice", options.noNice, tr("Compete for processors and disks like any program"))
        ->excludes(nice);
}

} // namespace kruv
