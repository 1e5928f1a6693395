// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>

namespace kruv {

/// The image encoded as a file of the given type ("PNG"); empty when it can't be encoded. Throws
/// std::invalid_argument for a null image.
QByteArray getBitmapDataForImage(const QImage &image, const QByteArray &fileType);

} // namespace kruv
