// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "journal/Journal.h"
#include "tabs/BaseTab.h"
#include "tabs/Plan.h"
#include "tabs/TabHost.h"
#include "tabs/TrackNameInputController.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/RunRecorder.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>
#include <stop_token>

namespace kruv {

class ChecksumTab;
class DecodeTab;
class EncodeTab;
class FixTab;
class LossyTab;
class PowerManager;
class SHNtoolTab;
class TagsTab;
class UtilTab;

/// The application's central object: owns the queue and the tab controllers, takes files from every way they
/// arrive and hands each tab only what it can work on, and answers the quit questions. Main thread, but for
/// isValidFile().
class KruvController : public QObject, public TabHost
{
    Q_OBJECT
public:
    /// All references must outlive the controller; `power` may be null.
    KruvController(Preferences &preferences, UserInterface &userInterface, PowerManager *power);
    ~KruvController() override;

    KruvTaskQueue &taskQueue() override { return m_taskQueue; }
    void submit(const QString &tabLabel, std::span<const std::shared_ptr<KruvTask>> jobs,
                const QString &plan) override;
    void doRecorded(const QString &tabLabel, const std::vector<DoneRecord> &plan,
                    const std::function<void()> &work) override;
    /// From now on commands do nothing, but tell plan() what they would do.
    void planOnly() { m_plan.emplace(); }
    Plan *plan() override { return m_plan ? &*m_plan : nullptr; }
    /// From now on jobs that can be made once more by a later process are recorded, and not done in this one.
    void leaveJobsToOthers() { m_leavesJobs = true; }
    /// What was done is recorded there.
    Journal &journal() { return m_journal; }
    RunRecorder &runRecorder() { return m_runRecorder; }
    Preferences &preferences() override { return m_preferences; }
    UserInterface &userInterface() override { return m_userInterface; }
    TrackNameInputController &trackNameInputController() override { return m_trackNameInputController; }
    bool isValidFile(const QString &tabLabel, const QString &path) const override;

    DecodeTab &decodeTab() { return *m_decodeTab; }
    EncodeTab &encodeTab() { return *m_encodeTab; }
    ChecksumTab &checksumTab() { return *m_checksumTab; }
    SHNtoolTab &shntoolTab() { return *m_shntoolTab; }
    FixTab &fixTab() { return *m_fixTab; }
    UtilTab &utilTab() { return *m_utilTab; }
    TagsTab &tagsTab() { return *m_tagsTab; }
    LossyTab &lossyTab() { return *m_lossyTab; }

    /// See BaseTab::setIntakeInBackground(); for every tab and for what the controller itself takes in.
    void setIntakeInBackground(bool inBackground);

    /// Labels of the tab view in order; "about" is last and has no controller.
    const QStringList &tabLabels() const { return m_tabLabels; }
    /// The controller of a tab, or null for "about".
    BaseTab *tab(const QString &label) const { return m_tabMap.value(label); }
    QStringList acceptedTypes(const QString &tabLabel) const override
    {
        return m_extensionMap.value(tabLabel);
    }
    int selectedTabViewItem() const { return m_selectedTab; }
    void selectTab(int index);

    /// Files that were opened with the application or dropped on it.
    void addFiles(const QStringList &paths);
    /// Whether the application may quit; asks while the queue holds jobs.
    bool applicationShouldTerminate();
    bool windowShouldClose();
    /// Cancels every job.
    void applicationWillTerminate();

Q_SIGNALS:
    void selectedTabChanged(int index);

private:
    void addTab(BaseTab &tab);
    bool listHas(const QString &tabLabel, const QString &fileType) const;
    struct Intake
    {
        QStringList files;
        QStringList folders; ///< that stand for some of these
        QStringList undecodable;
        QStringList unreadable;
    };
    /// The named files, and the files with an extension below the named folders.
    static Intake getFiles(const QStringList &paths, const std::stop_token &stop);
    Intake expand(const QStringList &paths, const QString &label, const std::stop_token &stop) const;
    void hand(const Intake &intake, const QString &label);
    bool passesPreFilter(const QString &tabLabel, const QString &path) const;
    void routeFromAbout(const QStringList &files);
    QString labelForRoute(const QString &fileType) const;

    Preferences &m_preferences;
    UserInterface &m_userInterface;
    KruvTaskQueue m_taskQueue;
    Journal m_journal;
    RunRecorder m_runRecorder;
    TrackNameInputController m_trackNameInputController;
    QHash<QString, QStringList> m_extensionMap;
    std::unique_ptr<DecodeTab> m_decodeTab;
    std::unique_ptr<EncodeTab> m_encodeTab;
    std::unique_ptr<ChecksumTab> m_checksumTab;
    std::unique_ptr<SHNtoolTab> m_shntoolTab;
    std::unique_ptr<FixTab> m_fixTab;
    std::unique_ptr<UtilTab> m_utilTab;
    std::unique_ptr<TagsTab> m_tagsTab;
    std::unique_ptr<LossyTab> m_lossyTab;
    QStringList m_tabLabels;
    QHash<QString, BaseTab *> m_tabMap;
    int m_selectedTab = 0;
    bool m_intakeInBackground = false;
    bool m_leavesJobs = false;
    std::optional<Plan> m_plan;
    BackgroundWork m_work;
};

} // namespace kruv
