// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/LossQuestion.h"

#include "audio/AudioContent.h"
#include "audio/ContentProbe.h"
#include "audio/Proof.h"
#include "base/UserInterface.h"
#include "formats/Format.h"
#include "tabs/ConversionOrder.h"
#include "tabs/TabHost.h"

namespace kruv {

namespace {

/// A lossy target changes every sample, which is what it is for; that DSD goes into one is worth a question.
bool isComputedAnew(const QString &file, const Format &target)
{
    if (target.isLossy()) {
        return ContentProbe::of(file).kind == AudioContent::Kind::Dsd;
    }
    const bool staysAsItIs =
        target.keepsWavFloats && ContentProbe::of(file).container == AudioContent::Container::Wav;
    return !staysAsItIs && Proof::changesSamples(file);
}

} // namespace

LossQuestion::Run LossQuestion::runOf(const ConversionOrder &order, const QStringList &files)
{
    using Kept = TagLosses::KeptChunks;
    const Format &target = *order.target;
    const bool keepsAll = target.chunksOption && order.options.isOn(*target.chunksOption);
    return {.files = files,
            .target = &target,
            .label = target.label.toString(),
            .chunks = keepsAll                ? Kept::All
                      : target.keepsWavChunks ? Kept::OfWav
                                              : Kept::None};
}

LossQuestion::Found LossQuestion::look(const Run &run, bool atTags, const std::function<bool()> &stopped)
{
    Found found;
    for (const QString &file : run.target ? run.files : QStringList()) {
        if (!stopped() && isComputedAnew(file, *run.target)) {
            found.changed.append(file);
        }
    }
    if (atTags) {
        found.losses = TagLosses::ofFiles(
            run.files, {.tags = run.target ? run.target->tags : nullptr, .chunks = run.chunks}, stopped);
    }
    return found;
}

void LossQuestion::settle(const Run &run, bool inBackground, const GoOn &goOn)
{
    const bool atTags = !m_host.userInterface().agreesToLosses();
    if (!inBackground) {
        ask(look(run, atTags, [] { return false; }), run.label, goOn);
        return;
    }
    m_isOpen = true;
    m_work.start([this, run, atTags, goOn](const std::stop_token &stop) -> BackgroundWork::Outcome {
        const Found found = look(run, atTags, [&stop] { return stop.stop_requested(); });
        return [this, found, label = run.label, goOn] {
            m_isOpen = false;
            ask(found, label, goOn);
        };
    });
}

void LossQuestion::ask(const Found &found, const QString &label, const GoOn &goOn)
{
    Answer answer;
    answer.mayDeleteChanged =
        !found.changed.isEmpty() && m_host.userInterface().askAboutChanged(found.changed);
    if (!found.losses.isEmpty()) {
        const auto agrees = m_host.userInterface().askAboutLosses(TagLosses::sentences(found.losses, label));
        if (!agrees) {
            return;
        }
        for (auto each = found.losses.cbegin(); each != found.losses.cend() && !*agrees; ++each) {
            answer.kept.insert(each.key(), each->reason(label));
        }
    }
    goOn(answer);
}

} // namespace kruv
