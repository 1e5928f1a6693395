// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/ChangeTagsTask.h"

#include "formats/TagFormats.h"

#include <utility>

namespace kruv {

ChangeTagsTask::ChangeTagsTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                               TagChanges changes, bool writeEmptyTags)
    : WriteTagsTask(queue, fileName, type, nullptr, writeEmptyTags)
    , m_changes(std::move(changes))
{
}

std::shared_ptr<const TagsObject> ChangeTagsTask::tags()
{
    const auto record = TagFormats::read(fileName());
    for (auto change = m_changes.texts.cbegin(); change != m_changes.texts.cend(); ++change) {
        record->setText(change.key(), change.value());
    }
    TagsObject::CustomTags customTags =
        writesEmptyTags() ? record->customTagsDictionary() : TagsObject::CustomTags();
    customTags.insert(m_changes.customTags);
    record->setCustomTagsDictionary(customTags);
    // What the file has stays there without being written, unless everything in it makes way.
    if (m_changes.picture || !writesEmptyTags()) {
        record->setPicture(m_changes.picture);
    }
    return record;
}

} // namespace kruv
