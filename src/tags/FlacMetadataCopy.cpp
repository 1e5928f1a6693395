// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FlacMetadataCopy.h"

#include "tags/ReadOnlyFileStream.h"
#include "tags/StreamRead.h"

#include <algorithm>

namespace kruv {

namespace {

std::vector<QByteArray> readBetween(TagLib::IOStream &stream, const std::vector<FlacSpan> &parts)
{
    std::vector<QByteArray> between;
    long end = 0;
    for (const FlacSpan &part : parts) {
        const TagLib::ByteVector bytes = readAt(stream, end, static_cast<unsigned long>(part.offset - end));
        between.emplace_back(bytes.data(), static_cast<qsizetype>(bytes.size()));
        end = part.offset + part.length;
    }
    return between;
}

} // namespace

FlacMetadataCopy::FlacMetadataCopy(const QString &path)
    : m_path(path)
{
    ReadOnlyFileStream stream(path);
    if (stream.isOpen()) {
        m_size = stream.length();
        m_parts = findLastingParts(stream);
        m_between = readBetween(stream, m_parts);
    }
}

std::optional<FileEdit> FlacMetadataCopy::wayBack() const
{
    ReadOnlyFileStream stream(m_path);
    if (!stream.isOpen() || m_parts.empty()) {
        return std::nullopt;
    }
    const std::vector<FlacSpan> parts = findLastingParts(stream);
    if (!std::ranges::equal(parts, m_parts, {}, &FlacSpan::length, &FlacSpan::length)) {
        return std::nullopt;
    }
    FileEdit back{.made = m_size};
    const std::vector<QByteArray> between = readBetween(stream, parts);
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (between[index] != m_between[index]) {
            const auto removed = static_cast<qint64>(between[index].size());
            back.splices.push_back(
                {.offset = parts[index].offset - removed, .removed = removed, .inserted = m_between[index]});
            back.splices.back().setMarks(between[index]);
        }
    }
    return back;
}

} // namespace kruv
