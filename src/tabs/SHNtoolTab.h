// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolLenTask.h"
#include "shntool/SHNToolOutputTask.h"
#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/LossQuestion.h"
#include "tabs/TrackNameInputController.h"

#include <memory>

namespace kruv {

struct Format;
class KruvTask;
class SHNToolTask;

/// The shntool tab: what that tool tells of the listed files or makes of them, one command at a time over the
/// whole list.
class SHNtoolTab : public BaseTab
{
    Q_OBJECT
public:
    explicit SHNtoolTab(TabHost &host);

    /// By the tool's own words for its modes.
    ChoiceControl &shntoolCommandMatrix() { return m_shntoolCommandMatrix; }
    ChoiceControl &shnLenMatrix() { return m_shnLenMatrix; }
    /// What the outputs can be, in the order of the choice.
    static QList<const Format *> targets();
    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    LabelControl &outputFormatText() { return m_outputFormatText; }
    ToggleControl &sourceEncodeButton() { return m_sourceEncodeButton; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }
    Control &namesButton() { return m_namesButton; }
    /// Says how many names are entered, so that those of another concert are noticed.
    LabelControl &namesText() { return m_namesText; }

    const QStringList &names() const { return m_names; }
    TrackNameInputController &trackNameWindow() const { return host().trackNameInputController(); }
    void showNamesWindow() const { trackNameWindow().show(this); }

    void displayRelevantOptions() override;
    void executeCommand() override;

    // The commands. The writing ones put their outputs beside the first file, else into a folder that the
    // person chooses.
    void handleSHNtoolLen();
    void handleSHNtoolInfo();
    void handleSHNtoolCompare();
    void handleSHNtoolTrim(bool besideSource, bool deleteOriginals);
    void handleSHNtoolPad(bool besideSource, bool deleteOriginals);
    void handleSHNtoolStrip(bool besideSource, bool deleteOriginals);
    void handleSHNtoolSplit(bool besideSource);
    void handleSHNtoolJoin(bool besideSource, bool deleteOriginals);
    void handleSHNtoolCue();

    std::optional<QString> chooseSplitPointFile();

    /// Names for that many files: those entered, then file names.
    static QStringList trackNames(const QStringList &entered, const QStringList &files);
    static int getMaxTrackNamesLength(const QStringList &names);

private:
    void trackNamesEntered(const QStringList &names);
    void showLengths(SHNToolLenTask::LenType type, const QStringList &names);
    void showLengthsByDisc(const QStringList &names);
    std::shared_ptr<SHNToolTask> makeReport(const QString &command) const;
    template <class Job> void convertEach(bool besideSource, bool deleteOriginals);
    SHNToolOutputTask::Request request(const QString &folder, const QStringList &files) const;
    void keepOriginals(SHNToolOutputTask &job) const;
    /// Queues the job unless the person wants to keep files that it would replace.
    bool startIfAgreed(const std::shared_ptr<SHNToolOutputTask> &job);
    std::optional<QString> outputFolder(bool besideSource);
    QString outputFormat() const;
    QString tool() const { return BaseTab::tool(QStringLiteral("shntool")); }

    ChoiceControl m_shntoolCommandMatrix;
    ChoiceControl m_shnLenMatrix;
    ChoiceControl m_outputFormatMatrix;
    LabelControl m_outputFormatText;
    ToggleControl m_sourceEncodeButton;
    ToggleControl m_deleteOriginalsButton;
    Control m_namesButton;
    LabelControl m_namesText;
    QStringList m_names;
    LossQuestion m_lossQuestion{host()};
    /// Of the command that runs.
    LossQuestion::Kept m_kept;
};

} // namespace kruv
