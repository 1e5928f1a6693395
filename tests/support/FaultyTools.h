// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Audio.h"
#include "support/Engine.h"
#include "support/EnvironmentVariable.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kruv::test {

/// A job that can delete originals.
struct RiskyJob
{
    QString name;
    /// Makes it with sources of its own in `folder`; its outputs are to go into the folder "out" in there.
    std::function<std::shared_ptr<KruvTask>(KruvTaskQueue &queue, const QString &folder)> make;
};

/// One run of such a job, with a tool that misbehaves.
struct FaultyRun
{
    std::size_t job = 0; // its place in the list
    QString folder;
    std::string description;
    std::shared_ptr<KruvTask> task;

    bool wentWell() const;
    QStringList outputs() const;
};

/// As long as it lives FaultyTool stands in the place of every tool, also behind shntool.
class FaultyTools
{
public:
    explicit FaultyTools(Engine &engine);

    /// Runs each job with nothing wrong, and then with each of the tools that it used misbehaving in each
    /// way; all originals are to be deleted. Where a tool hangs, its job is cancelled. The runs with nothing
    /// wrong are the first, in the order of the jobs. Fails the test where a run doesn't end.
    std::vector<FaultyRun> runAll(const std::vector<RiskyJob> &jobs);

private:
    void start(Engine &engine, const std::vector<RiskyJob> &jobs, std::size_t job, const QString &plan = {});
    void startEach(Engine &engine, const std::vector<RiskyJob> &jobs, const QStringList &faults);
    /// The runs from `first` on.
    void cancelOnceAllHang(std::size_t first);
    bool runToEnd();

    Engine &m_engine;
    Engine m_hanging{1000}; // jobs at once: they do nothing
    const QByteArray m_real;
    const QString m_tools;
    const QString m_behind;
    const EnvironmentVariable m_resources;
    const EnvironmentVariable m_realTools;
    const EnvironmentVariable m_behindShntool;
    std::vector<FaultyRun> m_runs;
};

/// What ffmpeg makes of files, 16 bit; it may not complain. One process decodes them all: its start takes
/// longer than its work.
std::vector<Audio> decodedByFfmpeg(const QStringList &files, TemporaryFolder &folder);

} // namespace kruv::test
