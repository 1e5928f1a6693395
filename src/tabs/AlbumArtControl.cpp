// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/AlbumArtControl.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <utility>

namespace kruv {

namespace {

constexpr int previewSide = 512; // pixels
constexpr qint64 mostBytes = 256LL * 1024 * 1024;

} // namespace

AlbumArtControl::Shown AlbumArtControl::Shown::of(std::shared_ptr<const AlbumArt> art)
{
    const QImage image = art ? art->image() : QImage();
    if (image.isNull()) {
        return {};
    }
    const bool large = image.width() > previewSide || image.height() > previewSide;
    return {std::move(art),
            large ? image.scaled(previewSide, previewSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                  : image,
            image.size()};
}

AlbumArtControl::Shown AlbumArtControl::Shown::ofFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > mostBytes) {
        return {};
    }
    return of(std::make_shared<const AlbumArt>(file.readAll()));
}

QString AlbumArtControl::description() const
{
    if (!m_shown.art) {
        return {};
    }
    const QByteArray type = m_shown.art->mimeType();
    QString text = QStringLiteral("%1 × %2").arg(m_shown.size.width()).arg(m_shown.size.height());
    if (!type.isEmpty()) {
        text = QString::fromLatin1(type.mid(type.indexOf('/') + 1)).toUpper() + u' ' + text + u'\n' +
               QLocale().formattedDataSize(m_shown.art->encoded().size(), 0, QLocale::DataSizeSIFormat);
    }
    return text;
}

void AlbumArtControl::show(Shown shown)
{
    m_shown = std::move(shown);
    valueChanged();
}

} // namespace kruv
