// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/EncodeVerb.h"

#include "app/KruvController.h"
#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "lossless/EncodeTab.h"

namespace kruv {

EncodeVerb::EncodeVerb(CLI::App &parent)
    : TabVerb(parent, "encode", "Make FLAC of WAV and AIFF files, tags included")
{
    declareCommonFlags();
    declareOutputFlags();
    app().add_option("--to", m_format, "Format to make: flac")->required()->type_name("FORMAT");
    app()
        .add_option("--level", m_level, "FLAC compression level, 0 (fast) to 8 (small); 5 when not given")
        ->check(CLI::Range(0, 8))
        ->type_name("N");
    app().add_flag("--lax", m_lax, "FLAC outside the streamable subset; the level is then the tool's own");
    app().add_flag("--verify", m_verify, "Decode what was encoded and compare it on the way");
    app().add_flag("--keep-foreign-metadata", m_keepForeignMetadata,
                   "Keep the chunks of WAV and AIFF that are not audio");
    app().add_flag("--fingerprints", m_fingerprints,
                   "Write a list of FLAC fingerprints beside the outputs afterwards");
    app().add_flag("--overwrite", overwriteFlag(), "Replace outputs that are there already");
    app().footer("Example: a folder of WAV files, verified, two at a time, next to their sources\n"
                 "  kruv encode --to flac --level 8 --verify --beside-source ~/Concert");
}

void EncodeVerb::setControls(EncodeTab &tab) const
{
    const QString format = QString::fromStdString(m_format).toUpper();
    if (!tab.outputFormatMatrix().selectTitle(format)) {
        const bool known = tab.outputFormatMatrix().titles().contains(format);
        throw UsageError(known ? QStringLiteral("--to %1: this version can't make %2 yet; it makes flac")
                                     .arg(QString::fromStdString(m_format), format)
                               : QStringLiteral("--to %1: no such format; it can be flac")
                                     .arg(QString::fromStdString(m_format)));
    }
    if (m_level >= 0) {
        tab.flacSlider().setValue(m_level);
    }
    tab.flacLaxButton().setOn(m_lax);
    tab.flacVerifyButton().setOn(m_verify);
    tab.flacKeepForeignMetadataButton().setOn(m_keepForeignMetadata);
    tab.generateFFPButton().setOn(m_fingerprints);
    tab.sourceEncodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
}

void EncodeVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    EncodeTab &tab = controller.encodeTab();
    queueRun.leaveOutResults();
    setControls(tab);
    runTab(tab, queueRun, paths);
}

} // namespace kruv
