// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/Files.h"

#include <QMap>

#include <vector>

namespace kruv::test {

/// As long as it lives FaultyTool stands in the place of every tool, also behind shntool.
class FaultyTools
{
public:
    explicit FaultyTools(TemporaryFolder &folder);

    static const QStringList faults;

    /// Makes the folder of a new case with a folder "out" in it. `plan`, "TOOL FAULT", holds for every tool
    /// that is given a path in it; empty for a case in which nothing is wrong.
    QString newCase(const QString &plan);
    /// The tools that ran for a case, each once; none where this process does everything.
    static QStringList toolsOf(const QString &caseFolder);
    /// The plans by their cases' folders.
    const QMap<QString, QString> &cases() const { return m_cases; }

private:
    TemporaryFolder &m_folder;
    const QByteArray m_real;
    const QString m_tools;
    const QString m_behind;
    const EnvironmentVariable m_resources;
    const EnvironmentVariable m_realTools;
    const EnvironmentVariable m_behindShntool;
    QMap<QString, QString> m_cases;
};

/// What ffmpeg makes of files, 16 bit; it may not complain. One process decodes them all: its start takes
/// longer than its work.
std::vector<Audio> decodedByFfmpeg(const QStringList &files, TemporaryFolder &folder);

} // namespace kruv::test
