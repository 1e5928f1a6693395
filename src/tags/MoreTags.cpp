// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/MoreTags.h"

#include "tags/ApePictures.h"
#include "tags/TagText.h"

#include <algorithm>
#include <array>
#include <commentsframe.h>
#include <string_view>

namespace kruv::MoreTags {

namespace {

/// What a record carries, and what is about the file: its encoder, its length, where its tags lie.
constexpr std::array<std::string_view, 23> ownFrames{
    "TIT2", "TPE1", "TPE2", "TALB", "TCON", "TCOM", "TRCK", "TPOS", "TDRC", "TYER", "TDAT", "TIME",
    "APIC", "TSSE", "TENC", "TLEN", "TFLT", "TDTG", "TDEN", "TSIZ", "TDLY", "SEEK", "ASPI"};
constexpr std::array<std::string_view, 14> ownItems{"\251nam", "\251ART", "aART",    "\251alb", "\251cmt",
                                                    "\251gen", "\251wrt", "\251day", "gnre",    "trkn",
                                                    "disk",    "covr",    "\251too", "pgap"};

template <typename Names> bool has(const Names &names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

/// How loud a track is, how its encoder padded it, which disc it was made of. In MPEG-4 the name comes last,
/// after who thought of it.
bool isPlayersOwn(const TagLib::String &name)
{
    const QString last = fromTagLibString(name).section(u':', -1);
    return last.startsWith(u"iTun") || last == u"Encoding Params";
}

bool isOwn(const TagLib::ID3v2::Frame &frame)
{
    if (const auto *comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame *>(&frame)) {
        return comment->description().isEmpty() || isPlayersOwn(comment->description());
    }
    const TagLib::ByteVector id = frame.frameID();
    return has(ownFrames, std::string_view(id.data(), id.size()));
}

/// Media shops and players put in numbers that say nothing: "no compilation", "0 beats a minute".
bool saysNothing(const std::string &name, const TagLib::MP4::Item &item)
{
    if (name == "cpil" || name == "hdvd" || name == "shwm") {
        return !item.toBool();
    }
    if (name == "tmpo") {
        return item.toInt() == 0;
    }
    return item.toStringList().toString("").isEmpty();
}

} // namespace

bool isIn(const TagLib::ID3v2::Tag &tag)
{
    const TagLib::ID3v2::FrameList &frames = tag.frameList();
    return std::any_of(frames.begin(), frames.end(),
                       [](const TagLib::ID3v2::Frame *frame) { return !isOwn(*frame); });
}

bool isIn(const TagLib::MP4::Tag &tag)
{
    const auto &items = tag.itemMap();
    return std::any_of(items.begin(), items.end(), [](const auto &item) {
        const std::string name = item.first.to8Bit();
        return !has(ownItems, name) && !isPlayersOwn(item.first) && !saysNothing(name, item.second);
    });
}

bool isIn(const TagLib::APE::Tag &tag)
{
    const auto &items = tag.itemListMap();
    return std::any_of(items.begin(), items.end(), [](const auto &item) {
        return item.second.type() != TagLib::APE::Item::Text &&
               !isApePictureName(fromTagLibString(item.first));
    });
}

/// The comment has two keys, of which one is read.
bool isIn(const TagLib::Ogg::XiphComment &comment)
{
    const auto &fields = comment.fieldListMap();
    return fields.contains("COMMENT") && fields.contains("DESCRIPTION") &&
           fields["COMMENT"] != fields["DESCRIPTION"];
}

} // namespace kruv::MoreTags
