// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QListView;
class QModelIndex;
class QPushButton;

namespace kruv {

class JobActions;
class KruvTaskQueue;
class Preferences;
class QueueProgress;

/// The window with a row for every job. It keeps its place from one busy period to the next.
class StatusPanel : public QWidget
{
    Q_OBJECT
public:
    /// All four must outlive the panel. `beside` is the window it opens beside for the first time.
    StatusPanel(KruvTaskQueue &queue, QueueProgress &progress, JobActions &actions, Preferences &preferences,
                QWidget *beside);

    /// Shows the panel in front without taking the keyboard away from what a person types in.
    void bringToFront();
    void scrollTo(int row);

Q_SIGNALS:
    /// A person wants to read all that a failed job said.
    void outputWanted(const QString &text, const QString &title);

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeTable();
    QLayout *makeBar();
    void place();
    void showProgress();
    void showContextMenu(const QPoint &position);
    void makePauseButton();
    void cancelSelected();
    void showOutputOf(const QModelIndex &index);
    bool mayRemoveRows() const;

    KruvTaskQueue &m_queue;
    QueueProgress &m_progress;
    JobActions &m_actions;
    Preferences &m_preferences;
    QWidget *m_beside;
    QListView *m_table;
    QLabel *m_text;
    QPushButton *m_pause;
    QPushButton *m_stopAll;
    QPushButton *m_removeErrors;
    QTimer m_showSoon; // thousands of rows may come and go in one turn of the event loop
    bool m_placed = false;
};

} // namespace kruv
