// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/SHNtoolTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/TextFile.h"
#include "base/UserInterface.h"
#include "formats/Records.h"
#include "shntool/SHNToolCueTask.h"
#include "shntool/SHNToolJoinTask.h"
#include "shntool/SHNToolPadTask.h"
#include "shntool/SHNToolSplitTask.h"
#include "shntool/SHNToolStripTask.h"
#include "shntool/SHNToolTask.h"
#include "shntool/SHNToolTrimTask.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"
#include "shntool/SplitPositions.h"
#include "shntool/SplitTitles.h"
#include "tabs/FormatControls.h"
#include "tasks/KruvTaskQueue.h"

#include <QCollator>
#include <QFileInfo>

#include <algorithm>
#include <map>

namespace kruv {

namespace {

/// A mode of the tool, what shows for it, and what it does.
struct Command
{
    QStringView mode;
    bool writes;
    bool deletes;
    void (*handle)(SHNtoolTab &tab, bool besideSource, bool deleteOriginals);
};

constexpr Command commands[] = {
    {u"len", false, false, [](SHNtoolTab &tab, bool, bool) { tab.handleSHNtoolLen(); }},
    {u"info", false, false, [](SHNtoolTab &tab, bool, bool) { tab.handleSHNtoolInfo(); }},
    {u"cmp", false, false, [](SHNtoolTab &tab, bool, bool) { tab.handleSHNtoolCompare(); }},
    {u"trim", true, true, [](SHNtoolTab &tab, bool beside, bool del) { tab.handleSHNtoolTrim(beside, del); }},
    {u"split", true, false, [](SHNtoolTab &tab, bool beside, bool) { tab.handleSHNtoolSplit(beside); }},
    {u"join", true, true, [](SHNtoolTab &tab, bool beside, bool del) { tab.handleSHNtoolJoin(beside, del); }},
    {u"cue", false, false, [](SHNtoolTab &tab, bool, bool) { tab.handleSHNtoolCue(); }},
    {u"pad", true, true, [](SHNtoolTab &tab, bool beside, bool del) { tab.handleSHNtoolPad(beside, del); }},
    {u"strip", true, true,
     [](SHNtoolTab &tab, bool beside, bool del) { tab.handleSHNtoolStrip(beside, del); }},
};

/// The tool's own words are what a person sees, too.
QList<ChoiceControl::Choice> commandChoices()
{
    QList<ChoiceControl::Choice> choices;
    for (const Command &command : commands) {
        choices.append({command.mode.toString(), command.mode.toString()});
    }
    return choices;
}

} // namespace

SHNtoolTab::SHNtoolTab(TabHost &host)
    : BaseTab(QStringLiteral("shntool"), host)
    , m_shntoolCommandMatrix(commandChoices(), 3)
    , m_shnLenMatrix({{QStringLiteral("normal"), tr("normal len output")},
                      {QStringLiteral("fileset"), tr("show len for fileset")},
                      {QStringLiteral("disc"), tr("show len by disc*")}})
    , m_outputFormatMatrix(FormatControls::choicesOf(targets()), 2)
{
    m_outputFormatText.setText(tr("Output format"));
    m_shntoolCommandMatrix.tieTo(host.preferences(), QStringLiteral("shntoolCommandOption"));
    m_shnLenMatrix.tieTo(host.preferences(), QStringLiteral("shntoolLenOption"));
    m_outputFormatMatrix.tieTo(host.preferences(), QStringLiteral("shntoolOutputFormat"));
    connect(&m_shntoolCommandMatrix, &Control::changed, this, &SHNtoolTab::displayRelevantOptions);
    connect(&m_shnLenMatrix, &Control::changed, this, &SHNtoolTab::displayRelevantOptions);
    connect(&host.trackNameInputController(), &TrackNameInputController::kruvTrackNamesEnteredNotification,
            this, &SHNtoolTab::trackNamesEntered);
    SHNtoolTab::displayRelevantOptions();
}

QList<const Format *> SHNtoolTab::targets()
{
    return {&shortenFormat, &flacFormat, &aiffFormat, &wavFormat};
}

QString SHNtoolTab::outputFormat() const
{
    const Format *target = targets().value(m_outputFormatMatrix.selectedIndex());
    return target ? target->extension() : QString();
}

void SHNtoolTab::displayRelevantOptions()
{
    const int selected = m_shntoolCommandMatrix.selectedIndex();
    const bool writes = selected >= 0 && commands[selected].writes;
    const bool isLen = selected >= 0 && commands[selected].mode == u"len";
    const bool takesNames = isLen && m_shnLenMatrix.selectedIndex() > 0;
    m_outputFormatText.setHidden(!writes);
    m_outputFormatMatrix.setHidden(!writes);
    m_sourceEncodeButton.setHidden(!writes);
    m_deleteOriginalsButton.setHidden(selected < 0 || !commands[selected].deletes);
    m_shnLenMatrix.setHidden(!isLen);
    m_namesButton.setHidden(!takesNames);
    m_namesText.setHidden(!takesNames);
}

void SHNtoolTab::executeCommand()
{
    const int selected = m_shntoolCommandMatrix.selectedIndex();
    const bool deleteOriginals = m_deleteOriginalsButton.isOn() && !m_deleteOriginalsButton.isHidden();
    if (fileList().isEmpty() || selected < 0 || m_lossQuestion.isOpen() ||
        !confirmDeletion(deleteOriginals)) {
        return;
    }
    const bool besideSource = m_sourceEncodeButton.isOn();
    const auto go = [this, selected, besideSource, deleteOriginals](const LossQuestion::Answer &answer) {
        m_kept = answer.kept;
        commands[selected].handle(*this, besideSource, deleteOriginals);
        clearFiles();
    };
    if (!deleteOriginals) {
        go({});
        return;
    }
    // The tool's outputs get no tags, whatever their format.
    using Kept = TagLosses::KeptChunks;
    const bool isToDropThem = commands[selected].mode == u"strip";
    m_lossQuestion.settle({.files = fileNames(),
                           .label = QStringLiteral("shntool"),
                           .chunks = isToDropThem ? Kept::All : Kept::None},
                          worksInBackground(), go);
}

void SHNtoolTab::trackNamesEntered(const QStringList &names)
{
    m_names = names;
    m_namesText.setText(names.isEmpty() ? QString()
                                        : tr("%n entered", nullptr, static_cast<int>(names.size())));
}

std::optional<QString> SHNtoolTab::outputFolder(bool besideSource)
{
    return besideSource ? PathNames::folderOf(fileList().at(0)) : chooseOutputFolder();
}

QStringList SHNtoolTab::trackNames(const QStringList &entered, const QStringList &files)
{
    QStringList names = entered;
    if (entered.size() < files.size()) {
        // One file earlier than the first without a name.
        for (const QString &file : files.mid(std::max<qsizetype>(entered.size() - 1, 0))) {
            names.append(PathNames::lastPathComponent(file));
        }
    }
    return names;
}

int SHNtoolTab::getMaxTrackNamesLength(const QStringList &names)
{
    qsizetype longest = 0;
    for (const QString &name : names) {
        longest = std::max(longest, name.size());
    }
    return static_cast<int>(longest);
}

void SHNtoolTab::handleSHNtoolLen()
{
    const auto type = static_cast<SHNToolLenTask::LenType>(m_shnLenMatrix.selectedIndex());
    if (type == SHNToolLenTask::LenType::Disc) {
        showLengthsByDisc(m_names);
    } else {
        showLengths(type, trackNames(m_names, fileNames()));
    }
}

void SHNtoolTab::showLengths(SHNToolLenTask::LenType type, const QStringList &names)
{
    const SHNtoolOutputNamingFormatParser parser(host().preferences());
    auto job = std::make_shared<SHNToolLenTask>(&host().taskQueue(), tool(), fileNames(), type, parser);
    if (type == SHNToolLenTask::LenType::FileSet) {
        job->setTrackNames(names);
        job->setMaxTrackNameLength(getMaxTrackNamesLength(names));
    }
    submit(job);
}

void SHNtoolTab::showLengthsByDisc(const QStringList &entered)
{
    const auto before = [collator = FileList::collator()](const QString &one, const QString &other) {
        const int order = collator.compare(one, other);
        return order != 0 ? order < 0 : one < other; // "2" and "02" are two discs
    };
    std::map<QString, QStringList, decltype(before)> discs(before);
    for (const QString &file : fileNames()) {
        discs[PathNames::disc(file)].append(file);
    }
    QStringList inOrder;
    for (const auto &[key, files] : discs) {
        inOrder += files;
    }
    const QStringList names = trackNames(entered, inOrder);
    const SHNtoolOutputNamingFormatParser parser(host().preferences());
    const auto results = std::make_shared<KruvTaskResults>();
    std::vector<std::shared_ptr<KruvTask>> jobs;
    qsizetype first = 0;
    for (const auto &[key, files] : discs) {
        auto job = std::make_shared<SHNToolLenTask>(&host().taskQueue(), tool(), files,
                                                    SHNToolLenTask::LenType::Disc, parser);
        job->setResults(results);
        results->addTaskInSet(*job);
        job->setDiscNumber(key);
        if (first + files.size() <= names.size()) {
            job->setTrackNames(names.mid(first, files.size()));
            job->setMaxTrackNameLength(getMaxTrackNamesLength(names));
        }
        first += files.size();
        jobs.push_back(std::move(job));
    }
    submit(jobs);
}

std::shared_ptr<SHNToolTask> SHNtoolTab::makeReport(const QString &command) const
{
    return std::make_shared<SHNToolTask>(&host().taskQueue(), tool(), QStringList{command} + fileNames());
}

void SHNtoolTab::handleSHNtoolInfo()
{
    const auto job = makeReport(QStringLiteral("info"));
    job->setTitles(tr("Running SHNTool Info"));
    submit(job);
}

void SHNtoolTab::handleSHNtoolCompare()
{
    const auto job = makeReport(QStringLiteral("cmp"));
    job->setTitles(tr("shntool compare"), tr("Comparing"));
    // A file that is the beginning of the other one is not the same.
    job->setFailureMark(QStringLiteral("WAVE data size differs between these files"));
    submit(job);
}

template <class Job> void SHNtoolTab::convertEach(bool besideSource, bool deleteOriginals)
{
    if (const auto folder = outputFolder(besideSource)) {
        auto job = std::make_shared<Job>(&host().taskQueue(), request(*folder, fileNames()));
        job->setDeleteOriginal(deleteOriginals);
        keepOriginals(*job);
        startIfAgreed(job);
    }
}

SHNToolOutputTask::Request SHNtoolTab::request(const QString &folder, const QStringList &files) const
{
    return {.launchPath = tool(), .folder = folder, .format = outputFormat(), .files = files};
}

/// They go together or stay together.
void SHNtoolTab::keepOriginals(SHNToolOutputTask &job) const
{
    for (const QString &reason : m_kept) {
        job.failAfterwards(reason);
    }
}

bool SHNtoolTab::startIfAgreed(const std::shared_ptr<SHNToolOutputTask> &job)
{
    const auto existing = agreeOnExisting(job->outputs());
    if (existing) {
        job->setMayReplace(existing == FileCommit::Existing::Replace);
        submit(job);
    }
    return existing.has_value();
}

void SHNtoolTab::handleSHNtoolTrim(bool besideSource, bool deleteOriginals)
{
    convertEach<SHNToolTrimTask>(besideSource, deleteOriginals);
}

void SHNtoolTab::handleSHNtoolPad(bool besideSource, bool deleteOriginals)
{
    convertEach<SHNToolPadTask>(besideSource, deleteOriginals);
}

void SHNtoolTab::handleSHNtoolStrip(bool besideSource, bool deleteOriginals)
{
    convertEach<SHNToolStripTask>(besideSource, deleteOriginals);
}

void SHNtoolTab::handleSHNtoolJoin(bool besideSource, bool deleteOriginals)
{
    const auto folder = outputFolder(besideSource);
    if (!folder) {
        return;
    }
    const QString title = tr("Save joined file as...");
    const auto fileName = openSavePanel(title, title, *folder + QStringLiteral("/joined.") + outputFormat());
    if (!fileName) {
        return;
    }
    auto job = std::make_shared<SHNToolJoinTask>(&host().taskQueue(), request(*folder, fileNames()));
    job->setFileName(*fileName);
    job->setMayReplace(QFileInfo::exists(*fileName)); // the person was asked, where it is there
    job->setDeleteOriginal(deleteOriginals);
    keepOriginals(*job);
    submit(job);
}

void SHNtoolTab::handleSHNtoolCue()
{
    const QString title = tr("Save CUE sheet as");
    if (const auto fileName = openSavePanel(title, title, QStringLiteral("cuesheet.cue"))) {
        submit(std::make_shared<SHNToolCueTask>(*fileName, &host().taskQueue(), tool(), fileNames()));
    }
}

std::optional<QString> SHNtoolTab::chooseSplitPointFile()
{
    return host().userInterface().chooseFile(tr("Choose file with split point data"),
                                             {QStringLiteral("cue"), QStringLiteral("txt")});
}

void SHNtoolTab::handleSHNtoolSplit(bool besideSource)
{
    const auto splitPoints = chooseSplitPointFile();
    const auto folder = splitPoints ? outputFolder(besideSource) : std::nullopt;
    if (!folder) {
        return;
    }
    const auto points = TextFile::read(*splitPoints);
    if (!points) {
        host().userInterface().alert(tr("%1 could not be read.").arg(*splitPoints), QString(),
                                     acknowledgeButton());
        return;
    }
    if (const QString problem = SplitPositions::problemIn(*points); !problem.isEmpty()) {
        host().userInterface().alert(tr("%1 can't be split by %2.")
                                         .arg(PathNames::lastPathComponent(fileList().at(0)),
                                              PathNames::lastPathComponent(*splitPoints)),
                                     problem, acknowledgeButton());
        return;
    }
    auto job = std::make_shared<SHNToolSplitTask>(&host().taskQueue(), request(*folder, {fileList().at(0)}),
                                                  *splitPoints);
    job->setTrackTitleMap(SplitTitles::trackTitleMap(*points, outputFormat()));
    if (startIfAgreed(job) && fileList().count() > 1) {
        host().userInterface().alert(
            tr("Only the first file is split: %1").arg(PathNames::lastPathComponent(fileList().at(0))),
            tr("The others were left as they are."), acknowledgeButton());
    }
}

} // namespace kruv
