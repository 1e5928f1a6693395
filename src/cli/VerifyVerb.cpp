// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/VerifyVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "cli/VerificationTally.h"
#include "tabs/ChecksumTab.h"
#include "tabs/KruvController.h"

namespace kruv {

VerifyVerb::VerifyVerb(CLI::App &parent, What what)
    : TabVerb(parent, "verify",
              what == What::Lists ? tr("Verify checksum lists")
                                  : tr("Test audio files with their own codec, and verify checksum lists"))
    , m_what(what)
{
    giveWay();
    declareCommonFlags();
    const QString example = what == What::Lists
                                ? tr("Example: check every list below a folder\n"
                                     "  kruv checksum verify ~/Music/Concerts")
                                : tr("Example: test every file, and every list, below a folder\n"
                                     "  kruv verify ~/Music/Concerts");
    setFooter(tr("The report and the counts go to standard output; the exit status is 1 unless every file\n"
                 "matched.") +
              u'\n' + example);
}

void VerifyVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    ChecksumTab &tab = controller.checksumTab();
    VerificationTally tally(controller.taskQueue(), options().json);
    if (m_what == What::AudioAndLists) {
        tab.commandOptions().select(ChecksumTab::VerifyAudio);
        runTab(tab, queueRun, paths);
    }
    tab.commandOptions().select(ChecksumTab::VerifyLists);
    runTab(tab, queueRun, paths);
    if (queueRun.totals().all == 0) {
        throw UsageError(tr("verify: nothing in the given paths can be verified"));
    }
    tally.writeCounts();
    if (!tally.allMatched()) {
        setFailed();
    }
}

} // namespace kruv
