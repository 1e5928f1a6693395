// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <array>
#include <memory>
#include <tiostream.h>

namespace kruv {

/// A file as the tag library reads it. The library looks here and there, a few bytes at a time; this stream
/// reads larger pieces and keeps the last ones, which takes a third of the system calls. One thread at a
/// time.
class ReadOnlyFileStream : public TagLib::IOStream
{
public:
    /// Opens a regular file; anything else (a folder, a pipe, a missing file) is not open.
    explicit ReadOnlyFileStream(const QString &path);
    ~ReadOnlyFileStream() override;
    ReadOnlyFileStream(const ReadOnlyFileStream &) = delete;
    ReadOnlyFileStream &operator=(const ReadOnlyFileStream &) = delete;

    TagLib::FileName name() const override { return m_encodedPath.constData(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    bool readOnly() const override { return true; }
    bool isOpen() const override { return m_descriptor >= 0; }
    void seek(long offset, Position origin) override;
    long tell() const override { return m_position; }
    long length() override { return m_length; }

    // Nothing is ever written.
    void writeBlock(const TagLib::ByteVector &) override {}
    void insert(const TagLib::ByteVector &, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}

private:
    struct Window
    {
        std::unique_ptr<char[]> bytes;
        long start = 0;
        long length = 0;
        bool holds(long from, long count) const { return from >= start && from + count <= start + length; }
    };

    const Window &windowAt(long offset);
    long readAt(long offset, char *bytes, long count) const;

    QByteArray m_encodedPath;
    int m_descriptor = -1;
    long m_length = 0;
    long m_position = 0;
    // One for where the library reads on, one for its looks elsewhere; the last one used is the first.
    std::array<Window, 2> m_windows;
};

} // namespace kruv
