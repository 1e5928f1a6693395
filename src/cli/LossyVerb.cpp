// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/LossyVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/KruvController.h"
#include "tabs/LossyTab.h"

#include <algorithm>

namespace kruv {

namespace {

// Of any format, in kbit/s.
constexpr int lowestBitRate = 8;
constexpr int highestBitRate = 512;
constexpr int highestQuality = 127;

/// "vbr-constrained" is the tab's "VBR Constrained".
QString asFlag(const QString &title)
{
    return title.toLower().replace(u' ', u'-');
}

QString either(QStringList words)
{
    const QString last = words.takeLast();
    return words.isEmpty() ? last : words.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

} // namespace

/// One format of --to and what goes with it.
struct LossyVerb::Format
{
    const char *flag;
    /// The tab's title, and its choice of modes where it has one.
    QStringView title;
    ChoiceControl &(LossyTab::*modes)();
    /// The number that --quality sets in mode vbr, where the format has one.
    NumberControl &(LossyTab::*quality)();
    int lowestBitRate; // kbit/s
    int highestBitRate;
};

const LossyVerb::Format LossyVerb::formats[] = {
    {"mp3", u"LAME MP3", &LossyTab::mp3Matrix, &LossyTab::slider, 80, 320},
    {"aac", u"AAC", &LossyTab::aacMatrix, &LossyTab::stepper, 80, 320},
    {"he-aac", u"HE-AAC", nullptr, nullptr, lowestBitRate, 60},
    {"opus", u"Opus", &LossyTab::opusMatrix, nullptr, 80, highestBitRate},
};

LossyVerb::LossyVerb(CLI::App &parent)
    : TabVerb(parent, "lossy", "Make MP3, AAC, HE-AAC or Opus of lossless files")
{
    declareCommonFlags();
    declareOutputFlags();
    app().add_option("--to", m_format, "Format to make")->required()->type_name("mp3|aac|he-aac|opus");
    app()
        .add_option("--mode", m_mode,
                    "Rate mode: cbr when not given; abr is for mp3 and aac, vbr-constrained for aac and opus")
        ->type_name("cbr|abr|vbr|vbr-constrained");
    app()
        .add_option("--bitrate", m_bitRate, "Bit rate in kbit/s; 160 when not given, 60 for he-aac")
        ->check(CLI::Range(lowestBitRate, highestBitRate))
        ->type_name("N");
    app()
        .add_option("--quality", m_quality,
                    "Quality in mode vbr: of mp3 0 (best) to 9, 3 when not given; of aac 0 to 127 (best), 88")
        ->check(CLI::Range(0, highestQuality))
        ->type_name("N");
    app()
        .add_option("--frame-size", m_frameSize, "Opus frame size in ms; 20 when not given")
        ->type_name("2.5|5|10|20|40|60");
    app().add_flag("--overwrite", overwriteFlag(), "Replace .m4a files next to their sources");
    app().footer("Example: a folder of FLAC files as MP3 at a variable bit rate\n"
                 "  kruv lossy --to mp3 --mode vbr --quality 2 --output ~/Player ~/Concert");
}

const LossyVerb::Format &LossyVerb::chosenFormat() const
{
    const auto *format =
        std::ranges::find_if(formats, [this](const Format &each) { return m_format == each.flag; });
    if (format == std::end(formats)) {
        throw UsageError(QStringLiteral("--to %1: no such format; it can be mp3, aac, he-aac or opus")
                             .arg(QString::fromStdString(m_format)));
    }
    return *format;
}

void LossyVerb::selectMode(LossyTab &tab, const Format &format) const
{
    const QString mode = QString::fromStdString(m_mode);
    if (mode.isEmpty()) {
        return;
    }
    if (!format.modes) {
        throw UsageError(QStringLiteral("--mode: %1 has no modes").arg(QLatin1StringView(format.flag)));
    }
    ChoiceControl &modes = (tab.*format.modes)();
    QStringList flags;
    std::ranges::transform(modes.titles(), std::back_inserter(flags), asFlag);
    if (!flags.contains(mode)) {
        throw UsageError(QStringLiteral("--mode %1: for %2 it can be %3")
                             .arg(mode, QLatin1StringView(format.flag), either(flags)));
    }
    modes.select(static_cast<int>(flags.indexOf(mode)));
}

void LossyVerb::setRate(LossyTab &tab, const Format &format) const
{
    const QLatin1StringView flag(format.flag);
    const bool byQuality = format.quality && m_mode == "vbr";
    if (m_quality >= 0) {
        if (!byQuality) {
            throw UsageError(QStringLiteral("--quality goes with --mode vbr of mp3 and aac"));
        }
        NumberControl &quality = (tab.*format.quality)();
        if (m_quality > quality.maximum()) {
            throw UsageError(QStringLiteral("--quality %1: for %2 it can be 0 to %3")
                                 .arg(m_quality)
                                 .arg(flag)
                                 .arg(quality.maximum()));
        }
        quality.setValue(m_quality);
    }
    if (m_bitRate >= 0) {
        if (byQuality) {
            throw UsageError(QStringLiteral("--bitrate: %1 in mode vbr goes by --quality").arg(flag));
        }
        if (m_bitRate < format.lowestBitRate || m_bitRate > format.highestBitRate) {
            throw UsageError(QStringLiteral("--bitrate %1: for %2 it can be %3 to %4")
                                 .arg(m_bitRate)
                                 .arg(flag)
                                 .arg(format.lowestBitRate)
                                 .arg(format.highestBitRate));
        }
        tab.comboBox().setText(QString::number(m_bitRate));
    }
}

void LossyVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    LossyTab &tab = controller.lossyTab();
    const Format &format = chosenFormat();
    tab.outputFormatMatrix().selectTitle(format.title.toString());
    selectMode(tab, format);
    setRate(tab, format);
    if (!m_frameSize.empty()) {
        const QString frameSize = QString::fromStdString(m_frameSize);
        if (tab.opusFrameSizeCombo().isHidden() || !tab.opusFrameSizeCombo().selectTitle(frameSize)) {
            throw UsageError(QStringLiteral("--frame-size %1: it goes with opus and can be %2")
                                 .arg(frameSize, either(tab.opusFrameSizeCombo().titles())));
        }
    }
    tab.sourceEncodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
    queueRun.leaveOutResults();
    runTab(tab, queueRun, paths);
}

} // namespace kruv
