// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanResultsFile.h"

#include "base/FileStamp.h"
#include "formats/FailureAdvice.h"
#include "tabs/PlanResults.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>

#include <stdexcept>

namespace kruv {

namespace {

/// Of hosts with one name, or with one process number, each finds a name of its own.
bool openNew(QFile &file, const PlanResultsFile::Run &run)
{
    constexpr int tries = 1000;
    const QString shard = run.shard.isEmpty() ? QStringLiteral("all") : run.shard;
    const QString name = QStringLiteral("%1.%2.%3")
                             .arg(QString(shard).replace(u'/', QStringLiteral("-of-")),
                                  QSysInfo::machineHostName().replace(u'/', u'_'),
                                  QString::number(QCoreApplication::applicationPid()));
    for (int number = 1; number <= tries; ++number) {
        file.setFileName(QDir(run.folder).filePath(QStringLiteral("%1.%2.jsonl").arg(name).arg(number)));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            return true;
        }
        if (!file.exists()) {
            return false;
        }
    }
    return false;
}

QString statusOf(const KruvTask &job)
{
    switch (job.state().whatWasDone()) {
    case TaskState::Outcome::Complete:
        return QStringLiteral("done");
    case TaskState::Outcome::Failed:
        return QStringLiteral("failed");
    case TaskState::Outcome::Cancelled:
        break;
    }
    return QStringLiteral("canceled");
}

/// As its job left it; one that was found there, as it is.
std::optional<FileStamp> stampOf(const KruvTask &job)
{
    const auto receipt = job.receipt();
    if (receipt && !receipt->outputs.empty()) {
        return receipt->outputs.front().stamp;
    }
    return job.state().whatWasDone() == TaskState::Outcome::Complete ? FileStamp::of(job.outputPath())
                                                                     : std::nullopt;
}

} // namespace

PlanResultsFile::PlanResultsFile(const Run &run, KruvTaskQueue &queue)
{
    const bool isOpen = QDir().mkpath(run.folder) && openNew(m_file, run);
    if (isOpen) {
        writeLine({{PlanResults::planKey(), run.plan},
                   {PlanResults::shardKey(), run.shard},
                   {QStringLiteral("host"), QSysInfo::machineHostName()},
                   {QStringLiteral("process"), QCoreApplication::applicationPid()},
                   {QStringLiteral("begun"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)}});
    }
    if (!isOpen || m_hasFailed) {
        const QString reason =
            m_file.fileName().isEmpty() ? tr("the folder can't be made") : m_file.errorString();
        if (isOpen) {
            m_file.remove();
        }
        throw std::runtime_error(
            tr("Results can't be written into %1: %2. --results DIR names another folder.")
                .arg(run.folder, reason)
                .toStdString());
    }
    connect(&queue, &KruvTaskQueue::taskStarted, this, &PlanResultsFile::started);
    connect(&queue, &KruvTaskQueue::taskEnded, this, &PlanResultsFile::ended);
}

void PlanResultsFile::follow(const KruvTask &job, std::size_t entry)
{
    m_jobs[&job].entry = entry;
}

void PlanResultsFile::addFailure(std::size_t entry, const QString &source, const QString &reason)
{
    writeLine({{QStringLiteral("entry"), static_cast<qint64>(entry)},
               {QStringLiteral("status"), QStringLiteral("failed")},
               {QStringLiteral("source"), source},
               {QStringLiteral("reason"), reason}});
}

void PlanResultsFile::addLists()
{
    writeLine({{QStringLiteral("status"), QStringLiteral("done")}});
}

void PlanResultsFile::started(const KruvTask &job)
{
    if (const auto found = m_jobs.find(&job); found != m_jobs.end()) {
        found->second.clock.start();
    }
}

void PlanResultsFile::ended(const KruvTask &job)
{
    const auto found = m_jobs.find(&job);
    if (found == m_jobs.end()) {
        return;
    }
    QJsonObject line{{QStringLiteral("entry"), static_cast<qint64>(found->second.entry)},
                     {QStringLiteral("status"), statusOf(job)},
                     {QStringLiteral("source"), job.inputPath()},
                     {QStringLiteral("output"), job.outputPath()},
                     {QStringLiteral("seconds"), found->second.clock.seconds()},
                     {QStringLiteral("ended"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)}};
    m_jobs.erase(found);
    if (const auto stamp = stampOf(job)) {
        PlanResults::addStamp(line, *stamp);
    }
    if (const ProofNote proof = job.proof(); proof.holds()) {
        line.insert(QStringLiteral("proof"), proof.kind);
        line.insert(QStringLiteral("digest"), proof.digest);
    }
    if (job.error()) {
        line.insert(QStringLiteral("reason"), FailureAdvice::essence(job.results()->results(job)));
    }
    writeLine(line);
}

void PlanResultsFile::writeLine(const QJsonObject &object)
{
    const QByteArray line = QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
    if ((m_file.write(line) != line.size() || !m_file.flush()) && !m_hasFailed) {
        m_hasFailed = true;
        Q_EMIT failed(tr("%1 could not be written (%2): what it lacks will be looked at again.")
                          .arg(m_file.fileName(), m_file.errorString()));
    }
}

} // namespace kruv
