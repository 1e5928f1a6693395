// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/BitmapData.h"

#include <QBuffer>
#include <QIODevice>

#include <stdexcept>

namespace kruv {

QByteArray getBitmapDataForImage(const QImage &image, const QByteArray &fileType)
{
    if (image.isNull()) {
        throw std::invalid_argument("Invalid parameter not satisfying: nil != image");
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, fileType.constData())) {
        return {};
    }
    return bytes;
}

} // namespace kruv
