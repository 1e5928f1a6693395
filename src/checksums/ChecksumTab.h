// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/BaseTab.h"
#include "app/Controls.h"

#include <memory>
#include <vector>

namespace kruv {

class KruvTask;
class KruvTaskResults;

/// The checksum tab: tests audio files with their own codec tools, writes a checksum list for the listed
/// files, or verifies the listed checksum lists.
class ChecksumTab : public BaseTab
{
    Q_OBJECT
public:
    /// Rows of commandOptions().
    enum Command { VerifyAudio, CreateList, VerifyLists };

    explicit ChecksumTab(TabHost &host);

    ChoiceControl &commandOptions() { return m_commandOptions; }
    ChoiceControl &createChecksumOptions() { return m_createChecksumOptions; }
    ToggleControl &sourceSaveButton() { return m_sourceSaveButton; }

    void displayRelevantOptions() override;
    void executeCommand() override;

    std::shared_ptr<KruvTask> verifyFlac(const QString &file,
                                         const std::shared_ptr<KruvTaskResults> &results);
    std::shared_ptr<KruvTask> verifyAPE(const QString &file, const std::shared_ptr<KruvTaskResults> &results);
    std::shared_ptr<KruvTask> verifyWavepack(const QString &file,
                                             const std::shared_ptr<KruvTaskResults> &results);
    std::shared_ptr<KruvTask> verifyTTA(const QString &file, const std::shared_ptr<KruvTaskResults> &results);

private:
    using JobMaker = std::shared_ptr<KruvTask> (ChecksumTab::*)(const QString &,
                                                                const std::shared_ptr<KruvTaskResults> &);

    void queueReports(JobMaker (*makerFor)(const QString &file));
    static JobMaker audioVerifier(const QString &file);
    QString tool(const QString &name) const { return pathToCommandLineTools() + u'/' + name; }

    ChoiceControl m_commandOptions;
    ChoiceControl m_createChecksumOptions;
    ToggleControl m_sourceSaveButton;
};

} // namespace kruv
