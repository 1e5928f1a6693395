// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ChecksumCreateVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/ChecksumTab.h"
#include "tabs/KruvController.h"

namespace kruv {

ChecksumCreateVerb::ChecksumCreateVerb(CLI::App &parent)
    : TabVerb(parent, "create", tr("Write a checksum list over audio files"))
{
    declareCommonFlags();
    declareDryRunFlag();
    addOption("-k,--kind", m_kind,
              tr("MD5 of the files, fingerprints of FLAC audio, or shntool's hashes of any audio"))
        ->required()
        ->type_name("md5|ffp|st5");
    auto *save = addOption("-s,--save", saveFlag(), tr("File that the list is saved in"));
    save->type_name("FILE");
    addFlag("--beside-source", besideSourceFlag(),
            tr("Save the list next to its files, under its usual name"))
        ->excludes(save);
    addFlag("--overwrite", overwriteFlag(), tr("Replace a list that is there already"));
    setFooter(tr("Example: an MD5 list over a folder and its subfolders, saved in the folder\n"
                 "  kruv checksum create --kind md5 --save ~/Concert/concert.md5 ~/Concert"));
}

void ChecksumCreateVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    ChecksumTab &tab = controller.checksumTab();
    choose(tab.createChecksumOptions(), "--kind", m_kind);
    tab.commandOptions().select(ChecksumTab::CreateList);
    tab.sourceSaveButton().setOn(options().besideSource);
    runTab(tab, queueRun, paths);
    if (queueRun.totals().all == 0 && !options().onlyPlans()) {
        throw UsageError(tr("checksum create: no file in the given paths goes into a list of this kind"));
    }
}

} // namespace kruv
