// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/FaultyTools.h"

#include "support/Wait.h"
#include "tasks/KruvTask.h"

#include <QDir>
#include <QProcess>

#include <csignal>
#include <gtest/gtest.h>
#include <span>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QStringList faults = {u"half"_s,   u"garbage"_s, u"wrong64"_s,  u"flip"_s,    u"empty"_s,
                            u"idle"_s,   u"deletes"_s, u"failed"_s,   u"crashed"_s, u"halfFailed"_s,
                            u"silent"_s, u"flood"_s,   u"keepsPipe"_s};
const QStringList waysToHang = {u"hangs"_s, u"hangsAtEnd"_s, u"deaf"_s};

/// The tools that a run used, each once; none where this process did everything.
QStringList toolsOf(const FaultyRun &run)
{
    QFile log(run.folder + u".log"_s);
    QStringList used;
    if (log.open(QIODevice::ReadOnly)) {
        used = QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts);
        used.removeDuplicates();
    }
    return used;
}

/// The process that hangs, in digits; empty before it does.
QByteArray hangingProcess(const FaultyRun &run)
{
    QFile mark(run.folder + u".hangs"_s);
    return mark.open(QIODevice::ReadOnly) ? mark.readAll().trimmed() : QByteArray();
}

/// Kills what outlived its job, so that a failed test ends.
void expectNoProcessOf(const FaultyRun &run)
{
    const QByteArray process = hangingProcess(run);
    const bool isGone = process.isEmpty() || (run.task->isDone() && endsSoon(process));
    EXPECT_TRUE(isGone) << run.description << " went on after it was cancelled";
    EXPECT_TRUE(process.isEmpty() || run.task->cancelled()) << run.description;
    if (!isGone) {
        kill(process.toInt(), SIGKILL);
    }
}

} // namespace

bool FaultyRun::wentWell() const
{
    return !task->error() && !task->cancelled();
}

QStringList FaultyRun::outputs() const
{
    const QDir out(folder + u"/out"_s);
    QStringList paths;
    for (const QString &name : out.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        paths.append(out.filePath(name));
    }
    return paths;
}

FaultyTools::FaultyTools(Engine &engine)
    : m_engine(engine)
    , m_real(qgetenv("KRUV_RESOURCES"))
    , m_tools(engine.folder.makeFolder(u"tools"_s))
    , m_behind(engine.folder.makeFolder(u"behind"_s))
    , m_resources("KRUV_RESOURCES", m_tools.toUtf8())
    , m_realTools("KRUV_REAL", m_real)
    , m_behindShntool("KRUV_BEHIND", m_behind.toUtf8())
{
    const QString program = QStringLiteral(KRUV_FAULTY_TOOL);
    for (const QString &name : QDir(QString::fromLocal8Bit(m_real)).entryList(QDir::Files)) {
        QFile::link(program, m_tools + u'/' + name);
        if (name != u"shntool") {
            QFile::link(program, m_behind + u'/' + name);
        }
    }
}

std::vector<FaultyRun> FaultyTools::runAll(const std::vector<RiskyJob> &jobs)
{
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        start(m_engine, jobs, job);
    }
    EXPECT_TRUE(runToEnd());
    startEach(m_hanging, jobs, waysToHang);
    cancelOnceAllHang(jobs.size());
    startEach(m_engine, jobs, faults); // while patience with the deaf ones runs out
    EXPECT_TRUE(runToEnd());
    for (const FaultyRun &run : std::span(m_runs).subspan(jobs.size())) {
        expectNoProcessOf(run);
    }
    testing::Test::RecordProperty("runs", static_cast<int>(m_runs.size()));
    return std::move(m_runs);
}

void FaultyTools::start(Engine &engine, const std::vector<RiskyJob> &jobs, std::size_t job,
                        const QString &plan)
{
    const QString name = u"case-%1"_s.arg(m_runs.size());
    QString folder = m_engine.folder.makeFolder(name);
    m_engine.folder.makeFolder(name + u"/out"_s);
    m_engine.folder.write(name + u".fault"_s, plan.toUtf8());
    const RiskyJob &risky = jobs[job];
    const std::shared_ptr<KruvTask> task = risky.make(engine.queue, folder);
    task->setDeleteOriginal(true);
    m_runs.push_back({job, folder, u"%1: %2"_s.arg(risky.name, plan).toStdString(), task});
    engine.queue.addTask(task);
}

void FaultyTools::startEach(Engine &engine, const std::vector<RiskyJob> &jobs,
                            const QStringList &faultsOfEach)
{
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        for (const QString &tool : toolsOf(m_runs[job])) {
            for (const QString &fault : faultsOfEach) {
                start(engine, jobs, job, tool + u' ' + fault);
            }
        }
    }
}

void FaultyTools::cancelOnceAllHang(std::size_t first)
{
    for (const FaultyRun &run : std::span(m_runs).subspan(first)) {
        EXPECT_TRUE(waitUntil([&run] { return run.task->isDone() || !hangingProcess(run).isEmpty(); }));
        EXPECT_FALSE(run.task->isDone()) << run.description << " was not waited for";
    }
    m_hanging.queue.cancelAllTasks();
}

/// A single run may not take a minute; all of them may.
bool FaultyTools::runToEnd()
{
    const auto left = [this] { return m_engine.queue.taskCount() + m_hanging.queue.taskCount(); };
    for (int before = left(); before > 0; before = left()) {
        if (!waitUntil([&] { return left() < before; })) {
            return false;
        }
    }
    return m_engine.runToEnd() && m_hanging.runToEnd();
}

std::vector<Audio> decodedByFfmpeg(const QStringList &files, TemporaryFolder &folder)
{
    QStringList arguments{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
    for (const QString &file : files) {
        arguments << u"-i"_s << file;
    }
    const QString decoded = folder.makeFolder(u"decoded"_s);
    for (qsizetype i = 0; i < files.size(); ++i) {
        arguments << u"-map"_s << u"%1:a"_s.arg(i) << u"-c:a"_s << u"pcm_s16le"_s << u"-f"_s << u"wav"_s
                  << u"%1/%2"_s.arg(decoded).arg(i);
    }
    QProcess process;
    process.start(u"ffmpeg"_s, arguments);
    EXPECT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    std::vector<Audio> all;
    for (qsizetype i = 0; i < files.size(); ++i) {
        all.push_back(readWav(u"%1/%2"_s.arg(decoded).arg(i)));
    }
    return all;
}

} // namespace kruv::test
