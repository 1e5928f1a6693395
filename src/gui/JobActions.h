// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QAbstractItemView;
class QAction;
class QWidget;

namespace kruv {

class KruvTask;
class KruvTaskQueue;

/// What a person can do to the queue and to the jobs that are selected, with its keys: one set of actions for
/// every menu and window. Each can be chosen only where it does something.
class JobActions : public QObject
{
    Q_OBJECT
public:
    /// `queue` must outlive this.
    explicit JobActions(KruvTaskQueue &queue);

    /// The view whose selected rows the actions on jobs are about.
    void setView(QAbstractItemView *view);
    /// In menu order, with separators.
    const QList<QAction *> &all() const { return m_all; }
    /// "Pause", or "Continue".
    QAction *pause() const { return m_pause; }

    using Selected = std::vector<std::shared_ptr<KruvTask>>;
    /// Top to bottom.
    Selected selected() const;

private:
    QAction *add(const QString &text, const QKeySequence &key, const char *name,
                 const std::function<void()> &act);
    void addSeparator();
    void addMoves();
    void pauseOrGoOn();
    void update();

    KruvTaskQueue &m_queue;
    QPointer<QAbstractItemView> m_view;
    QList<QAction *> m_all;
    QAction *m_pause;
    QAction *m_stopAfterRunning;
    QAction *m_tryAgain;
    QAction *m_first = nullptr;
    QAction *m_up = nullptr;
    QAction *m_down = nullptr;
    QAction *m_remove = nullptr;
    QTimer m_updateSoon; // thousands of jobs may come and go in one turn of the event loop
};

} // namespace kruv
