// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>

#include <memory>

/// Which reader and which writer a file's tags go through, by its type (upper-case extension).
namespace kruv::TagFormats {

using Record = std::shared_ptr<TagsObject>;

/// Types without a reader of their own are read as MP4 files. Throws std::runtime_error for what is none.
Record read(const QString &path);
/// The same for several files that are compared; AIFF files have no reader of their own here, on purpose.
Record readForComparison(const QString &path);
/// A record with empty texts where `read` throws.
Record readOrBlank(Record (*read)(const QString &path), const QString &path);

/// Whether files of this type hold a tag of this name, beside a record's fields and pictures, which all of
/// them do. What they don't hold is passed over by their writer.
bool holdsCustomTag(const QString &type, const QString &name);

/// Whether tags can be written into files of this type.
bool isWritten(const QString &type);
/// See TagLibTagsHelper and AACTagsHelper: false and exceptions are theirs, and the file is then as it was.
/// Not for the main thread.
bool write(const QString &type, const QString &path, const TagsObject &record, bool writeEmptyTags);
/// Takes out the room that files of some types keep for later tags. Not for the main thread.
void removePadding(const QString &type, const QString &path);

} // namespace kruv::TagFormats
