// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FileEdit.h"

#include <QDataStream>

#include <numeric>

namespace kruv {

qint64 FileEdit::size() const
{
    return std::accumulate(splices.begin(), splices.end(), qint64{0}, [](qint64 sum, const Splice &splice) {
        return sum + static_cast<qint64>(splice.inserted.size());
    });
}

QByteArray FileEdit::pack(const std::vector<FileEdit> &edits)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << static_cast<quint32>(edits.size());
    for (const FileEdit &edit : edits) {
        stream << static_cast<quint32>(edit.splices.size());
        for (const Splice &splice : edit.splices) {
            stream << splice.offset << splice.removed << splice.inserted;
        }
    }
    return qCompress(bytes);
}

std::optional<std::vector<FileEdit>> FileEdit::unpack(const QByteArray &bytes)
{
    const QByteArray plain = qUncompress(bytes);
    QDataStream stream(plain);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 count = 0;
    stream >> count;
    std::vector<FileEdit> edits;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        quint32 splices = 0;
        stream >> splices;
        FileEdit &edit = edits.emplace_back();
        for (; splices > 0 && stream.status() == QDataStream::Ok; --splices) {
            Splice &splice = edit.splices.emplace_back();
            stream >> splice.offset >> splice.removed >> splice.inserted;
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
