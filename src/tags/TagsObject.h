// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TypedPicture.h"

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <mutex>
#include <vector>

namespace kruv {

/// The text fields of a tag record. Numbers and the parts of the date are texts too, kept as read or typed.
enum class TagField {
    Title,
    Artist,
    AlbumArtist,
    Year,
    Month,
    Day,
    Album,
    Comment,
    Disc,
    DiscTotal,
    Track,
    TrackTotal,
    Genre,
    Composer,
    EncoderSettings,
};
inline constexpr std::size_t tagFieldCount = 15;

/// The descriptive tags of one track, on their way from a reader to a writer. Held by std::shared_ptr. An
/// absent text is a null QString and differs from an empty one. Every accessor may be called from any thread.
class TagsObject
{
public:
    using CustomTags = QMap<QString, QString>;

    QString text(TagField field) const;
    /// Several values become one text.
    void setText(TagField field, const QString &text);
    /// The values that the text is made of, joined by blanks; one or none as a rule.
    QStringList values(TagField field) const;
    void setValues(TagField field, const QStringList &values);

    QString titleText() const { return text(TagField::Title); }
    void setTitleText(const QString &text) { setText(TagField::Title, text); }
    QString artistText() const { return text(TagField::Artist); }
    void setArtistText(const QString &text) { setText(TagField::Artist, text); }
    QString albumArtistText() const { return text(TagField::AlbumArtist); }
    void setAlbumArtistText(const QString &text) { setText(TagField::AlbumArtist, text); }
    QString yearText() const { return text(TagField::Year); }
    void setYearText(const QString &text) { setText(TagField::Year, text); }
    QString monthText() const { return text(TagField::Month); }
    void setMonthText(const QString &text) { setText(TagField::Month, text); }
    QString dayText() const { return text(TagField::Day); }
    void setDayText(const QString &text) { setText(TagField::Day, text); }
    QString albumText() const { return text(TagField::Album); }
    void setAlbumText(const QString &text) { setText(TagField::Album, text); }
    QString commentText() const { return text(TagField::Comment); }
    void setCommentText(const QString &text) { setText(TagField::Comment, text); }
    QString discText() const { return text(TagField::Disc); }
    void setDiscText(const QString &text) { setText(TagField::Disc, text); }
    QString discTotalText() const { return text(TagField::DiscTotal); }
    void setDiscTotalText(const QString &text) { setText(TagField::DiscTotal, text); }
    QString trackText() const { return text(TagField::Track); }
    void setTrackText(const QString &text) { setText(TagField::Track, text); }
    QString trackTotalText() const { return text(TagField::TrackTotal); }
    void setTrackTotalText(const QString &text) { setText(TagField::TrackTotal, text); }
    QString genreText() const { return text(TagField::Genre); }
    void setGenreText(const QString &text) { setText(TagField::Genre, text); }
    QString composerText() const { return text(TagField::Composer); }
    void setComposerText(const QString &text) { setText(TagField::Composer, text); }
    QString encoderSettings() const { return text(TagField::EncoderSettings); }
    void setEncoderSettings(const QString &text) { setText(TagField::EncoderSettings, text); }

    /// The front cover; a null image when there is none or its bytes are no picture. See AlbumArt::image().
    QImage albumArt() const;
    void setAlbumArt(const QImage &image);
    /// The picture as a file holds it (PNG, JPEG, ...).
    void setEncodedAlbumArt(const QByteArray &bytes);
    /// The picture as it came, which may be broken; null when there is none.
    std::shared_ptr<const AlbumArt> picture() const;
    void setPicture(std::shared_ptr<const AlbumArt> picture);
    bool hasSameAlbumArt(const TagsObject &other) const;
    /// The picture's kind, and the pictures beside it.
    PictureType pictureType() const;
    std::vector<TypedPicture> otherPictures() const;
    /// All at once: the first is the picture, the others are beside it. A first one without a byte is none.
    void setPictures(std::vector<TypedPicture> pictures);
    /// A date that has no year, month and day to show ("2004-05"), on its way from file to file.
    QString unparsedDate() const;
    void setUnparsedDate(const QString &text);
    /// Whether the file says more than a record can carry; see MoreTags.
    bool isPartOfFile() const;
    void setPartOfFile(bool isPart);

    /// User-defined tags: name to value.
    CustomTags customTagsDictionary() const;
    void setCustomTagsDictionary(const CustomTags &tags);
    /// As with texts, the values that one of them is made of.
    QStringList customValues(const QString &name) const;
    void setCustomValues(const QString &name, const QStringList &values);

    /// False for nullptr.
    bool isEqual(const TagsObject *other) const;
    /// Compares the texts and the picture. Encoder settings and custom tags take no part, on purpose.
    bool isEqualToTagsObject(const TagsObject &other) const;
    /// Absent equals absent only; present texts are compared character for character.
    static bool stringTagsEqual(const QString &string1, const QString &string2);

private:
    mutable std::mutex m_lock;
    std::array<QString, tagFieldCount> m_texts;
    std::array<QStringList, tagFieldCount> m_values;
    std::shared_ptr<const AlbumArt> m_picture;
    PictureType m_pictureType = PictureType::Other;
    std::vector<TypedPicture> m_otherPictures;
    QString m_unparsedDate;
    bool m_isPartOfFile = false;
    CustomTags m_customTagsDictionary;
    QMap<QString, QStringList> m_customValues;
};

} // namespace kruv
