// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/StagedFileStream.h"

#include "tags/EditLog.h"
#include "tags/StreamRead.h"

#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdio>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kruv {

namespace {

/// Owner, access control lists and the desktop's own attributes (ratings, comments). What the file system or
/// the rights of this process don't allow is left out.
void copyAttributes(int from, int to)
{
    struct stat status;
    if (fstat(from, &status) == 0) {
        [[maybe_unused]] const int owned = fchown(to, status.st_uid, status.st_gid);
        fchmod(to, status.st_mode & 07777U);
    }
    const ssize_t namesSize = flistxattr(from, nullptr, 0);
    if (namesSize <= 0) {
        return;
    }
    QByteArray names(namesSize, '\0');
    names.truncate(std::max<ssize_t>(0, flistxattr(from, names.data(), static_cast<std::size_t>(namesSize))));
    for (const QByteArray &name : names.split('\0')) {
        const ssize_t size = name.isEmpty() ? -1 : fgetxattr(from, name.constData(), nullptr, 0);
        if (size < 0) {
            continue;
        }
        QByteArray value(size, '\0');
        if (fgetxattr(from, name.constData(), value.data(), static_cast<std::size_t>(size)) == size) {
            fsetxattr(to, name.constData(), value.constData(), static_cast<std::size_t>(size), 0);
        }
    }
}

} // namespace

StagedFileStream::StagedFileStream(const QString &path)
    : m_file(path)
    , m_encodedPath(QFile::encodeName(path))
{
    if (!QFileInfo(path).isFile() || !m_file.open(QIODevice::ReadOnly)) {
        return;
    }
    m_originalLength = static_cast<long>(m_file.size());
    m_length = m_originalLength;
    if (m_length > 0) {
        m_pieces.push_back({0, m_length, {}});
    }
}

TagLib::ByteVector StagedFileStream::readBlock(unsigned long length)
{
    const long rest = std::max(0L, m_length - m_position);
    const long wanted = length < static_cast<unsigned long>(rest) ? static_cast<long>(length) : rest;
    TagLib::ByteVector block(static_cast<unsigned int>(wanted), '\0');
    long done = 0;
    long pieceStart = 0;
    for (const Piece &piece : m_pieces) {
        const long inPiece = m_position + done - pieceStart;
        pieceStart += piece.length;
        if (done == wanted) {
            break;
        }
        if (inPiece >= piece.length) {
            continue;
        }
        const long count = std::min(wanted - done, piece.length - inPiece);
        if (piece.isNew()) {
            std::copy_n(piece.data.constData() + inPiece, count, block.data() + done);
        } else if (!m_file.seek(piece.sourceOffset + inPiece) ||
                   m_file.read(block.data() + done, count) != count) {
            break;
        }
        done += count;
    }
    block.resize(static_cast<unsigned int>(done));
    m_position += done;
    return block;
}

void StagedFileStream::writeBlock(const TagLib::ByteVector &data)
{
    const long size = static_cast<long>(data.size());
    replace(m_position, std::min(size, std::max(0L, m_length - m_position)), {data.data(), size});
    m_position += size;
}

void StagedFileStream::insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replaced)
{
    replace(static_cast<long>(start), static_cast<long>(replaced),
            {data.data(), static_cast<long>(data.size())});
    m_position = static_cast<long>(start) + static_cast<long>(data.size());
}

void StagedFileStream::removeBlock(unsigned long start, unsigned long length)
{
    replace(static_cast<long>(start), static_cast<long>(length), {});
}

void StagedFileStream::seek(long offset, Position origin)
{
    const long base = origin == Beginning ? 0 : origin == Current ? m_position : m_length;
    m_position = std::max(0L, base + offset);
}

void StagedFileStream::truncate(long length)
{
    if (length < m_length) {
        replace(length, m_length - length, {});
    }
}

