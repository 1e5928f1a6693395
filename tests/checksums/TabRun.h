// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "support/Files.h"
#include "support/ScriptedUserInterface.h"
#include "tabs/ChecksumTab.h"
#include "tabs/KruvController.h"

namespace kruv::test {

/// The whole program without its window, with a scripted person at its checksum tab.
class TabRun
{
public:
    TabRun();
    ~TabRun();

    /// Puts the files into the tab, chooses the row, presses the button and waits for the jobs. Returns what
    /// the results windows show.
    QString run(ChecksumTab::Command row, const QStringList &files);
    QString verifyLists(const QStringList &lists) { return run(ChecksumTab::VerifyLists, lists); }
    /// Makes a list of a kind next to the files.
    void create(const QString &kind, const QStringList &files);
    void waitForJobs();

    TemporaryFolder folder;
    Preferences preferences;
    ScriptedUserInterface person;
    KruvController controller;
    ChecksumTab &tab;
};

/// What a program prints on both streams; its exit status goes into `status` where given.
QString outputOf(const QString &program, const QStringList &arguments, const QString &folder,
                 int *status = nullptr);

} // namespace kruv::test
