// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/Glyphs.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <algorithm>

namespace kruv {

namespace {

// Each outline lies in a square of 24 units.
constexpr qreal units = 24.0;

QPainterPath cross()
{
    QPainterPath path;
    path.moveTo(12, 5);
    path.lineTo(12, 19);
    path.moveTo(5, 12);
    path.lineTo(19, 12);
    return path;
}

/// Notes falling into a tray.
QPainterPath filesIntoTray()
{
    QPainterPath path;
    path.addEllipse(QPointF(8.6, 12.6), 1.7, 1.4);
    path.addEllipse(QPointF(14.6, 11.4), 1.7, 1.4);
    path.moveTo(10.3, 12.4);
    path.lineTo(10.3, 4.8);
    path.lineTo(16.3, 3.4);
    path.lineTo(16.3, 11.2);
    path.moveTo(3.5, 15);
    path.lineTo(3.5, 19);
    path.quadTo(3.5, 20.5, 5, 20.5);
    path.lineTo(19, 20.5);
    path.quadTo(20.5, 20.5, 20.5, 19);
    path.lineTo(20.5, 15);
    return path;
}

/// Three sliders, their knobs at `first`, `second` and `third`.
QPainterPath sliders(qreal first, qreal second, qreal third)
{
    constexpr qreal radius = 2.0;
    QPainterPath path;
    qreal y = 6;
    for (const qreal x : {first, second, third}) {
        path.moveTo(3.5, y);
        path.lineTo(x - radius, y);
        path.addEllipse(QPointF(x, y), radius, radius);
        path.moveTo(x + radius, y);
        path.lineTo(20.5, y);
        y += 6;
    }
    return path;
}

QPainterPath label()
{
    QPainterPath path;
    path.moveTo(4, 4);
    path.lineTo(12, 4);
    path.lineTo(20.5, 12.5);
    path.lineTo(12.5, 20.5);
    path.lineTo(4, 12);
    path.closeSubpath();
    path.addEllipse(QPointF(8, 8), 1.3, 1.3);
    return path;
}

QPainterPath terminal()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(3, 4.5, 18, 15), 2, 2);
    path.moveTo(7, 9.5);
    path.lineTo(10, 12);
    path.lineTo(7, 14.5);
    path.moveTo(12, 15);
    path.lineTo(16.5, 15);
    return path;
}

QPainterPath outline(Glyph glyph)
{
    switch (glyph) {
    case Glyph::Add:
        return cross();
    case Glyph::DropFiles:
        return filesIntoTray();
    case Glyph::General:
        return sliders(15, 8, 13);
    case Glyph::Metadata:
        return label();
    case Glyph::Advanced:
        return terminal();
    }
    return {};
}

class GlyphEngine : public QIconEngine
{
public:
    explicit GlyphEngine(Glyph glyph)
        : m_glyph(glyph)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const qreal scale = std::min(rect.width(), rect.height()) / units;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.x() + (rect.width() - units * scale) / 2,
                           rect.y() + (rect.height() - units * scale) / 2);
        painter->scale(scale, scale);
        // Thin lines stay visible when small and don't grow heavy when large.
        const qreal width = scale > 1.5 ? 1.2 : 1.8;
        painter->setPen(QPen(palette.color(group, QPalette::ButtonText), width, Qt::SolidLine, Qt::RoundCap,
                             Qt::RoundJoin));
        painter->drawPath(outline(m_glyph));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }

    QIconEngine *clone() const override { return new GlyphEngine(m_glyph); }

private:
    Glyph m_glyph;
};

} // namespace

QIcon glyphIcon(Glyph glyph)
{
    return QIcon(new GlyphEngine(glyph));
}

} // namespace kruv
