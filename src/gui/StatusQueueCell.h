// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStyledItemDelegate>
#include <QTimer>

class QAbstractItemView;

namespace kruv {

class KruvTask;

/// Draws a row of the status table from its job: title, progress bar, status line and stop button.
class StatusQueueCell : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// Where the parts of a row lie, in the table's coordinates.
    struct Layout
    {
        QRect textField;
        QRect progressIndicator;
        QRect topTextField;
        QRect cancelButton;
    };

    explicit StatusQueueCell(QAbstractItemView *view);

    /// Running jobs stand still.
    void setPaused(bool paused);

    /// The cell's frame within its row.
    static QRect frameOf(const QStyleOptionViewItem &option);
    static Layout layout(const QRect &frame, const QFont &font);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    void paintTexts(QPainter &painter, const QStyleOptionViewItem &option, const Layout &parts,
                    const KruvTask &task) const;
    QString statusText(const KruvTask &task) const;
    void paintBar(QPainter &painter, const QPalette &palette, const QRect &bar, const KruvTask &task) const;

    QAbstractItemView *m_view;
    mutable QTimer m_animation; // runs while an indeterminate bar is being drawn
    int m_phase = 0;
    bool m_paused = false;
};

} // namespace kruv
