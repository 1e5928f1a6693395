// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/EncodeVerb.h"

#include "cli/QueueRun.h"
#include "formats/Formats.h"
#include "tabs/EncodeTab.h"
#include "tabs/KruvController.h"

namespace kruv {

EncodeVerb::EncodeVerb(CLI::App &parent)
    : TabVerb(parent, "encode", tr("Make another lossless format of lossless files, tags included"))
    , m_flags(app(), Formats::made(false))
{
    declareCommonFlags();
    declareOutputFlags();
    declareChangeFlag();
    declareExistingFlags();
    declareDetachFlag();
    declareSavePlanFlag();
    addFlag("--from-lossy", fromLossyFlag(), tr("Make lossless files of lossy ones, too"));
    setFooter(tr("Example: a folder of WAV files, verified, two at a time, next to their sources\n"
                 "  kruv encode --to flac --level 8 --verify --beside-source ~/Concert"));
}

void EncodeVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    EncodeTab &tab = controller.encodeTab();
    tab.outputFormatMatrix().select(static_cast<int>(tab.formats().indexOf(&m_flags.chosen())));
    m_flags.apply(tab.formatControls());
    tab.sourceEncodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
    placeOutputs(tab);
    queueRun.leaveOutResults();
    runTab(tab, queueRun, paths);
}

} // namespace kruv
