// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/VerifyMD5Task.h"

#include "app/PathNames.h"
#include "checksums/FileHash.h"

#include <QFile>

namespace kruv {

VerifyMD5Task::VerifyMD5Task(TaskCompletionSink *queue, const QString &fileName,
                             std::shared_ptr<KruvTaskResults> results)
    : VerifyListTask(queue, fileName, std::move(results),
                     {QStringLiteral("Verifying MD5 file"), QStringLiteral("MD5"), u"#;"})
{
}

VerifyListTask::Checked VerifyMD5Task::check(const ListText::Line &line, FileProgress &progress)
{
    const auto stored = ListText::md5Entry(line);
    if (!stored) {
        const QString text = shown(line.text.trimmed());
        return {{text, Outcome::Failed, QStringLiteral("Invalid checksum format")},
                QStringLiteral("%1 : Invalid checksum format\n").arg(text)};
    }
    const QString name = shown(PathNames::lastPathComponent(stored->name));
    const auto verdict = [&](Outcome outcome, const QString &message) {
        // A missing file FAILS like a damaged one; what isn't a file at all is said, since nobody expects it.
        const bool special = message == u"not a regular file";
        const QString word = outcome == Outcome::Matched ? QStringLiteral("OK")
                             : special                   ? QStringLiteral("FAILED (not a regular file)")
                                                         : QStringLiteral("FAILED");
        return Checked{{name, outcome, message}, QStringLiteral("%1 : %2\n").arg(name, word)};
    };
    if (!isPossibleName(stored->name)) {
        return verdict(Outcome::Failed, QStringLiteral("no file can have this name"));
    }
    setTopTextFieldString(QStringLiteral("Verifying %1").arg(shown(stored->name)));
    const auto hash = [&](const QByteArray &path) {
        return FileHash::hashOfFileAtPath(path, FileHash::Algorithm::MD5, [&](double share) {
            progress.set(share);
            return !cancelled();
        });
    };
    FileHash::Result computed = hash(QFile::encodeName(ListText::joined(folder(), stored->name)));
    if (computed.problem == FileHash::Problem::Missing && !stored->encodedName.isEmpty()) {
        // The list isn't UTF-8; the files next to it may be called in the list's own encoding too.
        computed = hash(QFile::encodeName(folder()) + '/' + stored->encodedName);
    }
    switch (computed.problem) {
    case FileHash::Problem::None:
        return computed.digest == stored->hash ? verdict(Outcome::Matched, {})
                                               : verdict(Outcome::Failed, QStringLiteral("the MD5 differs"));
    case FileHash::Problem::Missing:
        return verdict(Outcome::Missing, computed.message);
    case FileHash::Problem::Stopped:
        return verdict(Outcome::Unchecked, computed.message);
    default:
        return verdict(Outcome::Failed, computed.message);
    }
}

} // namespace kruv
