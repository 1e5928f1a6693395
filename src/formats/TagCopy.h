// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <memory>

namespace kruv {

class TagsObject;
struct Format;

/// Tags from one file to another, each read and written as its format has them. Not for the main thread.
namespace TagCopy {

/// Empty texts where the format has no tags. May throw what the readers throw.
std::shared_ptr<TagsObject> read(const Format &format, const QString &path);

/// Writes the fields that have text. Throws std::runtime_error, saying why, when the tags did not get into
/// the file.
void write(const Format &format, const QString &path, const TagsObject &record);

/// Both.
void copy(const Format &sourceFormat, const QString &source, const Format &targetFormat,
          const QString &target);

/// Whether writing `source` over `target` leaves nothing behind that the source does not have.
bool covers(const TagsObject &source, const TagsObject &target);

} // namespace TagCopy
} // namespace kruv
