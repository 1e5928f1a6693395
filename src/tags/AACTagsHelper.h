// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>

#include <memory>

namespace kruv {

/// Reads the tags of an MP4 audio file (AAC or Apple Lossless, extension m4a) into a record and writes a
/// record into the file. Paths are full paths.
///
/// No state; calls on different files may run on different threads. Not for the main thread: a written file
/// is copied whole, and makeGapless() runs a tool.
class AACTagsHelper
{
public:
    using Record = std::shared_ptr<TagsObject>;

    /// A missing file gives a record with empty texts. Throws std::runtime_error when the file is no MP4
    /// file.
    Record tagsForFile(const QString &path) const;

    /// Writes each field that has text. With `writeEmptyTags` everything that the file says about itself, but
    /// for the name of its encoder, makes way for the record's fields. Then rewrites the file compactly: its
    /// index before the media, no free space; where that can't be done the file stays as tagged.
    ///
    /// `encoding` asks for the encoder's name to be set, which takes the version of a system component that
    /// this platform doesn't have; the name there is stays.
    ///
    /// False when the file is missing, read-only or couldn't be saved; throws std::runtime_error when it is
    /// no MP4 file or couldn't be replaced. The file is never without its audio: any failure leaves it as it
    /// was, or as tagged.
    bool writeTagsForFile(const QString &path, const TagsObject &record, bool writeEmptyTags,
                          bool encoding) const;

    /// Makes every text of the record empty (not absent) and its picture absent.
    void setBlankTags(TagsObject &record) const;

    /// Marks the file as one that is to be played without a gap, by the tool AtomicParsley of the resources
    /// folder. A failed run leaves the file as it was.
    void makeGapless(const QString &path) const;
};

} // namespace kruv
