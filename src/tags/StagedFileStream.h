// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/FileEdit.h"

#include <QByteArray>
#include <QFile>

#include <memory>
#include <span>
#include <tiostream.h>
#include <vector>

namespace kruv {

/// A file as the tag library edits it, with every edit held in memory until commit(). The library writes a
/// file in place and neither notices nor reports a disk that runs full while it moves the audio; through this
/// stream the file stays as it was until the whole result is known, and a failure leaves it whole.
///
/// Edits are pieces of new bytes between ranges of the original, so memory use is that of the tags alone.
/// One thread at a time.
class StagedFileStream : public TagLib::IOStream
{
public:
    /// Opens a regular file for reading; anything else (a folder, a pipe, a missing file) is not open.
    explicit StagedFileStream(const QString &path);

    /// The file with edits taken back that a log took down, the last one first; to be committed. A kill may
    /// have come in the middle of one of them, or before it. Null where the file is not as they leave it:
    /// that tells its size and the bytes that they wrote, not its date.
    static std::unique_ptr<StagedFileStream> asBefore(const QString &path, std::span<const FileEdit> edits);

    /// Brings the edits into the file. Where the audio keeps its place, only the changed bytes are written;
    /// else a new file is made beside the old one and takes its place, with its access rights, owner and
    /// extended attributes. A symbolic link stays one. False when nothing could be written: the file is then
    /// as it was.
    bool commit();

    /// Always makes a new file, so that one who is interrupted at any moment has the old file or the new one.
    bool commitToNewFile();

    TagLib::FileName name() const override { return m_encodedPath.constData(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector &data) override;
    void insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replace) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return false; }
    bool isOpen() const override { return m_file.isOpen(); }
    void seek(long offset, Position origin) override;
    long tell() const override { return m_position; }
    long length() override { return m_length; }
    void truncate(long length) override;

private:
    /// A range of the original (data empty) or new bytes.
    struct Piece
    {
        long sourceOffset = 0;
        long length = 0;
        QByteArray data;
        bool isNew() const { return !data.isEmpty(); }
    };
    struct Patch
    {
        long offset = 0;
        QByteArray data;
    };

    std::size_t splitAt(long offset);
    void replace(long start, long length, QByteArray data);
    bool audioStaysInPlace() const;
    bool commitInPlace();
    bool writeNewFile();
    FileEdit wayBack();
    bool takeBack(const FileEdit &edit);
    bool apply(const FileEdit &edit);
    QByteArray read(qint64 offset, qint64 size);
    template <typename Write> bool logged(const Write &write);
    bool copyPiece(const Piece &piece, QIODevice &target);
    std::vector<Patch> patches() const;

    QFile m_file;
    QByteArray m_encodedPath;
    std::vector<Piece> m_pieces;
    long m_length = 0;
    long m_position = 0;
    long m_originalLength = 0;
};

} // namespace kruv
