// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/MakeReporter.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "cli/TextReporter.h"

#include <QtGlobal>

namespace kruv {

std::unique_ptr<JobReporter> makeReporter(const CommonOptions &options)
{
    if (options.json) {
        return std::make_unique<JsonReporter>();
    }
    const bool terminal = Console::errorIsTerminal();
    return std::make_unique<TextReporter>(TextReporter::Style{
        .rows = terminal && !options.quiet,
        .color = terminal && !options.noColor && !qEnvironmentVariableIsSet("NO_COLOR"),
        .quiet = options.quiet,
    });
}

} // namespace kruv
