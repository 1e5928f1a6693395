// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/KruvController.h"

#include "audio/CoreAudioHelper.h"
#include "base/FolderWalk.h"
#include "base/InParallel.h"
#include "base/PathNames.h"
#include "base/UserInterface.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "journal/DoneRecord.h"
#include "journal/JournalFile.h"
#include "tabs/ChecksumTab.h"
#include "tabs/DecodeTab.h"
#include "tabs/EncodeTab.h"
#include "tabs/FixTab.h"
#include "tabs/LossyTab.h"
#include "tabs/SHNtoolTab.h"
#include "tabs/TagsTab.h"
#include "tabs/UtilTab.h"

#include <utility>

namespace kruv {

namespace {

const QString aboutLabel = QStringLiteral("about");
const QString checksumLabel = QStringLiteral("checksum");
const QString decodeLabel = QStringLiteral("decode");
const QString encodeLabel = QStringLiteral("encode");
const QString lossyLabel = QStringLiteral("lossy");

bool isMpeg4(const QString &fileType)
{
    return Formats::ofType(fileType) == &appleLosslessFormat;
}

/// Tab label to the file types it takes.
QHash<QString, QStringList> makeExtensionMap()
{
    const QStringList lists{QStringLiteral("MD5"), QStringLiteral("FFP"), QStringLiteral("TXT"),
                            QStringLiteral("ST5")};
    return {
        {decodeLabel, Formats::typesFor(&TakenBy::decode)},
        {encodeLabel, Formats::typesFor(&TakenBy::encode)},
        {checksumLabel, Formats::typesFor(&TakenBy::checksum) + lists},
        {QStringLiteral("shntool"), Formats::typesFor(&TakenBy::shntool)},
        {QStringLiteral("fix SBE"), Formats::typesFor(&TakenBy::fix)},
        {lossyLabel, Formats::typesFor(&TakenBy::lossy)},
        {QStringLiteral("Tags"), Formats::typesFor(&TakenBy::tags)},
    };
}

} // namespace

KruvController::KruvController(Preferences &preferences, UserInterface &userInterface, PowerManager *power)
    : m_preferences(preferences)
    , m_userInterface(userInterface)
    , m_taskQueue(preferences, userInterface, power)
    , m_journal(JournalFile::usualPath(),
                [&userInterface](const QString &sentence) { userInterface.remark(sentence); })
    , m_runRecorder(m_journal, m_taskQueue)
    , m_trackNameInputController(userInterface)
    , m_extensionMap(makeExtensionMap())
    , m_decodeTab(std::make_unique<DecodeTab>(*this))
    , m_encodeTab(std::make_unique<EncodeTab>(*this))
    , m_checksumTab(std::make_unique<ChecksumTab>(*this))
    , m_shntoolTab(std::make_unique<SHNtoolTab>(*this))
    , m_fixTab(std::make_unique<FixTab>(*this))
    , m_utilTab(std::make_unique<UtilTab>(*this))
    , m_tagsTab(std::make_unique<TagsTab>(*this))
    , m_lossyTab(std::make_unique<LossyTab>(*this))
{
    addTab(*m_decodeTab);
    addTab(*m_encodeTab);
    addTab(*m_checksumTab);
    addTab(*m_shntoolTab);
    addTab(*m_fixTab);
    addTab(*m_utilTab);
    addTab(*m_tagsTab);
    addTab(*m_lossyTab);
    m_tabLabels.append(aboutLabel);
}

KruvController::~KruvController() = default;

void KruvController::submit(const QString &tabLabel, std::span<const std::shared_ptr<KruvTask>> jobs,
                            const QString &plan)
{
    if (m_plan) {
        m_plan->setOrder(plan);
        return m_plan->addJobs(jobs, threadsForOneJob(m_taskQueue.maxThreads()));
    }
    m_runRecorder.announce(tabLabel, plan);
    if (m_leavesJobs && !plan.isEmpty()) {
        m_runRecorder.enlist(jobs);
    } else {
        m_taskQueue.addTasks(jobs);
    }
}

void KruvController::doRecorded(const QString &tabLabel, const std::vector<DoneRecord> &plan,
                                const std::function<void()> &work)
{
    if (m_plan) {
        return m_plan->addRecords(plan);
    }
    m_runRecorder.announce(tabLabel, {});
    m_runRecorder.record(plan, work);
}

void KruvController::addTab(BaseTab &tab)
{
    m_tabLabels.append(tab.label());
    m_tabMap.insert(tab.label(), &tab);
}

void KruvController::selectTab(int index)
{
    m_selectedTab = index;
    if (BaseTab *selected = tab(m_tabLabels.value(index))) {
        selected->displayRelevantOptions();
    }
    Q_EMIT selectedTabChanged(index);
}

bool KruvController::listHas(const QString &tabLabel, const QString &fileType) const
{
    return m_extensionMap.value(tabLabel).contains(fileType);
}

bool KruvController::isValidFile(const QString &tabLabel, const QString &path) const
{
    if (!m_extensionMap.contains(tabLabel) || tabLabel == checksumLabel) {
        return true;
    }
    const QString fileType = PathNames::fileType(path);
    if (isMpeg4(fileType) && tabLabel == lossyLabel) {
        return CoreAudioHelper::isAppleLossless(path);
    }
    if (isMpeg4(fileType) && tabLabel == encodeLabel) {
        const Format *format = Formats::identify(path);
        return format && format->decode;
    }
    if (fileType.isEmpty() || listHas(tabLabel, fileType)) {
        return !fileType.isEmpty();
    }
    // Whatever the name says: what the file holds is one of the tab's types.
    const bool takesWav = listHas(tabLabel, wavFormat.types.front().toString());
    const bool takesAiff = listHas(tabLabel, aiffFormat.types.front().toString());
    return takesWav && takesAiff
               ? CoreAudioHelper::isAiffOrWav(path)
               : (takesWav && CoreAudioHelper::isWav(path)) || (takesAiff && CoreAudioHelper::isAiff(path));
}

KruvController::Intake KruvController::getFiles(const QStringList &paths, const std::stop_token &stop)
{
    Intake intake;
    FolderWalk walk(stop);
    for (const QString &path : paths) {
        // A file that was named is a person's own choice, extension or not; only the tab may refuse it.
        walk.walk(path, [&](const QString &file) {
            if (file == path || !PathNames::extension(file).isEmpty()) {
                intake.files.append(file);
            }
        });
    }
    intake.folders = walk.folders();
    intake.undecodable = walk.undecodableNames();
    intake.unreadable = walk.unreadableFolders();
    return intake;
}

bool KruvController::passesPreFilter(const QString &tabLabel, const QString &path) const
{
    const QString fileType = PathNames::fileType(path);
    return tabLabel == checksumLabel || !m_extensionMap.contains(tabLabel) || listHas(tabLabel, fileType);
}

void KruvController::setIntakeInBackground(bool inBackground)
{
    m_intakeInBackground = inBackground;
    for (BaseTab *each : std::as_const(m_tabMap)) {
        each->setIntakeInBackground(inBackground);
    }
}

void KruvController::addFiles(const QStringList &paths)
{
    const QString label = m_tabLabels.value(m_selectedTab);
    if (!m_intakeInBackground) {
        hand(expand(paths, label, {}), label);
        return;
    }
    m_work.start([this, paths, label](const std::stop_token &stop) {
        return [this, label, intake = expand(paths, label, stop)] { hand(intake, label); };
    });
}

KruvController::Intake KruvController::expand(const QStringList &paths, const QString &label,
                                              const std::stop_token &stop) const
{
    Intake intake = getFiles(paths, stop);
    if (label != aboutLabel) {
        intake.files.removeIf([this, &label](const QString &path) { return !passesPreFilter(label, path); });
    }
    return intake;
}

void KruvController::hand(const Intake &intake, const QString &label)
{
    if (label == aboutLabel) {
        routeFromAbout(intake.files);
    } else {
        tab(label)->noteFolders(intake.folders);
        tab(label)->addFiles(intake.files);
    }
    BaseTab::reportUndecodable(m_userInterface, intake.undecodable);
    BaseTab::reportUnreadable(m_userInterface, intake.unreadable);
}

QString KruvController::labelForRoute(const QString &fileType) const
{
    // Coded files are decoded first; what is plain PCM can be encoded.
    const Format *format = Formats::ofType(fileType);
    if (format && (format->recipe || format->isLossy())) {
        return decodeLabel;
    }
    for (const QString &label : {encodeLabel, decodeLabel, checksumLabel}) {
        if (listHas(label, fileType)) {
            return label;
        }
    }
    return {};
}

void KruvController::routeFromAbout(const QStringList &files)
{
    QHash<QString, QStringList> filesOfTab;
    QString selected;
    for (const QString &path : files) {
        const QString label = labelForRoute(PathNames::fileType(path));
        if (!label.isEmpty()) {
            filesOfTab[label].append(path);
        }
        selected = label.isEmpty() ? encodeLabel : label;
    }
    for (auto entry = filesOfTab.cbegin(); entry != filesOfTab.cend(); ++entry) {
        if (BaseTab *target = tab(entry.key())) {
            target->addCheckedFiles(entry.value());
        }
    }
    if (const auto index = m_tabLabels.indexOf(selected); index >= 0) {
        selectTab(static_cast<int>(index));
    }
}

bool KruvController::applicationShouldTerminate()
{
    const int tasks = m_taskQueue.taskCount();
    if (tasks < 1) {
        return true;
    }
    const int answer = m_userInterface.ask(
        UserInterface::Matter::Other, tr("Tasks in Progress"),
        tr("There are %n tasks in the queue.  Are you sure you want to quit?", nullptr, tasks),
        {UserInterface::no(), UserInterface::yes()}, 0);
    return answer == 1;
}

bool KruvController::windowShouldClose()
{
    return m_userInterface.ask(UserInterface::Matter::Other, tr("Are you sure you want to quit?"), QString(),
                               {UserInterface::no(), UserInterface::yes()}, 0) == 1;
}

void KruvController::applicationWillTerminate()
{
    m_taskQueue.killAllTasks();
    m_taskQueue.allowSleep();
}

} // namespace kruv
