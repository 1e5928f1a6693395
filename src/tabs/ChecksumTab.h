// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/BaseTab.h"
#include "tabs/Controls.h"

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

    std::shared_ptr<KruvTask> verifyAudio(const QString &file,
                                          const std::shared_ptr<KruvTaskResults> &results);
    /// Null when the person cancels the save dialog. `sourceSave`: next to the files, where all lie in one
    /// folder, without asking.
    std::shared_ptr<KruvTask> createMD5(const QStringList &files, bool sourceSave);
    std::shared_ptr<KruvTask> createST5(const QStringList &files, bool sourceSave);

    static bool areAllSameDirectory(const QStringList &files);

private:
    using JobMaker = std::shared_ptr<KruvTask> (ChecksumTab::*)(const QString &,
                                                                const std::shared_ptr<KruvTaskResults> &);

    void queueReports(JobMaker (*makerFor)(const QString &file));
    static JobMaker audioVerifier(const QString &file);
    static JobMaker listVerifier(const QString &file);
    template <class Job>
    std::shared_ptr<KruvTask> verifyList(const QString &file,
                                         const std::shared_ptr<KruvTaskResults> &results);

    /// Files of the list whose type is one of `types`.
    QStringList filesOfTypes(const QStringList &types);
    /// False when the person cancelled and the files are to stay.
    bool createList();
    bool createFFP(const QStringList &flacFiles);
    std::optional<QString> placeOfList(const QStringList &files, bool sourceSave, const QString &plainName,
                                       const QString &extension);
    /// The list's place beside the first file, unless the person wants to keep one that is there.
    std::optional<QString> placeBeside(const QStringList &files, const QString &plainName,
                                       const QString &extension);

    ChoiceControl m_commandOptions;
    ChoiceControl m_createChecksumOptions;
    ToggleControl m_sourceSaveButton;
};

} // namespace kruv
