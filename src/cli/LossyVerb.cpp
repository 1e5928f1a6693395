// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/LossyVerb.h"

#include "cli/QueueRun.h"
#include "formats/Formats.h"
#include "tabs/KruvController.h"
#include "tabs/LossyTab.h"

namespace kruv {

LossyVerb::LossyVerb(CLI::App &parent)
    : TabVerb(parent, "lossy", tr("Make files in a lossy format of lossless files"))
    , m_flags(app(), Formats::made(true))
{
    declareCommonFlags();
    declareOutputFlags();
    declareChangeFlag();
    declareExistingFlags();
    declareDetachFlag();
    declareSavePlanFlag();
    setFooter(tr("Example: a folder of FLAC files as MP3 at a variable bit rate\n"
                 "  kruv lossy --to mp3 --mode vbr --quality 2 --output ~/Player ~/Concert"));
}

void LossyVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    LossyTab &tab = controller.lossyTab();
    tab.outputFormatMatrix().select(static_cast<int>(tab.formats().indexOf(&m_flags.chosen())));
    m_flags.apply(tab.formatControls());
    tab.sourceEncodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
    placeOutputs(tab);
    queueRun.leaveOutResults();
    runTab(tab, queueRun, paths);
}

} // namespace kruv
