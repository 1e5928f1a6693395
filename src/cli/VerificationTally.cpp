// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/VerificationTally.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "tasks/KruvTaskQueue.h"

#include <QFileInfo>
#include <QJsonObject>

namespace kruv {

namespace {

using Outcome = VerifyListTask::Outcome;

QString wordFor(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Matched:
        return QStringLiteral("matched");
    case Outcome::Missing:
        return QStringLiteral("missing");
    case Outcome::Unchecked:
        return QStringLiteral("canceled");
    default:
        return QStringLiteral("failed");
    }
}

} // namespace

VerificationTally::VerificationTally(KruvTaskQueue &queue, bool json)
    : m_json(json)
{
    connect(&queue, &KruvTaskQueue::taskEnded, this, [this](const KruvTask &task) { taskEnded(task); });
}

void VerificationTally::taskEnded(const KruvTask &task)
{
    if (const auto *list = dynamic_cast<const VerifyListTask *>(&task)) {
        for (const VerifyListTask::Entry &entry : list->entries()) {
            count(task.inputPath(), entry);
        }
        if (list->entries().empty() && !task.cancelled()) {
            ++m_unusableLists;
            const QString problem = list->listProblem();
            Console::complain(QStringLiteral("%1 %2").arg(Console::printable(task.inputPath()),
                                                          problem.isEmpty()
                                                              ? QStringLiteral("holds no checksums")
                                                              : QStringLiteral("can't be read: ") + problem));
        }
        return;
    }
    const Outcome bad = QFileInfo::exists(task.inputPath()) ? Outcome::Failed : Outcome::Missing;
    const Outcome good =
        JobReporter::endOf(task) == TaskState::Outcome::Cancelled ? Outcome::Unchecked : Outcome::Matched;
    count(QString(),
          {task.inputPath(), task.error() ? bad : good, task.error() ? failureMessage(task) : QString()});
}

void VerificationTally::count(const QString &list, const VerifyListTask::Entry &entry)
{
    ++m_counts[static_cast<std::size_t>(entry.outcome)];
    if (m_json) {
        JsonReporter::writeLine({{QStringLiteral("event"), QStringLiteral("checked")},
                                 {QStringLiteral("list"), list},
                                 {QStringLiteral("name"), entry.name},
                                 {QStringLiteral("status"), wordFor(entry.outcome)},
                                 {QStringLiteral("message"), entry.message}});
    }
}

void VerificationTally::writeCounts() const
{
    const int unchecked = counted(Outcome::Unchecked);
    if (m_json) {
        JsonReporter::writeLine({{QStringLiteral("event"), QStringLiteral("verification")},
                                 {QStringLiteral("matched"), counted(Outcome::Matched)},
                                 {QStringLiteral("failed"), counted(Outcome::Failed)},
                                 {QStringLiteral("missing"), counted(Outcome::Missing)},
                                 {QStringLiteral("unchecked"), unchecked}});
        return;
    }
    Console::writeOut(
        QStringLiteral("%1 matched, %2 failed, %3 missing%4\n")
            .arg(QString::number(counted(Outcome::Matched)), QString::number(counted(Outcome::Failed)),
                 QString::number(counted(Outcome::Missing)),
                 unchecked > 0 ? QStringLiteral(", %1 not checked").arg(unchecked) : QString()));
}

bool VerificationTally::allMatched() const
{
    return counted(Outcome::Failed) == 0 && counted(Outcome::Missing) == 0 && m_unusableLists == 0;
}

} // namespace kruv
