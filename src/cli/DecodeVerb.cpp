// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/DecodeVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/DecodeTab.h"
#include "tabs/KruvController.h"

namespace kruv {

DecodeVerb::DecodeVerb(CLI::App &parent)
    : TabVerb(parent, "decode", tr("Make WAV or AIFF of lossless files"))
{
    declareCommonFlags();
    declareOutputFlags();
    declareChangeFlag();
    declareExistingFlags();
    declareDetachFlag();
    declareSavePlanFlag();
    declareFormatFlag(DecodeTab::targets(),
                      tr("Format to make (AIFF takes the tags of FLAC and Apple Lossless over)"));
    addFlag("--through-errors", m_throughErrors,
            tr("Go on where a FLAC file is damaged; its original is then kept"));
    addFlag("--keep-foreign-metadata", m_keepForeignMetadata,
            tr("Put back the chunks that encoding with the same flag kept"));
    setFooter(tr("Example: decode a folder into another\n"
                 "  kruv decode --to wav --output /tmp/wavs ~/Concert"));
}

void DecodeVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    DecodeTab &tab = controller.decodeTab();
    chooseFormat(tab.outputFormatMatrix());
    tab.decodeFlacThroughErrors().setOn(m_throughErrors);
    tab.flacKeepForeignMetadataButton().setOn(m_keepForeignMetadata);
    tab.sourceDecodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
    placeOutputs(tab);
    queueRun.leaveOutResults();
    runTab(tab, queueRun, paths);
}

} // namespace kruv
