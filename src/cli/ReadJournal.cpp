// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ReadJournal.h"

#include "cli/UsageError.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "tasks/RunRecorder.h"

#include <QCoreApplication>

#include <stdexcept>

namespace kruv {

namespace {

struct JournalText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ReadJournal)
};

} // namespace

void readJournal(const std::function<void(const QString &path)> &read)
{
    const QString path = JournalFile::usualPath();
    if (path.isEmpty()) {
        throw UsageError(
            JournalText::tr("Nothing is recorded, because KRUV_JOURNAL is set to nothing. Unset it, or let "
                            "it name a file."));
    }
    try {
        read(path);
    } catch (const UsageError &) {
        throw;
    } catch (const std::runtime_error &error) {
        throw std::runtime_error(JournalText::tr("The journal %1 can't be read: %2.")
                                     .arg(path, QString::fromUtf8(error.what()))
                                     .toStdString());
    }
}

HistoryRun endedRun(std::int64_t number)
{
    const auto known = History(JournalFile::usualPath()).run(number);
    if (!known) {
        throw UsageError(
            JournalText::tr("there is no run %1; kruv history lists those there are").arg(number));
    }
    if (!RunRecorder::isOver(*known)) {
        throw UsageError(JournalText::tr("run %1 is still going on").arg(number));
    }
    return *known;
}

} // namespace kruv
