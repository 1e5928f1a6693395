// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/AlbumArtControl.h"
#include "tabs/Controls.h"
#include "tags/TagsObject.h"

#include <array>

namespace kruv {

/// The fields in which a person edits a record: its texts and its picture.
class TagFields
{
public:
    /// The field of any text but EncoderSettings.
    TextControl &text(TagField field) { return m_texts.at(static_cast<std::size_t>(field)); }
    TextControl &titleText() { return text(TagField::Title); }
    TextControl &artistText() { return text(TagField::Artist); }
    TextControl &albumArtistText() { return text(TagField::AlbumArtist); }
    TextControl &albumText() { return text(TagField::Album); }
    TextControl &commentText() { return text(TagField::Comment); }
    TextControl &discText() { return text(TagField::Disc); }
    TextControl &trackText() { return text(TagField::Track); }
    TextControl &trackTotalText() { return text(TagField::TrackTotal); }
    TextControl &discTotalText() { return text(TagField::DiscTotal); }
    TextControl &yearText() { return text(TagField::Year); }
    TextControl &monthText() { return text(TagField::Month); }
    TextControl &dayText() { return text(TagField::Day); }
    TextControl &genreText() { return text(TagField::Genre); }
    TextControl &composerText() { return text(TagField::Composer); }
    AlbumArtControl &albumArtImageView() { return m_albumArtImageView; }

protected:
    /// Empties the texts and the picture.
    void clearFields();
    /// Takes the texts over; absent ones become empty.
    void fillTexts(const TagsObject &record);
    /// Copies the texts, as they stand, and the picture.
    void copyFieldsTo(TagsObject &record) const;
    /// A month or day of one digit gets its leading zero, without which the date couldn't be read back.
    void padDate();

private:
    std::array<TextControl, tagFieldCount - 1> m_texts;
    AlbumArtControl m_albumArtImageView;
};

} // namespace kruv
