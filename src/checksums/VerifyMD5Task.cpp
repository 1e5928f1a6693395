// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/VerifyMD5Task.h"

#include "base/PathNames.h"

#include <QFile>

namespace kruv {

VerifyMD5Task::VerifyMD5Task(TaskCompletionSink *queue, const QString &fileName,
                             std::shared_ptr<KruvTaskResults> results)
    : VerifyListTask(queue, fileName, std::move(results),
                     {tr("Verifying MD5 file"), QStringLiteral("MD5"), u"#;"})
{
}

VerifyListTask::Checked VerifyMD5Task::check(const ListText::Line &line, FileProgress &progress)
{
    const auto stored = ListText::md5Entry(line);
    if (!stored) {
        const QString text = shown(line.text.trimmed());
        const QString words = tr("Invalid checksum format");
        return {{text, Outcome::Failed, words}, QStringLiteral("%1 : %2\n").arg(text, words)};
    }
    bool isOther = false;
    const Entry entry = compare(*stored, progress, isOther);
    const QString word = entry.outcome == Outcome::Matched ? QStringLiteral("OK") : QStringLiteral("FAILED");
    // A missing file FAILS like a damaged one; what isn't a file at all is said, since nobody expects it.
    const QString why = isOther ? QStringLiteral(" (%1)").arg(entry.message) : QString();
    return {entry, QStringLiteral("%1 : %2%3\n").arg(entry.name, word, why)};
}

VerifyListTask::Entry VerifyMD5Task::compare(const ListText::Md5Entry &stored, FileProgress &progress,
                                             bool &isOther)
{
    const QString name = shown(PathNames::lastPathComponent(stored.name));
    if (!isPossibleName(stored.name)) {
        return {name, Outcome::Failed, tr("no file can have this name")};
    }
    setTopTextFieldString(tr("Verifying %1").arg(shown(stored.name)));
    const FileHash::Result computed = hash(stored, progress);
    switch (computed.problem) {
    case FileHash::Problem::None:
        return computed.digest == stored.hash ? Entry{name, Outcome::Matched, {}}
                                              : Entry{name, Outcome::Failed, tr("the MD5 differs")};
    case FileHash::Problem::Missing:
        return {name, Outcome::Missing, computed.message};
    case FileHash::Problem::Stopped:
        return {name, Outcome::Unchecked, computed.message};
    case FileHash::Problem::NotAFile:
        isOther = true;
        return {name, Outcome::Failed, notAFile()};
    default:
        return {name, Outcome::Failed, computed.message};
    }
}

FileHash::Result VerifyMD5Task::hash(const ListText::Md5Entry &stored, FileProgress &progress)
{
    const auto hashOf = [&](const QByteArray &path) {
        return FileHash::hashOfFileAtPath(path, FileHash::Algorithm::MD5, [&](double share) {
            progress.set(share);
            return !cancelled();
        });
    };
    FileHash::Result computed = hashOf(QFile::encodeName(ListText::joined(folder(), stored.name)));
    if (computed.problem == FileHash::Problem::Missing && !stored.encodedName.isEmpty()) {
        // The list isn't UTF-8; the files next to it may be called in the list's own encoding too.
        computed = hashOf(QFile::encodeName(folder()) + '/' + stored.encodedName);
    }
    return computed;
}

} // namespace kruv
