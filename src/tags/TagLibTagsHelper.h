// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>

#include <memory>

namespace kruv {

/// Reads tags into a record and writes a record into a file: ID3v2 in MP3 and AIFF, Vorbis comments and
/// picture blocks in FLAC, APE tags in Monkey's Audio, WavPack and TrueAudio. An ID3v2 tag that a TrueAudio
/// file has, too, is read where the APE tag says nothing, and written with it. Paths are full paths.
///
/// Readers always return a record: one with empty texts when the file is missing or can't be read.
///
/// Writers write a field when it has text, or in any case with `writeEmptyTags`, where an empty text clears
/// it. They return false when the file is missing, read-only or couldn't be saved, and throw
/// std::runtime_error when it isn't a sound file of its format. Except on success the file is as it was.
///
/// No state; calls on different files may run on different threads. Not for the main thread (FLAC writing
/// runs a tool).
class TagLibTagsHelper
{
public:
    using Record = std::shared_ptr<TagsObject>;

    Record tagsForMP3File(const QString &path) const;
    Record tagsForAIFFFile(const QString &path) const;
    Record tagsForFlacFile(const QString &path) const;
    Record tagsForAPEFile(const QString &path) const;
    Record tagsForWavpackFile(const QString &path) const;
    Record tagsForTTAFile(const QString &path) const;
    Record tagsForVorbisFile(const QString &path) const;
    Record tagsForOpusFile(const QString &path) const;

    /// With `writeEmptyTags` every tag of the file, of any kind, goes first.
    bool writeTagsForMP3File(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    /// Never writes empty fields.
    bool writeTagsForAIFFFile(const QString &path, const TagsObject &record) const;
    /// With `writeEmptyTags` every field but ENCODER and all pictures go first.
    bool writeTagsForFLACFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    bool writeTagsForAPEFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    bool writeTagsForWavpackFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    bool writeTagsForTTAFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    bool writeTagsForVorbisFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;
    bool writeTagsForOpusFile(const QString &path, const TagsObject &record, bool writeEmptyTags) const;

    /// Makes every text of the record empty (not absent) and its picture absent.
    void setBlankTags(TagsObject &record) const;
};

} // namespace kruv
