// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/AlbumArt.h"

#include "tags/BitmapData.h"

#include <QBuffer>
#include <QImageReader>

namespace kruv {

namespace {

/// Covers are seldom as large; what is larger would rather be meant to fill the memory.
constexpr int mostMegabytes = 512;

std::unique_ptr<QBuffer> opened(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

} // namespace

AlbumArt::AlbumArt(const QImage &image)
    : m_image(image)
{
}

AlbumArt::AlbumArt(const QByteArray &encoded)
    : m_encoded(encoded)
{
}

AlbumArt::AlbumArt(const QByteArray &encoded, std::shared_ptr<const void> owner)
    : m_owner(std::move(owner))
    , m_encoded(encoded)
{
}

QImage AlbumArt::image() const
{
    if (m_encoded.isEmpty()) {
        return m_image;
    }
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(mostMegabytes); });
    return QImage::fromData(m_encoded);
}

QByteArray AlbumArt::mimeType() const
{
    const auto buffer = opened(m_encoded);
    const QByteArray format = QImageReader::imageFormat(buffer.get());
    return format.isEmpty() ? QByteArray() : "image/" + format;
}

QSize AlbumArt::size() const
{
    if (m_encoded.isEmpty()) {
        return m_image.size();
    }
    const auto buffer = opened(m_encoded);
    return QImageReader(buffer.get()).size();
}

const AlbumArt::Png &AlbumArt::png() const
{
    std::call_once(m_pngOnce, [this] {
        const QImage decoded = image();
        if (decoded.isNull()) {
            return;
        }
        const bool isPng = m_encoded.startsWith("\x89PNG\r\n\x1a\n");
        m_png = {isPng ? m_encoded : getBitmapDataForImage(decoded, "PNG"), decoded.width(), decoded.height(),
                 decoded.bitPlaneCount()};
    });
    return m_png;
}

bool AlbumArt::isSameAs(const AlbumArt &other) const
{
    return this == &other || (!m_encoded.isEmpty() && m_encoded == other.m_encoded) ||
           image() == other.image();
}

} // namespace kruv
