// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>

#include <memory>

/// Tags from one lossless file to another, each read and written as its file type has them. Not for the main
/// thread.
namespace kruv::TagCopy {

/// Empty texts for a type that has no tags. May throw what the readers throw.
std::shared_ptr<TagsObject> read(const QString &path);

/// Writes the fields that have text. Throws std::runtime_error, saying why, when the tags did not get into
/// the file.
void write(const QString &path, const TagsObject &record);

} // namespace kruv::TagCopy
