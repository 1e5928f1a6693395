// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SplitPositions.h"

#include "SplitPoints.h"
#include "tags/TrackNameText.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace kruv::SplitPositions {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SplitPositions)
};

bool isPoint(const QString &line)
{
    static const QRegularExpression expression(QStringLiteral("\\A(\\d+|\\d+:[0-5]?\\d(\\.\\d{1,3})?)\\z"));
    return expression.match(line).hasMatch();
}

std::optional<std::vector<std::int64_t>> inFrames(const QByteArray &text, const adapters::PcmLayout &layout)
{
    const std::string plain = adapters::plainSplitPoints(text.toStdString());
    const auto points = adapters::splitPointsInBytes(plain, layout);
    if (!points) {
        return std::nullopt;
    }
    std::vector<std::int64_t> positions;
    std::istringstream lines(*points);
    for (std::int64_t bytes = 0; lines >> bytes;) {
        if (bytes % layout.frameSize != 0) {
            return std::nullopt;
        }
        if (bytes > 0) {
            positions.push_back(bytes / layout.frameSize);
        }
    }
    return positions;
}

} // namespace

bool fit(const std::vector<std::int64_t> &cuts, const QByteArray &text, const AudioStreamFormat &format)
{
    constexpr std::int64_t sector = 588; // frames, of a CD
    const adapters::PcmLayout layout{format.sampleRate, format.channels * format.sampleWidth() / 8};
    const auto wanted = inFrames(text, layout);
    // On a CD the tool rounds milliseconds to sectors.
    const auto isAt = [&layout](std::int64_t cut, std::int64_t point) {
        return cut == point ||
               (layout.isCdLike() && cut % sector == 0 && std::abs(cut - point) <= sector / 2 + 1);
    };
    return !wanted || std::ranges::equal(cuts, *wanted, isAt);
}

QString problemIn(const QString &text)
{
    QStringList lines = TrackNameText::withPlainLineBreaks(text).split(u'\n');
    std::ranges::transform(lines, lines.begin(), [](const QString &line) { return line.trimmed(); });
    if (text.contains(u"INDEX")) {
        const auto files = static_cast<int>(
            std::ranges::count_if(lines, [](const QString &line) { return line.startsWith(u"FILE "); }));
        return files > 1 ? Text::tr("The cue sheet is of %n files, so its points are not those of one file. "
                                    "Join the files and make a new cue sheet, or use one with one FILE line.",
                                    nullptr, files)
                         : QString();
    }
    for (qsizetype number = 0; number < lines.size(); ++number) {
        if (!lines[number].isEmpty() && !isPoint(lines[number])) {
            return Text::tr("Line %1 is no point: \"%2\". A point is a time, as 3:05, 3:05.32 (frames) or "
                            "3:05.320 (milliseconds), or a number of bytes.")
                .arg(QString::number(number + 1), lines[number]);
        }
    }
    return {};
}

} // namespace kruv::SplitPositions
