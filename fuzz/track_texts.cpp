// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Readers of what people write about tracks. The first byte picks the reader: (p)attern of a listing, (c)ue
// sheet of a split, (n)ames of tracks, (l)engths as the tool prints them, (s)plit points.
#include "SplitPoints.h"
#include "base/TextEncoding.h"
#include "shntool/SHNToolLenReport.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"
#include "shntool/SplitTitles.h"
#include "tags/TrackNameText.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace kruv;

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void readPattern(const QString &text)
{
    const SHNtoolOutputNamingFormatParser parser(text);
    require(parser.getFormattedLineWithName(text, text, text).endsWith(u'\n'));
    require(parser.getFormattedTotalLine(text).endsWith(u'\n'));
}

void readCueSheet(const QString &text)
{
    const auto map = SplitTitles::trackTitleMap(text, QStringLiteral("flac"));
    for (const QString &name : map) {
        require(!name.contains(u'/') && !name.contains(QChar(0)) && name.toUtf8().size() <= 255);
        require(name.front().isDigit() && name.endsWith(QStringLiteral(".flac")));
    }
}

void readNames(const QString &text)
{
    for (const QString &name : TrackNameText::namesInTrackList(text)) {
        require(!name.contains(u'\n'));
    }
    const QString plain = TrackNameText::withPlainLineBreaks(text);
    const QString cut =
        TrackNameText::trimmed(plain, {.number = 3, .position = static_cast<int>(text.size() % 2)});
    require(cut.count(u'\n') == plain.count(u'\n') && cut.size() <= plain.size());
}

void readLengths(const QString &text)
{
    const SHNToolLenReport report(text);
    const SHNtoolOutputNamingFormatParser parser(QStringLiteral("%number. %name %time"));
    report.normal();
    report.byFileSet({QStringLiteral("1"), {}, {QStringLiteral("one")}, 3}, parser);
}

void readSplitPoints(const std::string &text)
{
    const std::string plain = adapters::plainSplitPoints(text);
    require(plain.find("\n\n") == std::string::npos && !plain.starts_with('\n'));
    for (std::size_t at = plain.find('\r'); at != std::string::npos; at = plain.find('\r', at + 1)) {
        require(at + 1 < plain.size() && plain[at + 1] == '\n');
    }
    adapters::splitPointsInBytes(plain, {48000, 6});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    const QString text = TextEncoding::text(bytes);
    switch (data[0]) {
    case 'p':
        readPattern(text);
        break;
    case 'c':
        readCueSheet(text);
        break;
    case 'n':
        readNames(text);
        break;
    case 'l':
        readLengths(text);
        break;
    case 's':
        readSplitPoints(bytes.toStdString());
        break;
    default:
        break;
    }
    return 0;
}
