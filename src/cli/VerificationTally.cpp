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
            const QString path = Console::printable(task.inputPath());
            const QString problem = list->listProblem();
            Console::complain(problem.isEmpty() ? tr("%1 holds no checksums").arg(path)
                                                : tr("%1 can't be read: %2").arg(path, problem));
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
    QStringList parts{tr("%n matched", nullptr, counted(Outcome::Matched)),
                      tr("%n failed", nullptr, counted(Outcome::Failed)),
                      tr("%n missing", nullptr, counted(Outcome::Missing))};
    if (unchecked > 0) {
        parts << tr("%n not checked", nullptr, unchecked);
    }
    Console::writeOut(parts.join(QStringLiteral(", ")) + u'\n');
}

bool VerificationTally::allMatched() const
{
    return counted(Outcome::Failed) == 0 && counted(Outcome::Missing) == 0 && m_unusableLists == 0;
}

} // namespace kruv
