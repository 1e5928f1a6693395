// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/CopyTask.h"

#include "base/FileStamp.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>

namespace kruv {

namespace {

constexpr qint64 pieceSize = qint64{1024} * 1024;
constexpr qint64 longestSheet = 16 * pieceSize; // others are copied as they are

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

void open(QFile &file)
{
    if (!file.open(QIODevice::ReadOnly)) {
        refuse(CopyTask::tr("%1 can't be read: %2.").arg(file.fileName(), file.errorString()));
    }
}

/// Until `take` says that it is enough.
template <class Take> void forEachPiece(QIODevice &device, const Take &take)
{
    for (QByteArray piece = device.read(pieceSize); !piece.isEmpty(); piece = device.read(pieceSize)) {
        if (!take(piece)) {
            return;
        }
    }
}

} // namespace

CopyTask::CopyTask(TaskCompletionSink *queue, const Request &request)
    : OutputTask(queue, request.source)
    , m_request(request)
{
    setMayReplace(request.mayReplace);
    setProves(true);
}

JobOutline CopyTask::outline() const
{
    JobOutline outline = OutputTask::outline();
    outline.copies = true;
    outline.existing = m_request.mayBeThere ? JobOutline::Existing::Compared : JobOutline::Existing::Usual;
    return outline;
}

qint64 CopyTask::foreseenBytes() const
{
    return QFileInfo(fileName()).size();
}

void CopyTask::inspectSources()
{
    QFile source(fileName());
    open(source);
}

QByteArray CopyTask::sheet() const
{
    QFile source(fileName());
    open(source);
    const QByteArray text = source.readAll();
    return m_request.newName ? CueFileNames::renamed(text, m_request.newName) : text;
}

void CopyTask::make(StagedOutputs &outputs)
{
    showStatus(tr("Copying…"));
    if (m_request.mayBeThere && FileCommit::isTaken(outputPath())) {
        if (!isCopy(outputPath())) {
            refuse(tr("%1 was there before, and is no copy of %2. It was left as it is; move it away and try "
                      "again.")
                       .arg(outputPath(), fileName()));
        }
        return;
    }
    outputs.allowEmpty();
    write(outputs.add(outputPath()));
}

void CopyTask::write(const QString &path) const
{
    QFile source(fileName());
    open(source);
    QFile copy(path);
    bool isWhole = copy.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    const auto put = [&](const QByteArray &piece) {
        isWhole = isWhole && copy.write(piece) == piece.size();
        return isWhole && mayGoOn();
    };
    if (m_request.newName && source.size() <= longestSheet) {
        put(sheet());
    } else {
        forEachPiece(source, put);
    }
    isWhole = copy.flush() && isWhole;
    if (!isWhole) {
        refuse(tr("%1 could not be written: %2.").arg(outputPath(), copy.errorString()));
    }
}

/// With the time of its last change.
void CopyTask::dress(StagedOutputs &outputs)
{
    const auto stamp = FileStamp::of(fileName());
    if (stamp) {
        const timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
                                   {.tv_sec = stamp->seconds, .tv_nsec = stamp->nanoseconds}};
        // Some file systems have no such times; the copy is whole all the same.
        utimensat(AT_FDCWD, QFile::encodeName(outputs.stagedPath(outputPath())).constData(), times, 0);
    }
}

bool CopyTask::isCopy(const QString &path) const
{
    QFile source(fileName());
    QFile copy(path);
    open(source);
    open(copy);
    if (m_request.newName && source.size() <= longestSheet) {
        return copy.readAll() == sheet();
    }
    bool isSame = source.size() == copy.size();
    forEachPiece(source, [&](const QByteArray &piece) {
        isSame = isSame && copy.read(piece.size()) == piece;
        return isSame && mayGoOn();
    });
    return isSame;
}

ProofNote CopyTask::prove(const StagedOutputs &outputs)
{
    if (!isCopy(outputs.stagedPath(outputPath())) && mayGoOn()) {
        refuse(tr("%1 is not what was written into it: the disk, or what is on the way to it, does not keep "
                  "what it is given.")
                   .arg(outputPath()));
    }
    return {.kind = QStringLiteral("same-bytes")};
}

} // namespace kruv
