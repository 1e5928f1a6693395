// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/DecodeALACTask.h"

#include "tags/AACTagsHelper.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/TagsObject.h"
#include "tasks/OriginalFile.h"

#include <stdexcept>

namespace kruv {

void DecodeALACTask::finishOutput()
{
    if (!toAiff()) {
        return;
    }
    showStatus(QStringLiteral("Copying ALAC Tags"));
    try {
        handleAlacTags();
    } catch (const std::exception &failure) {
        appendResults(
            QStringLiteral("Error writing tags to file:\n%1").arg(QString::fromUtf8(failure.what())));
        if (deleteOriginal()) {
            OriginalFile::keep(*this, fileName(), QStringLiteral("its tags could not be copied"));
        }
    }
}

void DecodeALACTask::handleAlacTags()
{
    const auto record = AACTagsHelper().tagsForFile(fileName());
    if (!TagLibTagsHelper().writeTagsForAIFFFile(outputPath(), *record)) {
        throw std::runtime_error("The tags could not be saved.");
    }
}

} // namespace kruv
