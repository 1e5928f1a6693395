// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/FixVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/FixTab.h"
#include "tabs/KruvController.h"

namespace kruv {

FixVerb::FixVerb(CLI::App &parent)
    : TabVerb(parent, "fix", tr("Make the tracks of a set end on CD sector boundaries"))
{
    declareCommonFlags();
    declareFolderFlag();
    addFlag("--overwrite", overwriteFlag(), tr("Replace outputs and lists that are there already"));
    declareDeletionFlags();
    declareDryRunFlag();
    declareFormatFlag(FixTab::targets(), tr("Format to make"));
    addOption("--level", m_level, tr("FLAC compression level, 0 (fast) to 8 (small); 4 when not given"))
        ->check(CLI::Range(0, 8).description(std::string()))
        ->type_name("N");
    addOption("--md5", m_md5, tr("MD5 lists of SHN outputs: none, one for all, or one for each disc"))
        ->type_name("none|one|disc");
    addFlag("--fingerprints", m_fingerprints, tr("Write a list of fingerprints of FLAC outputs"));
    setFooter(tr("The tracks are taken in the order of their names, as one run of audio.\n"
                 "Example: fix a live set into another folder\n"
                 "  kruv fix --to flac --fingerprints --output ~/Fixed ~/Concert"));
}

void FixVerb::setControls(FixTab &tab) const
{
    chooseFormat(tab.outputFormatMatrix());
    choose(tab.shnMd5Option(), "--md5", m_md5);
    if (m_level >= 0) {
        tab.flacLevelSlider().setValue(m_level);
    }
    tab.flacFingerprintButton().setOn(m_fingerprints);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
}

void FixVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    FixTab &tab = controller.fixTab();
    setControls(tab);
    queueRun.leaveOutResults();
    runTab(tab, queueRun, paths);
}

} // namespace kruv
