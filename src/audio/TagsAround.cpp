// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/TagsAround.h"

#include "audio/AudioContent.h"
#include "audio/ContentProbe.h"
#include "audio/FileHead.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

namespace kruv::TagsAround {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagsAround)
};

} // namespace

QString inWords(const QString &file)
{
    constexpr std::int64_t id3v1 = 128;
    constexpr std::int64_t apeFooter = 32;
    const AudioContent content = ContentProbe::of(file);
    if (content.container != AudioContent::Container::Flac) {
        return {};
    }
    FileHead bytes(FileDescriptor::openForReading(file));
    QStringList tags;
    if (content.start > 0) {
        tags << (bytes.has(0, "ID3") ? Text::tr("an ID3v2 tag before its audio")
                                     : Text::tr("an APEv2 tag before its audio"));
    }
    std::int64_t end = bytes.size();
    const bool hasId3v1 = content.end < end && bytes.has(end - id3v1, "TAG");
    end -= hasId3v1 ? id3v1 : 0;
    if (content.end < end) {
        tags << (bytes.has(end - apeFooter, "APETAGEX") ? Text::tr("an APEv2 tag behind its audio")
                                                        : Text::tr("a Lyrics3 tag behind its audio"));
    }
    if (hasId3v1) {
        tags << Text::tr("an ID3v1 tag behind its audio");
    }
    return tags.join(QStringLiteral(", "));
}

bool copyWithout(const QString &file, const QString &copy, const std::function<bool()> &goesOn)
{
    constexpr std::int64_t most = 1 << 20; // bytes at a time
    const AudioContent content = ContentProbe::of(file);
    const FileDescriptor from = FileDescriptor::openForReading(file);
    FileDescriptor to = FileDescriptor::create(copy);
    std::vector<std::uint8_t> buffer(most);
    for (std::int64_t position = content.start; position < content.end;) {
        if (!goesOn()) {
            return false;
        }
        const auto wanted = static_cast<std::size_t>(std::min(most, content.end - position));
        const std::int64_t got = from.readAt(position, std::span(buffer).first(wanted));
        const int result = got > 0    ? to.write(std::span(buffer).first(static_cast<std::size_t>(got)))
                           : got == 0 ? -EIO
                                      : static_cast<int>(got);
        if (result != 0) {
            throw std::system_error(-result, std::generic_category(), file.toStdString());
        }
        position += got;
    }
    return true;
}

} // namespace kruv::TagsAround
