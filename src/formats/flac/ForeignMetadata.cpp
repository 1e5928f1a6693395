// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/ForeignMetadata.h"

#include "audio/FileHead.h"
#include "audio/ForeignChunks.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>

namespace kruv::ForeignMetadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ForeignMetadata)
};

using Bytes = std::vector<std::uint8_t>;

/// What the application blocks hold, in their order.
std::vector<Bytes> blocksOf(FileHead &file)
{
    constexpr unsigned application = 2;
    constexpr std::int64_t headerSize = 4;
    constexpr std::int64_t idSize = 4;
    std::vector<Bytes> blocks;
    bool isLast = !file.has(0, "fLaC");
    for (std::int64_t offset = 4; !isLast && offset < file.size();) {
        const auto type = static_cast<unsigned>(file.bigEndian(offset, 1));
        const auto size = static_cast<std::int64_t>(file.bigEndian(offset + 1, 3));
        offset += headerSize;
        if ((type & 0x7F) == application && size > idSize &&
            (file.has(offset, "riff") || file.has(offset, "aiff"))) {
            const auto content = file.bytes(offset + idSize, static_cast<std::size_t>(size - idSize));
            blocks.emplace_back(content.begin(), content.end());
        }
        isLast = (type & 0x80) != 0;
        offset += size;
    }
    return blocks;
}

} // namespace

void requireAllOf(const QString &source, const QString &flac)
{
    FileHead original(FileDescriptor::openForReading(source));
    FileHead output(FileDescriptor::openForReading(flac));
    const std::vector<Bytes> blocks = blocksOf(output);
    for (const ForeignChunks::Chunk &chunk : ForeignChunks::of(source)) {
        const auto wanted = original.bytes(chunk.offset, static_cast<std::size_t>(chunk.size));
        const bool isKept = std::ranges::any_of(blocks, [&wanted](const Bytes &block) {
            // A padding byte may follow.
            return block.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), block.begin());
        });
        if (!isKept) {
            throw std::runtime_error(Text::tr("The output lacks foreign metadata of %1 that was to be kept.")
                                         .arg(source)
                                         .toStdString());
        }
    }
}

} // namespace kruv::ForeignMetadata
