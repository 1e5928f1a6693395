// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/DecodeFlacTask.h"

#include "audio/DamageSearch.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "formats/flac/FlacOptions.h"
#include "formats/flac/FlacOutput.h"
#include "formats/flac/FlacTool.h"

#include <exception>

namespace kruv {

namespace {

/// "3:07.120"
QString timeText(double seconds)
{
    constexpr int minute = 60;
    constexpr int decimals = 3;
    const auto minutes = static_cast<qint64>(seconds) / minute;
    return QStringLiteral("%1:%2").arg(minutes).arg(seconds - static_cast<double>(minutes * minute),
                                                    decimals + 3, 'f', decimals, u'0');
}

} // namespace

void DecodeFlacTask::makeOutput()
{
    if (isBeyondWav() && !chosen().isOn(FlacOptions::throughErrors)) {
        convert(fileName(), staged(), FormatType::LinearPcm, makesAiff() ? FileType::Aiff : FileType::Wave);
        return;
    }
    runStep(FlacTool::decode, {.input = sourceForTools(), .output = staged(), .options = chosen()});
    // Where it goes on through errors, the tool's status is that of success.
    if (mayGoOn() && FlacOutput::reportsDamage(toolWords(), title())) {
        m_isDamaged = true;
        failAfterwards(damagedReason());
        m_damage = DamageSearch::in(fileName(), staged(), [this] { return mayGoOn(); });
        results()->setResults(damageInWords() + u'\n', *this);
    }
}

ProofNote DecodeFlacTask::prove(const StagedOutputs &outputs)
{
    return m_isDamaged ? ProofNote{.unproven = damagedReason()} : ConversionTask::prove(outputs);
}

QString DecodeFlacTask::damageInWords() const
{
    constexpr std::size_t mostPlaces = 20;
    if (!m_damage || m_damage->places.empty()) {
        return tr("%1 is damaged: its audio does not match the checksum that it holds, though every frame "
                  "can be "
                  "decoded. What was decoded was kept.")
            .arg(fileName());
    }
    QStringList places;
    for (const DamageNote::Place &place : m_damage->places) {
        if (places.size() == mostPlaces) {
            break;
        }
        places.append(tr("%1 to %2")
                          .arg(timeText(m_damage->seconds(place.firstSample)),
                               timeText(m_damage->seconds(place.firstSample + place.samples))));
    }
    const auto further = static_cast<int>(m_damage->places.size() - static_cast<std::size_t>(places.size()));
    const QString more = further == 0 ? QString() : tr(", and at %n more places", nullptr, further);
    return tr("%1 is damaged: of %2 samples in each channel %3 could not be decoded, at %4%5. What was "
              "decoded was "
              "kept.")
        .arg(fileName(), QString::number(m_damage->allSamples), QString::number(m_damage->damagedSamples()),
             places.join(QStringLiteral(", ")), more);
}

void DecodeFlacTask::dress(StagedOutputs &)
{
    if (!makesAiff()) {
        return;
    }
    showStatus(tr("Copying Flac Tags"));
    try {
        TagCopy::copy(sourceFormat(), fileName(), aiffFormat, staged());
    } catch (const std::exception &) {
        appendResults(tr("The tags of %1 could not be written to %2.\n").arg(fileName(), outputPath()));
        failAfterwards(tr("its tags could not be copied"));
    }
}

} // namespace kruv
