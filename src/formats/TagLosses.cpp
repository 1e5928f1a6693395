// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagLosses.h"

#include "audio/ForeignChunks.h"
#include "audio/TagsAround.h"
#include "base/InParallel.h"
#include "formats/Format.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "tags/ApePictures.h"
#include "tags/TagAccess.h"
#include "tags/TagsObject.h"

#include <QLoggingCategory>
#include <QSet>

#include <algorithm>
#include <exception>
#include <mutex>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(lossLog, "kruv.formats.losses", QtWarningMsg)

bool hasText(const TagsObject &record)
{
    for (std::size_t index = 0; index < tagFieldCount; ++index) {
        const auto field = static_cast<TagField>(index);
        if (field != TagField::EncoderSettings && !record.text(field).isEmpty()) {
            return true;
        }
    }
    return !record.unparsedDate().isEmpty();
}

bool hasTwoOfAKind(const TagsObject &record)
{
    QSet<PictureType> kinds;
    kinds.insert(apePictureType(record));
    return std::ranges::any_of(record.otherPictures(), [&kinds](const TypedPicture &each) {
        const bool isTaken = kinds.contains(each.type);
        kinds.insert(each.type);
        return isTaken;
    });
}

/// Those that APEv2 alone takes as they are.
bool hasUnreadablePicture(const TagsObject &record)
{
    const auto isUnreadable = [](const AlbumArt &art) { return art.image().isNull(); };
    return (record.picture() && isUnreadable(*record.picture())) ||
           std::ranges::any_of(record.otherPictures(),
                               [&](const TypedPicture &each) { return isUnreadable(*each.art); });
}

bool holdsCustomTags(const TagsObject &record, const TagAccess &target)
{
    const TagsObject::CustomTags tags = record.customTagsDictionary();
    return std::all_of(tags.keyValueBegin(), tags.keyValueEnd(), [&target](const auto &tag) {
        return tag.second.isEmpty() || (target.holdsCustomTag && target.holdsCustomTag(tag.first));
    });
}

TagLosses tagLosses(const QString &file, const Format &format, const TagAccess *target)
{
    // FLAC made of FLAC keeps all that the tool finds.
    if (!format.tags || (target == &TagAccesses::flac && format.tags == target)) {
        return {};
    }
    try {
        return TagLosses::of(*TagCopy::read(format, file), target);
    } catch (const std::exception &failure) {
        qCInfo(lossLog, "%s: %s", qUtf8Printable(file), failure.what());
        return {};
    }
}

bool hasTagsAround(const QString &file)
try {
    return !TagsAround::inWords(file).isEmpty();
} catch (const std::exception &) {
    return false; // its job will tell
}

TagLosses ofFile(const QString &file, const TagLosses::Target &target)
{
    const Format *format = Formats::identify(file);
    if (!format) {
        return {};
    }
    TagLosses losses = tagLosses(file, *format, target.tags);
    using Kept = TagLosses::KeptChunks;
    const bool keeps = target.chunks == Kept::All || (target.chunks == Kept::OfWav && format == &wavFormat);
    losses.chunks = !keeps && !ForeignChunks::of(file).empty();
    losses.around = format == &flacFormat && hasTagsAround(file);
    return losses;
}

} // namespace

TagLosses TagLosses::of(const TagsObject &record, const TagAccess *target)
{
    TagLosses losses;
    if (!target) {
        losses.texts = hasText(record);
        losses.pictures = record.picture() != nullptr;
        losses.customTags = !record.customTagsDictionary().isEmpty() || record.isPartOfFile();
        return losses;
    }
    losses.pictures = target->holdsOnePictureOfAKind ? hasTwoOfAKind(record) : hasUnreadablePicture(record);
    losses.customTags = record.isPartOfFile() || !holdsCustomTags(record, *target);
    return losses;
}

TagLosses::ByFile TagLosses::ofFiles(const QStringList &files, const Target &target,
                                     const std::function<bool()> &stopped)
{
    constexpr int mostThreads = 4;
    ByFile all;
    std::mutex lock;
    inParallel(static_cast<std::size_t>(files.size()), threadsForOneJob(mostThreads), stopped,
               [&](std::size_t index) {
                   const QString &file = files[static_cast<qsizetype>(index)];
                   if (const TagLosses losses = ofFile(file, target); losses.isAny()) {
                       const std::lock_guard guard(lock);
                       all.insert(file, losses);
                   }
               });
    return all;
}

QStringList TagLosses::sentences(const ByFile &losses, const QString &label)
{
    const auto count = [&losses](bool TagLosses::*kind) {
        return static_cast<int>(
            std::ranges::count_if(losses, [kind](const TagLosses &each) { return each.*kind; }));
    };
    QStringList sentences;
    if (const int files = count(&TagLosses::texts); files > 0) {
        sentences << (files == 1 ? tr("One file has tags that %1 files of ours can't keep")
                                 : tr("%n files have tags that %1 files of ours can't keep", nullptr, files))
                         .arg(label);
    }
    if (const int files = count(&TagLosses::pictures); files > 0) {
        sentences << (files == 1
                          ? tr("One file has pictures that %1 files of ours can't keep")
                          : tr("%n files have pictures that %1 files of ours can't keep", nullptr, files))
                         .arg(label);
    }
    if (const int files = count(&TagLosses::customTags); files > 0) {
        sentences << (files == 1 ? tr("One file has tags of other names that %1 files of ours can't keep")
                                 : tr("%n files have tags of other names that %1 files of ours can't keep",
                                      nullptr, files))
                         .arg(label);
    }
    if (const int files = count(&TagLosses::chunks); files > 0) {
        sentences << (files == 1
                          ? tr("One file has chunks beside its audio that %1 files of ours can't keep")
                          : tr("%n files have chunks beside their audio that %1 files of ours can't keep",
                               nullptr, files))
                         .arg(label);
    }
    if (const int files = count(&TagLosses::around); files > 0) {
        sentences
            << (files == 1
                    ? tr("One file has ID3 or APE tags around its FLAC audio, which are not taken over")
                    : tr("%n files have ID3 or APE tags around their FLAC audio, which are not taken over",
                         nullptr, files));
    }
    return sentences;
}

QString TagLosses::loss(const QString &label) const
{
    QStringList kinds;
    if (texts) {
        kinds << tr("tags");
    }
    if (pictures) {
        kinds << tr("pictures");
    }
    if (customTags) {
        kinds << tr("tags of other names");
    }
    if (chunks) {
        kinds << tr("chunks beside the audio");
    }
    if (around) {
        kinds << tr("ID3 or APE tags around the FLAC audio");
    }
    return tr("%1 files can't keep its %2").arg(label, kinds.join(QStringLiteral(", ")));
}

QString TagLosses::reason(const QString &label) const
{
    return tr("%1; --accept-losses agrees to that").arg(loss(label));
}

} // namespace kruv
