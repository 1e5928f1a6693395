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
    if (task.cancelled()) {
        return;
    }
    if (const auto *list = dynamic_cast<const VerifyListTask *>(&task)) {
        for (const VerifyListTask::Entry &entry : list->entries()) {
            count(task.inputPath(), entry);
        }
        if (list->entries().empty()) {
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
    count(QString(), {task.inputPath(), task.error() ? bad : Outcome::Matched,
                      task.error() ? failureMessage(task) : QString()});
}

void VerificationTally::count(const QString &list, const VerifyListTask::Entry &entry)
{
    int &counter = entry.outcome == Outcome::Matched   ? m_matched
                   : entry.outcome == Outcome::Missing ? m_missing
                                                       : m_failed;
    ++counter;
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
    if (m_json) {
        JsonReporter::writeLine({{QStringLiteral("event"), QStringLiteral("verification")},
                                 {QStringLiteral("matched"), m_matched},
                                 {QStringLiteral("failed"), m_failed},
                                 {QStringLiteral("missing"), m_missing}});
        return;
    }
    Console::writeOut(
        QStringLiteral("%1 matched, %2 failed, %3 missing\n").arg(m_matched).arg(m_failed).arg(m_missing));
}

} // namespace kruv
