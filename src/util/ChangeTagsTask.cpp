// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/ChangeTagsTask.h"

#include "formats/TagFormats.h"

#include <array>
#include <utility>

namespace kruv {

namespace {

/// In the order of TagField.
constexpr std::array<const char *, tagFieldCount> fieldNames{
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "title"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "artist"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "album artist"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "year"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "month"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "day"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "album"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "comment"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "disc"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "number of discs"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "track"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "number of tracks"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "genre"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "composer"),
    QT_TRANSLATE_NOOP("kruv::ChangeTagsTask", "encoder settings"),
};

} // namespace

ChangeTagsTask::ChangeTagsTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                               TagChanges changes, bool writeEmptyTags)
    : WriteTagsTask(queue, fileName, type, nullptr, writeEmptyTags)
    , m_changes(std::move(changes))
{
}

JobOutline ChangeTagsTask::outline() const
{
    JobOutline outline = WriteTagsTask::outline();
    for (auto change = m_changes.texts.cbegin(); change != m_changes.texts.cend(); ++change) {
        const QString name = tr(fieldNames[static_cast<std::size_t>(change.key())]);
        outline.changes.append(change.value().isEmpty() ? tr("%1 is cleared").arg(name)
                                                        : tr("%1: %2").arg(name, change.value()));
    }
    for (auto tag = m_changes.customTags.cbegin(); tag != m_changes.customTags.cend(); ++tag) {
        outline.changes.append(tr("%1: %2").arg(tag.key(), tag.value()));
    }
    if (m_changes.picture) {
        outline.changes.append(tr("a new picture"));
    }
    return outline;
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
