// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/EncodeVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/EncodeTab.h"
#include "tabs/KruvController.h"

namespace kruv {

namespace {

/// The flags that only some formats have.
struct FormatFlag
{
    const char *flag;
    QStringView formats;
};

constexpr FormatFlag formatFlags[] = {
    {"--level", u"FLAC APE"},    {"--lax", u"FLAC"},
    {"--verify", u"FLAC"},       {"--keep-foreign-metadata", u"FLAC"},
    {"--fingerprints", u"FLAC"}, {"--md5", u"SHN"},
    {"--wavpack-mode", u"WV"},
};

const QString formatNames = QStringLiteral("flac, shn, wv, tta, ape or m4a");

} // namespace

EncodeVerb::EncodeVerb(CLI::App &parent)
    : TabVerb(parent, "encode", "Make another lossless format of lossless files, tags included")
{
    declareCommonFlags();
    declareOutputFlags();
    app().add_option("--to", m_format, "Format to make")->required()->type_name("flac|shn|wv|tta|ape|m4a");
    declareFormatFlags();
    app().add_flag("--overwrite", overwriteFlag(), "Replace FLAC files that are there already");
    app().footer("Outputs that are there already: shn and wv never replace them, flac asks for --overwrite,\n"
                 "tta, ape and m4a replace them.\n"
                 "Example: a folder of WAV files, verified, two at a time, next to their sources\n"
                 "  kruv encode --to flac --level 8 --verify --beside-source ~/Concert");
}

void EncodeVerb::declareFormatFlags()
{
    app()
        .add_option(
            "--level", m_level,
            "Compression level: flac 0 (fast) to 8 (small), 5 when not given; ape 1000 (fast) to 5000 "
            "(small), 2000 when not given")
        ->check(CLI::Range(0, 5000))
        ->type_name("N");
    app().add_flag("--lax", m_lax, "FLAC outside the streamable subset; the level is then the tool's own");
    app().add_flag("--verify", m_verify, "Decode the FLAC that was encoded and compare it on the way");
    app().add_flag("--keep-foreign-metadata", m_keepForeignMetadata,
                   "Keep the chunks of WAV and AIFF that are not audio in FLAC");
    app().add_flag("--fingerprints", m_fingerprints,
                   "Write a list of FLAC fingerprints beside the outputs afterwards");
    app().add_flag("--md5", m_md5, "Write an MD5 list of the Shorten files afterwards");
    app()
        .add_option("--wavpack-mode", m_wavpackMode, "WavPack compression; fast when not given")
        ->check(CLI::IsMember({"fast", "high"}).description(""))
        ->type_name("fast|high");
}

void EncodeVerb::checkFlags(const QString &format)
{
    for (const FormatFlag &each : formatFlags) {
        if (app().count(each.flag) > 0 && !each.formats.split(u' ').contains(format)) {
            throw UsageError(QStringLiteral("%1 is not for --to %2")
                                 .arg(QString::fromLatin1(each.flag), QString::fromStdString(m_format)));
        }
    }
}

void EncodeVerb::setLevel(EncodeTab &tab, const QString &format) const
{
    if (m_level < 0) {
        return;
    }
    NumberControl &slider = format == u"APE" ? tab.apeSlider() : tab.flacSlider();
    slider.setValue(m_level);
    if (slider.value() != m_level) {
        throw UsageError(QStringLiteral("--level %1: for --to %2 it is %3 to %4 in steps of %5")
                             .arg(m_level)
                             .arg(QString::fromStdString(m_format))
                             .arg(slider.minimum())
                             .arg(slider.maximum())
                             .arg(slider.step()));
    }
}

void EncodeVerb::setControls(EncodeTab &tab)
{
    const QString format = QString::fromStdString(m_format).toUpper();
    if (!tab.outputFormatMatrix().selectTitle(format)) {
        throw UsageError(QStringLiteral("--to %1: no such format; it can be %2")
                             .arg(QString::fromStdString(m_format), formatNames));
    }
    checkFlags(format);
    setLevel(tab, format);
    tab.flacLaxButton().setOn(m_lax);
    tab.flacVerifyButton().setOn(m_verify);
    tab.flacKeepForeignMetadataButton().setOn(m_keepForeignMetadata);
    tab.generateFFPButton().setOn(m_fingerprints);
    tab.generateMD5Button().setOn(m_md5);
    tab.wavepackFormatMatrix().select(m_wavpackMode == "high" ? 1 : 0);
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
