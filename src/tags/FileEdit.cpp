// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FileEdit.h"

#include <QCryptographicHash>
#include <QDataStream>

#include <algorithm>
#include <numeric>
#include <utility>

namespace kruv {

namespace {

constexpr quint32 packedForm = 2; // those before had no marks
constexpr qsizetype markSize = 8;

/// What a write that a kill ends in its middle has written, or not: pages. What lengthens a file is written
/// by itself, so a block ends where the file ended.
std::vector<QByteArrayView> blocksOf(const FileEdit::Splice &splice, QByteArrayView bytes)
{
    constexpr qint64 pageSize = 4096;
    const qint64 oldEnd = splice.offset + splice.inserted.size();
    std::vector<QByteArrayView> blocks;
    for (qint64 start = splice.offset, end = 0; start < splice.offset + splice.removed; start = end) {
        end = std::min((start / pageSize + 1) * pageSize, splice.offset + splice.removed);
        end = start < oldEnd ? std::min(end, oldEnd) : end;
        const qint64 from = std::min<qint64>(start - splice.offset, bytes.size());
        blocks.push_back(bytes.sliced(from, std::min(end - start, bytes.size() - from)));
    }
    return blocks;
}

QByteArray markOf(QByteArrayView block)
{
    return QCryptographicHash::hash(block.toByteArray(), QCryptographicHash::Md5).first(markSize);
}

} // namespace

void FileEdit::Splice::setMarks(const QByteArray &goes)
{
    marks.clear();
    for (const QByteArrayView block : blocksOf(*this, goes)) {
        marks += markOf(block);
    }
}

bool FileEdit::Splice::isOn(const QByteArray &there, bool orInserted) const
{
    const auto blocks = blocksOf(*this, there);
    if (marks.size() != static_cast<qsizetype>(blocks.size()) * markSize) {
        return false;
    }
    qsizetype place = 0;
    qsizetype from = 0;
    return std::ranges::all_of(blocks, [&](QByteArrayView block) {
        const QByteArrayView mark =
            QByteArrayView(marks).sliced(std::exchange(place, place + markSize), markSize);
        const auto old = QByteArrayView(inserted).sliced(std::min(from, inserted.size()));
        from += block.size();
        return markOf(block) == mark || (orInserted && old.startsWith(block));
    });
}

qint64 FileEdit::size() const
{
    return std::accumulate(splices.begin(), splices.end(), qint64{0}, [](qint64 sum, const Splice &splice) {
        return sum + static_cast<qint64>(splice.inserted.size());
    });
}

qint64 FileEdit::sizeBefore() const
{
    return std::accumulate(splices.begin(), splices.end(), made, [](qint64 sum, const Splice &splice) {
        return sum + splice.removed - splice.inserted.size();
    });
}

bool FileEdit::isInPlace() const
{
    return std::ranges::all_of(splices, [this](const Splice &splice) {
        const qint64 end = splice.offset + splice.inserted.size(); // in both files, where all before is so
        return splice.removed == splice.inserted.size() || (&splice == &splices.back() && end == made);
    });
}

QByteArray FileEdit::pack(const std::vector<FileEdit> &edits)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << packedForm << static_cast<quint32>(edits.size());
    for (const FileEdit &edit : edits) {
        stream << edit.made << static_cast<quint32>(edit.splices.size());
        for (const Splice &splice : edit.splices) {
            stream << splice.offset << splice.removed << splice.inserted << splice.marks;
        }
    }
    return qCompress(bytes);
}

std::optional<std::vector<FileEdit>> FileEdit::unpack(const QByteArray &bytes)
{
    const QByteArray plain = qUncompress(bytes);
    QDataStream stream(plain);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 form = 0;
    quint32 count = 0;
    stream >> form >> count;
    if (form != packedForm) {
        return std::nullopt;
    }
    std::vector<FileEdit> edits;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        quint32 splices = 0;
        FileEdit &edit = edits.emplace_back();
        stream >> edit.made >> splices;
        for (; splices > 0 && stream.status() == QDataStream::Ok; --splices) {
            Splice &splice = edit.splices.emplace_back();
            stream >> splice.offset >> splice.removed >> splice.inserted >> splice.marks;
        }
    }
    return stream.status() == QDataStream::Ok && !edits.empty() ? std::optional(edits) : std::nullopt;
}

QByteArray FileEdit::bundle(const QList<QByteArray> &packed)
{
    if (packed.size() <= 1) {
        return packed.value(0);
    }
    if (packed.count(QByteArray()) == packed.size()) {
        return {};
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << packed;
    return bytes;
}

QList<QByteArray> FileEdit::unbundle(const QByteArray &bytes, qsizetype files)
{
    if (files == 1) {
        return {bytes};
    }
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    QList<QByteArray> packed;
    stream >> packed;
    return stream.status() == QDataStream::Ok && packed.size() == files ? packed : QList<QByteArray>();
}

} // namespace kruv