/// Index of the piece that begins at `offset`.
std::size_t StagedFileStream::splitAt(long offset)
{
    long start = 0;
    for (std::size_t index = 0; index < m_pieces.size(); ++index) {
        if (start >= offset) {
            return index;
        }
        Piece &piece = m_pieces[index];
        const long head = offset - start;
        if (head < piece.length) {
            Piece tail{piece.sourceOffset + head, piece.length - head, piece.data.mid(head)};
            piece.length = head;
            piece.data.truncate(head);
            m_pieces.insert(m_pieces.begin() + static_cast<std::ptrdiff_t>(index) + 1, std::move(tail));
            return index + 1;
        }
        start += piece.length;
    }
    return m_pieces.size();
}

void StagedFileStream::replace(long start, long length, QByteArray data)
{
    if (start > m_length) { // a write beyond the end leaves zeros between, as in any file
        data.prepend(QByteArray(start - m_length, '\0'));
        start = m_length;
    }
    length = std::min(length, m_length - start);
    const auto first = static_cast<std::ptrdiff_t>(splitAt(start));
    const auto last = static_cast<std::ptrdiff_t>(splitAt(start + length));
    m_pieces.erase(m_pieces.begin() + first, m_pieces.begin() + last);
    m_length += static_cast<long>(data.size()) - length;
    if (!data.isEmpty()) {
        const long size = static_cast<long>(data.size());
        m_pieces.insert(m_pieces.begin() + first, {0, size, std::move(data)});
    }
}

bool StagedFileStream::audioStaysInPlace() const
{
    long start = 0;
    return std::all_of(m_pieces.begin(), m_pieces.end(), [&](const Piece &piece) {
        const bool inPlace = piece.isNew() || piece.sourceOffset == start;
        start += piece.length;
        return inPlace;
    });
}

std::vector<StagedFileStream::Patch> StagedFileStream::patches() const
{
    std::vector<Patch> result;
    long start = 0;
    for (const Piece &piece : m_pieces) {
        const long inside = std::clamp(m_originalLength - start, 0L, piece.length);
        if (piece.isNew() && inside < piece.length) {
            // What lengthens the file comes first: if there is no room for it, nothing has been touched yet.
            result.insert(result.begin(), {start + inside, piece.data.mid(inside)});
        }
        if (piece.isNew() && inside > 0) {
            result.push_back({start, piece.data.left(inside)});
        }
        start += piece.length;
    }
    return result;
}

bool StagedFileStream::commit()
{
    if (!isOpen()) {
        return false;
    }
    return logged([this] { return audioStaysInPlace() ? commitInPlace() : writeNewFile(); });
}

template <typename Write> bool StagedFileStream::logged(const Write &write)
{
    EditLog *log = EditLog::current();
    FileEdit back = log ? wayBack() : FileEdit(); // read while it is still there
    if (log) {
        log->foretell(back);
    }
    const bool written = write();
    if (written && log) {
        log->add(std::move(back));
    }
    return written;
}

/// The edit of the result that gives the original.
FileEdit StagedFileStream::wayBack()
{
    FileEdit back;
    long original = 0; // how far it is covered
    FileEdit::Splice open;
    const auto close = [&](long until) {
        if (open.removed > 0 || until > original) {
            m_file.seek(original);
            open.inserted = m_file.read(until - original);
            back.splices.push_back(open);
        }
    };
    long start = 0;
    for (const Piece &piece : m_pieces) {
        if (piece.isNew()) {
            open.removed += piece.length;
        } else {
            close(piece.sourceOffset);
            original = piece.sourceOffset + piece.length;
            open = {.offset = start + piece.length};
        }
        start += piece.length;
    }
    close(m_originalLength);
    back.made = m_originalLength;
    for (FileEdit::Splice &splice : back.splices) {
        splice.setMarks(read(splice.offset, splice.removed));
    }
    return back;
}

