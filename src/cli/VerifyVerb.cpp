// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/VerifyVerb.h"

#include "app/KruvController.h"
#include "checksums/ChecksumTab.h"

namespace kruv {

VerifyVerb::VerifyVerb(CLI::App &parent)
    : TabVerb(parent, "verify", "Test audio files with their own codec")
{
    declareCommonFlags();
    app().footer("The report goes to standard output; the exit status is 1 when a file fails its test.\n"
                 "Example: test every FLAC file below a folder\n"
                 "  kruv verify ~/Music/Concerts");
}

void VerifyVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    ChecksumTab &tab = controller.checksumTab();
    tab.commandOptions().select(ChecksumTab::VerifyAudio);
    runTab(tab, queueRun, paths);
}

} // namespace kruv
