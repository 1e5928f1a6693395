// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/KruvDragAndDropImageView.h"

#include "gui/FileDrop.h"
#include "gui/QuietLabel.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QStyle>

namespace kruv {

namespace {

constexpr int side = 132; // device-independent pixels

/// The one file among what is dragged or pasted; empty when it is none, several, or a folder.
QString onlyFile(const QMimeData &data)
{
    const QStringList paths = FileDrop::localPaths(data);
    const bool single = paths.size() == 1 && data.urls().size() == 1;
    return single && !QFileInfo(paths.constFirst()).isDir() ? paths.constFirst() : QString();
}

} // namespace

KruvDragAndDropImageView::KruvDragAndDropImageView(QWidget *parent)
    : QFrame(parent)
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize KruvDragAndDropImageView::sizeHint() const
{
    return {side, side};
}

void KruvDragAndDropImageView::setPicture(const QImage &picture, const QString &hint)
{
    m_picture = picture;
    m_hint = hint;
    update();
}

void KruvDragAndDropImageView::showDrop(bool shown)
{
    m_dropShown = shown;
    update();
}

void KruvDragAndDropImageView::dragEnterEvent(QDragEnterEvent *event)
{
    // Refused without ignoring the event, which would go on to the page behind.
    const bool taken = isEnabled() && !onlyFile(*event->mimeData()).isEmpty();
    event->setDropAction(taken ? Qt::CopyAction : Qt::IgnoreAction);
    event->accept();
    showDrop(taken);
}

void KruvDragAndDropImageView::dragLeaveEvent(QDragLeaveEvent *)
{
    showDrop(false);
}

void KruvDragAndDropImageView::dropEvent(QDropEvent *event)
{
    showDrop(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (const QString path = onlyFile(*event->mimeData()); !path.isEmpty()) {
        Q_EMIT fileGiven(path);
    }
}

void KruvDragAndDropImageView::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect room = contentsRect().adjusted(2, 2, -2, -2);
    if (m_picture.isNull()) {
        painter.setPen(QuietLabel::tone(palette()));
        painter.drawText(room.adjusted(6, 6, -6, -6), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    } else {
        const qreal scale = devicePixelRatioF();
        QImage fitted = m_picture.scaled(room.size() * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        fitted.setDevicePixelRatio(scale);
        QRectF place(QPointF(), fitted.deviceIndependentSize());
        place.moveCenter(QRectF(room).center());
        painter.drawImage(place.topLeft(), fitted);
    }
    if (m_dropShown || hasFocus()) {
        constexpr int width = 2;
        painter.setPen(QPen(palette().color(QPalette::Highlight), width));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void KruvDragAndDropImageView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        Q_EMIT removeWanted();
    } else if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return) {
        Q_EMIT chooseWanted();
    } else {
        QFrame::keyPressEvent(event);
    }
}

void KruvDragAndDropImageView::mouseDoubleClickEvent(QMouseEvent *)
{
    Q_EMIT chooseWanted();
}

void KruvDragAndDropImageView::paste()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (const QString path = data ? onlyFile(*data) : QString(); !path.isEmpty()) {
        Q_EMIT fileGiven(path);
    } else if (data && data->hasImage()) {
        Q_EMIT imageGiven(qvariant_cast<QImage>(data->imageData()));
    }
}

void KruvDragAndDropImageView::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addAction(tr("Choose…"), this, &KruvDragAndDropImageView::chooseWanted);
    menu.addAction(tr("Paste"), QKeySequence::Paste, this, &KruvDragAndDropImageView::paste);
    QAction *remove =
        menu.addAction(tr("Remove"), QKeySequence::Delete, this, &KruvDragAndDropImageView::removeWanted);
    remove->setEnabled(!m_picture.isNull());
    menu.exec(event->globalPos());
}

} // namespace kruv
