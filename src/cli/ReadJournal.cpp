// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ReadJournal.h"

#include "cli/UsageError.h"
#include "journal/JournalFile.h"

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

} // namespace kruv
