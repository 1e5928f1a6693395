// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Controls.h"
#include "tags/AlbumArt.h"

#include <QSize>

#include <memory>

namespace kruv {

/// The picture field: a cover, or none.
class AlbumArtControl : public Control
{
    Q_OBJECT
public:
    /// A cover with what a person sees of it. Made on any thread, as decoding takes its time.
    struct Shown
    {
        std::shared_ptr<const AlbumArt> art;
        /// No larger than a screen has use for.
        QImage preview;
        QSize size; // pixels of the whole picture

        /// Holds nothing when the cover is null or no picture.
        static Shown of(std::shared_ptr<const AlbumArt> art);
        /// The picture in a file; nothing when it is none.
        static Shown ofFile(const QString &path);
    };

    using Control::Control;

    const std::shared_ptr<const AlbumArt> &art() const { return m_shown.art; }
    const QImage &preview() const { return m_shown.preview; }
    /// Format, measures and weight in a line, for people; empty without a picture.
    QString description() const;

    void show(Shown shown);
    void clear() { show({}); }

private:
    Shown m_shown;
};

} // namespace kruv
