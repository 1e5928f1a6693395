// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "util/WriteTagsTask.h"

#include <QMap>

namespace kruv {

/// What is to become different in a file's tags.
struct TagChanges
{
    QMap<TagField, QString> texts;
    TagsObject::CustomTags customTags;
    std::shared_ptr<const AlbumArt> picture;
};

/// Changes some of a file's tags and leaves the others as they are: reads the file when its turn comes, puts
/// the changes in and writes it.
class ChangeTagsTask : public WriteTagsTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ChangeTagsTask)
public:
    ChangeTagsTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                   TagChanges changes, bool writeEmptyTags);

    JobOutline outline() const override;

protected:
    std::shared_ptr<const TagsObject> tags() override;

private:
    const TagChanges m_changes;
};

} // namespace kruv
