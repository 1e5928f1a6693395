// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/AudioLimitsCheck.h"

#include "audio/AudioFormatObject.h"
#include "formats/Format.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace kruv::AudioLimitsCheck {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::AudioLimitsCheck)
};

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

QString words(std::span<const int> bits)
{
    QStringList all;
    for (const int each : bits) {
        all.append(QString::number(each));
    }
    return all.join(QStringLiteral(", "));
}

} // namespace

void require(const Format &target, const QString &source, const AudioFormatObject &audio)
{
    const AudioLimits *limits = target.limits;
    if (!limits || audio.channels == 0) {
        return;
    }
    const QString label = target.label.toString();
    if (audio.channels > limits->mostChannels) {
        refuse(
            Text::tr("%1 has %2 channels; %3 holds at most %4.")
                .arg(source, QString::number(audio.channels), label, QString::number(limits->mostChannels)));
    }
    if (audio.sampleRate < limits->lowestRate || audio.sampleRate > limits->highestRate) {
        refuse(Text::tr("%1 has a sample rate of %2 Hz; %3 holds %4 to %5 Hz.")
                   .arg(source, QString::number(static_cast<std::uint32_t>(audio.sampleRate)), label,
                        QString::number(limits->lowestRate), QString::number(limits->highestRate)));
    }
    if (audio.bitsPerChannel > 0 && !limits->bits.empty() &&
        std::ranges::count(limits->bits, audio.bitsPerChannel) == 0) {
        refuse((audio.isFloatingPoint && !target.keepsWavFloats
                    ? Text::tr("%1 has floating-point samples of %2 bits; %3 holds integers of %4 bits.")
                    : Text::tr("%1 has samples of %2 bits; %3 holds %4 bits."))
                   .arg(source, QString::number(audio.bitsPerChannel), label, words(limits->bits)));
    }
}

} // namespace kruv::AudioLimitsCheck
