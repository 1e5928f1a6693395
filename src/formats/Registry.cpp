// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioError.h"
#include "audio/FileDescriptor.h"
#include "formats/Formats.h"
#include "formats/Records.h"

#include <algorithm>
#include <array>

namespace kruv::Formats {

namespace {

constexpr const Format *formats[] = {
#define FORMAT(name) &name##Format,
#include "formats/Records.def"
#undef FORMAT
};

/// Bytes of an ID3v2 tag that begins with `head`, 10 bytes; 0 where it is none.
/// https://id3.org/id3v2.4.0-structure
std::int64_t id3v2Length(const QByteArray &head)
{
    constexpr qsizetype headLength = 10;
    if (head.size() < headLength || !head.startsWith("ID3")) {
        return 0;
    }
    std::int64_t length = 0;
    for (qsizetype i = 6; i < headLength; ++i) {
        length = length << 7 | (static_cast<unsigned char>(head[i]) & 0x7F);
    }
    return length + headLength;
}

QByteArray bytesFrom(FileDescriptor &file, std::int64_t offset)
{
    constexpr std::size_t enough = 64;
    std::array<std::uint8_t, enough> bytes{};
    file.seek(offset, SEEK_SET);
    const std::int64_t got = file.read(bytes);
    return {reinterpret_cast<const char *>(bytes.data()),
            static_cast<qsizetype>(std::max<std::int64_t>(got, 0))};
}

FileStart startOf(const QString &path)
{
    FileDescriptor file = FileDescriptor::openForReading(path);
    FileStart start{path, bytesFrom(file, 0)};
    if (const std::int64_t tag = id3v2Length(start.bytes); tag > 0) {
        start.bytes = bytesFrom(file, tag);
    }
    return start;
}

template <typename Condition> const Format *first(Condition condition)
{
    const auto *const found =
        std::ranges::find_if(formats, [&condition](const Format *format) { return condition(*format); });
    return found == std::end(formats) ? nullptr : *found;
}

} // namespace

std::span<const Format *const> all()
{
    return formats;
}

const Format *ofType(QStringView type)
{
    return first([type](const Format &format) { return std::ranges::count(format.types, type) > 0; });
}

const Format *withId(QStringView id)
{
    return first([id](const Format &format) { return id == QLatin1StringView(format.id); });
}

const Format *identify(const QString &path)
{
    try {
        const FileStart start = startOf(path);
        return first([&start](const Format &format) { return format.isContent(start); });
    } catch (const AudioError &) {
        return nullptr;
    }
}

QStringList typesFor(bool TakenBy::*list)
{
    QStringList types;
    for (const Format *format : formats) {
        if (format->takenBy.*list) {
            for (const QStringView type : format->types) {
                types.append(type.toString());
            }
        }
    }
    types.removeDuplicates();
    return types;
}

QList<const Format *> made(bool lossy)
{
    QList<const Format *> found;
    for (const Format *format : formats) {
        if (format->recipe && format->isLossy() == lossy) {
            found.append(format);
        }
    }
    return found;
}

QStringList labels(const QList<const Format *> &formats)
{
    QStringList all;
    for (const Format *format : formats) {
        all.append(format->label.toString());
    }
    return all;
}

} // namespace kruv::Formats
