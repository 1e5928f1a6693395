// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "cli/CliUserInterface.h"
#include "cli/CommonOptions.h"
#include "cli/Verb.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>
#include <memory>

namespace kruv {

class BaseTab;
class ChoiceControl;
class ConversionTab;
class JobSession;
class KruvController;
class Plan;
class QueueRun;
struct Format;

/// A subcommand that drives a tab: takes files in, sets the tab's controls from flags, runs its command and
/// waits.
class TabVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TabVerb)
public:
    TabVerb(CLI::App &parent, const std::string &name, const QString &description);
    ~TabVerb() override;

    int run() override;

protected:
    /// `needsPaths`: whether the command can't do without files.
    void declareCommonFlags(bool needsPaths = true);
    void declareFolderFlag();
    /// The output folder, or beside the sources.
    void declarePlaceFlags();
    void declareDeletionFlags();
    void declareProofFlag();
    /// For commands that make other samples of some sources.
    void declareChangeFlag();
    /// Place and deletion.
    void declareOutputFlags();
    /// What becomes of outputs that are there already, and the names of new ones.
    void declareExistingFlags();
    /// Where outputs go, and what they are called, as those flags and that of the place say.
    void placeOutputs(ConversionTab &tab) const;
    void declareDetachFlag();
    /// After the flags of what exists and of handing over.
    void declareSavePlanFlag();
    void declareDryRunFlag();
    /// For commands that always write into one folder.
    void declareOutputFolder();

    /// --to, where the format has no settings of its own.
    void declareFormatFlag(const QList<const Format *> &formats, const QString &help);
    bool hasFormat() const { return !m_format.empty(); }
    void chooseFormat(ChoiceControl &control) const { choose(control, "--to", m_format); }
    /// Throws UsageError, naming the flag, where the choice has no such id.
    static void choose(ChoiceControl &control, const char *flag, const std::string &id);

    const CommonOptions &options() const { return m_options; }
    bool &overwriteFlag() { return m_options.overwrite; }
    bool &besideSourceFlag() { return m_options.besideSource; }
    bool &fromLossyFlag() { return m_options.fromLossy; }
    std::string &saveFlag() { return m_options.save; }
    /// The file that `flag` names and the engine asks for.
    std::string &sideFileFlag(const char *flag)
    {
        m_options.sideFileFlag = flag;
        return m_options.sideFile;
    }
    std::string &textFlag() { return m_options.text; }
    /// For checks, which nobody waits for: --nice holds unless it is refused.
    void giveWay() { m_options.nice = true; }
    /// The command ends with the status of a failure, whatever its jobs say.
    void setFailed() { m_failed = true; }

    /// Sets controls and runs commands through `queueRun`.
    virtual void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) = 0;

    /// Takes `paths` into the tab and says what it refused. Throws UsageError when nothing is left.
    void takeIn(BaseTab &tab, const QStringList &paths);
    /// The same, and runs its command.
    void runTab(BaseTab &tab, QueueRun &queueRun, const QStringList &paths);

private:
    void declareNameFlags();
    void declareOthersFlag();
    /// The given paths that exist, absolute; says which don't.
    QStringList existingPaths();
    /// Whether there is a window that can be given the jobs; says where not.
    bool mayDetach(JobSession &session) const;
    /// Gives it the run that was recorded. Where it does not take it, the jobs are done here after all.
    void detach(JobSession &session) const;
    void checkOutputFolder();
    /// Tells the plan of a dry run. Returns the exit status.
    int tellPlan(Plan &plan, const CliUserInterface &person) const;
    void checkPlanFile() const;
    void savePlan(const Plan &plan) const;

    CommonOptions m_options;
    std::string m_format;
    bool m_failed = false;
    const CliUserInterface *m_person = nullptr; // while it runs
};

} // namespace kruv
