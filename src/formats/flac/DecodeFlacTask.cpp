// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/DecodeFlacTask.h"

#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "formats/flac/FlacOutput.h"
#include "formats/flac/FlacTool.h"

#include <exception>

namespace kruv {

void DecodeFlacTask::makeOutput()
{
    runStep(FlacTool::decode, {.input = fileName(), .output = staged(), .options = chosen()});
    // Where it goes on through errors, the tool's status is that of success.
    if (mayGoOn() && FlacOutput::reportsDamage(toolWords(), title())) {
        m_wasDamaged = true;
        failAfterwards(damaged());
    }
}

ProofNote DecodeFlacTask::prove(const StagedOutputs &outputs)
{
    return m_wasDamaged ? ProofNote{.unproven = damaged()} : ConversionTask::prove(outputs);
}

QString DecodeFlacTask::damaged()
{
    return tr("it is damaged and was decoded through errors");
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
