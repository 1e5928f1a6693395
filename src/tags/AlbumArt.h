// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <memory>
#include <mutex>

namespace kruv {

/// A front cover as decoded image, or as the bytes that a file holds. Never changes, so that the records of a
/// whole album can share one. Safe from any thread.
class AlbumArt
{
public:
    explicit AlbumArt(const QImage &image);
    explicit AlbumArt(const QByteArray &encoded);
    /// The same with bytes that `owner` keeps alive.
    AlbumArt(const QByteArray &encoded, std::shared_ptr<const void> owner);

    /// A null image when the bytes are no picture. A picture that came encoded is decoded by each call, so
    /// that thousands of them cost no more than their bytes.
    QImage image() const;
    /// Empty where the picture came as an image.
    const QByteArray &encoded() const { return m_encoded; }
    /// "image/jpeg", "image/png", ... of the encoded bytes; empty where they are no picture.
    QByteArray mimeType() const;
    /// In pixels, from the picture's header where it came encoded; not valid where that is no picture's.
    QSize size() const;
    struct Png
    {
        QByteArray bytes;
        int width = 0; // pixels
        int height = 0;
        int bitsPerPixel = 0;
    };
    /// As PNG, made once; the picture's own bytes where it came as one. Empty when it is no picture.
    const Png &png() const;

    /// The same bytes or the same pixels.
    bool isSameAs(const AlbumArt &other) const;

private:
    const QImage m_image;
    const std::shared_ptr<const void> m_owner;
    const QByteArray m_encoded;
    mutable std::once_flag m_pngOnce;
    mutable Png m_png;
};

} // namespace kruv
