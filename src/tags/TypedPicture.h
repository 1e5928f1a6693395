// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/AlbumArt.h"

#include <QString>

#include <memory>

namespace kruv {

/// What a picture shows, in the numbers that ID3v2 and FLAC have for it.
enum class PictureType { Other = 0, FrontCover = 3, PublisherLogotype = 20 };

/// A picture that a file has beside its first one.
struct TypedPicture
{
    PictureType type = PictureType::Other;
    QString description = {};
    std::shared_ptr<const AlbumArt> art = {};
};

} // namespace kruv
