// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/ToolStep.h"
#include "formats/TranscodeTask.h"
#include "support/Files.h"

#include <QLocale>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QString renewal = u"KRUV_WRITE_DOCS=1 ./test -R FormatTable"_s;

QString row(const QStringList &cells)
{
    return u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
}

QString head(const QStringList &titles)
{
    return u'\n' + row(titles) + u"|---"_s.repeated(titles.size()) + u"|\n"_s;
}

QString extensions(const Format &format)
{
    QStringList all;
    for (const QStringView type : format.types) {
        all.append(u'.' + type.toString().toLower());
    }
    return all.join(u", "_s);
}

QString effect(const Format &format)
{
    switch (format.kind) {
    case FormatKind::Lossless:
        return u"lossless"_s;
    case FormatKind::LosslessWithLossyMode:
        return u"lossless, but for its lossy mode"_s;
    case FormatKind::Lossy:
        return u"lossy"_s;
    case FormatKind::ChangesSignal:
        return u"read as new samples"_s;
    }
    return {};
}

QString readBy(const Format &format)
{
    if (!format.decode) {
        return u"–"_s;
    }
    return format.toWav ? QString::fromLatin1(format.toWav->tool) : u"Kruv"_s;
}

QString madeBy(const Format &format)
{
    if (&format == &wavFormat || &format == &aiffFormat) {
        return u"decoding"_s;
    }
    if (!format.encode) {
        return u"–"_s;
    }
    return format.encoderTool ? QString::fromLatin1(format.encoderTool) : u"Kruv"_s;
}

QString tagsKept(const Format &source, const Format &target)
{
    return !source.tags   ? u"%1 has none"_s.arg(source.label)
           : !target.tags ? u"%1 holds none"_s.arg(target.label)
                          : u"kept"_s;
}

QString number(int value)
{
    return QLocale(QLocale::English).toString(value);
}

/// Bits, channels and rates that two formats both hold; what has no limits of interest holds anything.
QStringList heldByBoth(const Format &source, const Format &target)
{
    const AudioLimits &most = *target.limits;
    const AudioLimits &least = source.limits ? *source.limits : most;
    QStringList bits;
    for (const int depth : most.bits) {
        if (least.bits.empty() || std::ranges::count(least.bits, depth) > 0) {
            bits.append(QString::number(depth));
        }
    }
    return {most.bits.empty() ? u"any"_s : bits.join(u", "_s),
            u"up to "_s + number(std::min(least.mostChannels, most.mostChannels)),
            number(std::max(least.lowestRate, most.lowestRate)) + u" to "_s +
                number(std::min(least.highestRate, most.highestRate))};
}

QString formatTable()
{
    QString text = head({u"Format"_s, u"Files"_s, u"Audio"_s, u"Read by"_s, u"Made by"_s, u"Tags"_s});
    for (const Format *format : Formats::all()) {
        text += row({format->label.toString(), extensions(*format), effect(*format), readBy(*format),
                     madeBy(*format), format->tags ? u"yes"_s : u"no"_s});
    }
    return text;
}

QString pairTable()
{
    QString text = head({u"From"_s, u"To"_s, u"Bits"_s, u"Channels"_s, u"Sample rates, Hz"_s, u"Tags"_s,
                         u"Read by"_s, u"Made by"_s});
    for (const Format *source : Formats::all()) {
        for (const Format *target : Formats::made(false)) {
            if (source->decode && !source->isLossy()) {
                text += row(QStringList{source->label.toString(), target->label.toString()} +
                            heldByBoth(*source, *target) +
                            QStringList{tagsKept(*source, *target), readBy(*source), madeBy(*target)});
            }
        }
    }
    return text;
}

QString lossyTable()
{
    QString text = head({u"To"_s, u"Channels"_s, u"Sample rates, Hz"_s, u"Tags"_s, u"Made by"_s});
    for (const Format *target : Formats::made(true)) {
        text +=
            row(QStringList{target->label.toString()} + heldByBoth(*target, *target).mid(1) +
                QStringList{target->tags ? u"kept, where the source has any"_s : u"none"_s, madeBy(*target)});
    }
    return text;
}

QString lossyAndRead()
{
    QStringList all;
    for (const Format *format : Formats::all()) {
        if (format->isLossy() && format->takenBy.encode) {
            all.append(format->label.toString());
        }
    }
    return all.join(u", "_s);
}

QString document()
{
    return uR"(# What becomes what

A test writes this page from the formats' records, and fails where it says something else. This renews it:
`%1`. "Kruv" stands for what the program does by itself, without a tool.

## Formats

`kruv decode` makes WAV or AIFF of every format that is read. "Read by" names what decodes a file on its way into another
format.
%2
## Lossless to lossless

The samples stay the same. What the target can't hold is refused in one sentence before a tool starts, and nothing is left
behind. An encoder that can read the source by itself does so, and nothing decodes it before.
%3
## To lossy

From every lossless format.
%4
## From lossy

Any lossless format can be made of these, too, but nothing comes back that they lost. So it is asked about first; on the
command line `--from-lossy` says yes. They are: %5.
)"_s.arg(renewal, formatTable(), pairTable(), lossyTable(), lossyAndRead());
}

} // namespace

TEST(FormatTable, IsWhatTheRecordsSay)
{
    const QString path = QStringLiteral(KRUV_DOCS) + u"/formats.md"_s;
    const QByteArray now = document().toUtf8();
    if (qEnvironmentVariableIsSet("KRUV_WRITE_DOCS")) {
        writeFile(path, now);
    }
    EXPECT_EQ(readFile(path).toStdString(), now.toStdString()) << "renew it: " << renewal.toStdString();
}

} // namespace kruv::test
