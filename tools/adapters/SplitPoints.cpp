// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SplitPoints.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace kruv::adapters {

namespace {

using Number = std::uint64_t;

// The digits at the start of `text`, at most `limit`, taken off it.
std::optional<Number> takeNumber(std::string_view &text, std::size_t limit)
{
    const auto digits = text.substr(0, std::min(text.find_first_not_of("0123456789"), text.size()));
    Number value = 0;
    if (digits.empty() || digits.size() > limit) {
        return std::nullopt;
    }
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    text.remove_prefix(digits.size());
    return value;
}

bool take(std::string_view &text, char expected)
{
    if (text.empty() || text.front() != expected) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Position of a time; `perSecond` parts make up its last field.
Number position(Number minutes, Number seconds, Number parts, Number perSecond, const PcmLayout &layout)
{
    const auto frame =
        (minutes * 60 + seconds) * layout.rate + (parts * layout.rate + perSecond / 2) / perSecond;
    return frame * layout.frameSize;
}

constexpr Number cdFrames = 75;
constexpr std::size_t mostDigits = 9;

// "m:ss" with `separator` before the two digits of CD frames or the three of milliseconds; nothing but that.
std::optional<Number> timePosition(std::string_view text, char separator, const PcmLayout &layout)
{
    const auto minutes = takeNumber(text, mostDigits);
    const auto seconds = minutes && take(text, ':') ? takeNumber(text, 2) : std::nullopt;
    if (!seconds || *seconds > 59) {
        return std::nullopt;
    }
    if (text.empty() && separator == '.') {
        return position(*minutes, *seconds, 0, 1, layout);
    }
    if (!take(text, separator)) {
        return std::nullopt;
    }
    const bool milliseconds = text.size() == 3;
    const auto parts = takeNumber(text, 3);
    if (!parts || !text.empty() || (!milliseconds && *parts >= cdFrames)) {
        return std::nullopt;
    }
    return position(*minutes, *seconds, *parts, milliseconds ? 1000 : cdFrames, layout);
}

std::optional<Number> pointPosition(std::string_view text, const PcmLayout &layout)
{
    if (text.find(':') != std::string_view::npos) {
        return timePosition(text, '.', layout);
    }
    const auto bytes = takeNumber(text, 2 * mostDigits);
    return text.empty() ? bytes : std::nullopt;
}

// Offset of the low byte in each unit of UTF-16, or nothing for another encoding.
std::optional<std::size_t> lowByteOfUtf16(std::string_view text)
{
    if (text.starts_with("\xFF\xFE") || (text.size() > 1 && text[0] != 0 && text[1] == 0)) {
        return 0;
    }
    const bool bigEndian = text.starts_with("\xFE\xFF") || (text.size() > 1 && text[0] == 0);
    return bigEndian ? std::optional<std::size_t>(1) : std::nullopt;
}

std::string narrowed(std::string_view text, std::size_t lowByte)
{
    std::string narrow;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        const char low = text[at + lowByte];
        const bool ascii = text[at + 1 - lowByte] == 0 && low > 0;
        const bool mark = at == 0 && (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"));
        narrow += mark ? std::string() : std::string(1, ascii ? low : '?');
    }
    return narrow;
}

// The tool takes a blank line of a list for a point.
std::string withoutBlankLines(const std::string &text)
{
    std::string kept;
    std::string_view rest = text;
    while (!rest.empty()) {
        const auto line = rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1);
        kept += trimmed(line.substr(0, line.find('\n'))).empty() ? std::string_view() : line;
        rest.remove_prefix(line.size());
    }
    return kept;
}

} // namespace

std::string plainSplitPoints(const std::string &text)
{
    const auto lowByte = lowByteOfUtf16(text);
    std::string plain = lowByte ? narrowed(text, *lowByte) : text;
    for (std::size_t at = plain.find('\r'); at != std::string::npos; at = plain.find('\r', at + 1)) {
        if (at + 1 == plain.size() || plain[at + 1] != '\n') {
            plain[at] = '\n';
        }
    }
    return withoutBlankLines(plain);
}

std::optional<std::string> splitPointsInBytes(const std::string &text, const PcmLayout &layout)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    constexpr std::string_view index = "INDEX 01";
    const bool cueSheet = text.find("INDEX") != std::string::npos;
    std::string_view rest = text;
    rest.remove_prefix(rest.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    std::string points;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        const auto line = trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty() || (cueSheet && !line.starts_with(index))) {
            continue;
        }
        const auto at = cueSheet ? timePosition(trimmed(line.substr(index.size())), ':', layout)
                                 : pointPosition(line, layout);
        if (!at) {
            return std::nullopt;
        }
        points += std::to_string(*at) + "\n";
    }
    return points.empty() ? std::nullopt : std::optional(points);
}

} // namespace kruv::adapters