QByteArray StagedFileStream::read(qint64 offset, qint64 size)
{
    const TagLib::ByteVector bytes =
        readAt(*this, static_cast<long>(offset), static_cast<unsigned long>(size));
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

std::unique_ptr<StagedFileStream> StagedFileStream::asBefore(const QString &path,
                                                             std::span<const FileEdit> edits)
{
    for (; !edits.empty(); edits = edits.subspan(1)) {
        auto stream = std::make_unique<StagedFileStream>(path);
        if (stream->isOpen() &&
            std::ranges::all_of(edits, [&](const FileEdit &edit) { return stream->takeBack(edit); })) {
            return stream;
        }
    }
    return nullptr;
}

bool StagedFileStream::takeBack(const FileEdit &edit)
{
    const bool mayBeHalf = edit.isInPlace();
    const qint64 whole = edit.sizeBefore();
    const bool fits = mayBeHalf
                          ? m_length >= std::min(whole, edit.made) && m_length <= std::max(whole, edit.made)
                          : m_length == whole;
    FileEdit back = edit;
    for (FileEdit::Splice &splice : back.splices) {
        if (!fits || !splice.isOn(read(splice.offset, splice.removed), mayBeHalf)) {
            return false;
        }
        if (mayBeHalf) { // the end may be the old one or the new one
            splice.removed =
                std::min<qint64>(std::max(splice.removed, splice.inserted.size()), m_length - splice.offset);
        }
    }
    return fits && apply(back) && m_length == edit.made;
}

bool StagedFileStream::apply(const FileEdit &edit)
{
    const bool fits = std::all_of(edit.splices.begin(), edit.splices.end(), [this](const auto &splice) {
        return splice.offset >= 0 && splice.removed >= 0 && splice.offset + splice.removed <= m_length;
    });
    for (auto splice = edit.splices.rbegin(); fits && splice != edit.splices.rend(); ++splice) {
        replace(static_cast<long>(splice->offset), static_cast<long>(splice->removed), splice->inserted);
    }
    return fits;
}

bool StagedFileStream::commitInPlace()
{
    QFile target(m_file.fileName());
    if (!target.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const auto write = [&](const Patch &patch) {
        return target.seek(patch.offset) && target.write(patch.data) == patch.data.size();
    };
    std::vector<Patch> overwritten;
    bool written = true;
    for (const Patch &patch : patches()) {
        if (patch.offset < m_originalLength) {
            m_file.seek(patch.offset);
            overwritten.push_back({patch.offset, m_file.read(patch.data.size())});
            written = write(patch);
        } else {
            written = write(patch) && fsync(target.handle()) == 0;
        }
        if (!written) {
            break;
        }
    }
    if (written && (m_length >= m_originalLength || target.resize(m_length))) {
        return true;
    }
    std::for_each(overwritten.begin(), overwritten.end(), write);
    target.resize(m_originalLength);
    return false;
}

bool StagedFileStream::commitToNewFile()
{
    return isOpen() && logged([this] { return writeNewFile(); });
}

bool StagedFileStream::writeNewFile()
{
    const QFileInfo original(m_file);
    // A short name of its own: one made from the file's name may be longer than a name can be.
    QTemporaryFile target(QFileInfo(original.canonicalFilePath()).absolutePath() +
                          QStringLiteral("/.kruv-XXXXXX"));
    if (!target.open()) {
        return false;
    }
    const bool copied = std::all_of(m_pieces.begin(), m_pieces.end(),
                                    [&](const Piece &piece) { return copyPiece(piece, target); });
    if (!copied || !target.flush()) {
        return false;
    }
    copyAttributes(m_file.handle(), target.handle());
    if (fsync(target.handle()) != 0 ||
        std::rename(QFile::encodeName(target.fileName()).constData(),
                    QFile::encodeName(original.canonicalFilePath()).constData()) != 0) {
        return false;
    }
    target.setAutoRemove(false);
    return true;
}

bool StagedFileStream::copyPiece(const Piece &piece, QIODevice &target)
{
    if (piece.isNew()) {
        return target.write(piece.data) == piece.length;
    }
    constexpr long blockSize = 1L << 20;
    QByteArray block;
    block.resize(std::min(blockSize, piece.length));
    if (!m_file.seek(piece.sourceOffset)) {
        return false;
    }
    for (long left = piece.length; left > 0;) {
        const qint64 count = m_file.read(block.data(), std::min<qint64>(left, block.size()));
        if (count <= 0 || target.write(block.constData(), count) != count) {
            return false;
        }
        left -= count;
    }
    return true;
}

} // namespace kruv
