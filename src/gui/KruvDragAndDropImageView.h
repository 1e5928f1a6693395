// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFrame>
#include <QImage>

namespace kruv {

/// Shows a picture, and takes another one as a single file dropped on it, pasted, or chosen.
class KruvDragAndDropImageView : public QFrame
{
    Q_OBJECT
public:
    explicit KruvDragAndDropImageView(QWidget *parent);

    /// A null image shows `hint` in its place.
    void setPicture(const QImage &picture, const QString &hint);

    QSize sizeHint() const override;

    void paste();

Q_SIGNALS:
    void fileGiven(const QString &path);
    void imageGiven(const QImage &image);
    void chooseWanted();
    void removeWanted();

protected:
    /// Takes a drag of precisely one file that is not a folder, and refuses anything else.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void showDrop(bool shown);

    QImage m_picture;
    QString m_hint;
    bool m_dropShown = false;
};

} // namespace kruv
