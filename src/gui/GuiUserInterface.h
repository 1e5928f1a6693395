// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/UserInterface.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>

class QFileDialog;

namespace kruv {

class JobActions;
class KruvTaskQueue;
class OutputWindowController;
class Preferences;
class QueueProgress;
class StatusPanel;

/// Speaks to a person through windows and dialogs.
class GuiUserInterface : public QObject, public UserInterface
{
    Q_OBJECT
public:
    /// `preferences` must outlive this; folders last chosen and the places of windows are kept there.
    explicit GuiUserInterface(Preferences &preferences);
    ~GuiUserInterface() override;

    /// The window that questions belong to and the queue whose jobs the status panel shows; both must be told
    /// before the first job, and leave() before either goes.
    void attach(QWidget *mainWindow, KruvTaskQueue &queue);
    /// Closes every window of ours and opens no more.
    void leave();

    /// Null while nothing is attached. Made when first asked for.
    StatusPanel *statusPanel();

    /// Null while nothing is attached.
    JobActions *jobActions() const { return m_jobActions.get(); }

    int ask(Matter matter, const QString &title, const QString &text, const QStringList &buttons,
            int defaultButton) override;
    int askBesidePicture(const QString &title, const QString &text, const QStringList &buttons,
                         int defaultButton, const QImage &picture) override;
    void remark(const QString &sentence) override;
    void alert(const QString &title, const QString &text, const QString &button) override;
    std::optional<QString> chooseFolder(const QString &title) override;
    QStringList chooseFiles(const QString &title, const QString &prompt, const QStringList &types) override;
    std::optional<QString> chooseFile(const QString &title, const QStringList &types) override;
    std::optional<QString> savePath(const QString &message, const QString &title,
                                    const QString &proposedName) override;
    std::optional<QString> enterText(const QString &title, const QString &message,
                                     const QString &initialText) override;
    std::optional<TrimCharsObject> trimCharacters() override;
    CustomTagRows editCustomTags(const CustomTagRows &rows) override;
    void showStatusPanel() override;
    void closeStatusPanel() override;
    void scrollStatusPanelTo(int row) override;
    void openResultsWindow(const QString &text, const QString &title) override;
    void setBadge(int count) override;
    bool notify(const QString &title) override;
    void requestAttention() override;

private:
    struct Desktop;
    Desktop &desktop();
    QStringList runFileDialog(QFileDialog &dialog, const QString &folderKey);
    void updateStatusPanel();
    OutputWindowController *openWindow(const QString &text, const QString &title);
    QWidget *dialogParent() const;

    Preferences &m_preferences;
    QPointer<QWidget> m_mainWindow;
    KruvTaskQueue *m_queue = nullptr;
    std::unique_ptr<Desktop> m_desktop;
    std::unique_ptr<QueueProgress> m_progress;
    std::unique_ptr<JobActions> m_jobActions;
    std::unique_ptr<StatusPanel> m_statusPanel;
    // What the engine asks of the panel for each of thousands of jobs is done once per turn of the event
    // loop.
    QTimer m_statusPanelSoon;
    bool m_bringToFront = false;
    int m_scrollTo = -1;
    QPoint m_outputWindowTopLeft;
    // A tool that is missing fails thousands of jobs: after a few windows their words share one.
    int m_windowsOfRun = 0;
    QPointer<OutputWindowController> m_moreOutput;
};

} // namespace kruv
