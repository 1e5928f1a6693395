// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/SourceCheck.h"

#include "audio/AudioContent.h"
#include "audio/AudioFiles.h"
#include "audio/ContentProbe.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/TagsAround.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <memory>
#include <stdexcept>
#include <vector>

namespace kruv::SourceCheck {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SourceCheck)
};

std::vector<std::uint8_t> bufferFor(const ExtAudioFileReader &reader)
{
    constexpr std::size_t frames = 16384;
    return std::vector<std::uint8_t>(frames * reader.clientFormat().bytesPerFrame);
}

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

/// Nothing where it can't be opened: what is wrong with it is told by who decodes it.
std::unique_ptr<ExtAudioFileReader> tryToOpen(const QString &file)
try {
    return AudioFiles::open(file);
} catch (const std::exception &) {
    return nullptr;
}

bool isEmpty(ExtAudioFileReader &reader)
try {
    auto buffer = bufferFor(reader);
    return reader.lengthInFrames() == 0 && reader.read(buffer) == 0;
} catch (const std::exception &) {
    return false;
}

/// False where `goesOn` ended it.
bool decode(const QString &file, const std::function<bool()> &goesOn)
{
    const auto reader = AudioFiles::open(file);
    auto buffer = bufferFor(*reader);
    while (goesOn()) {
        if (reader->read(buffer) < buffer.size()) {
            return true;
        }
    }
    return false;
}

bool isReadableAudio(const QString &file)
try {
    return QFileInfo(file).isReadable() && ContentProbe::of(file).isKnown();
} catch (const std::exception &) {
    return false;
}

QString tagsRemark(const QString &file, const QString &tags)
{
    return Text::tr("%1 has %2, which FLAC does not provide for; nothing is taken over from there.")
        .arg(file, tags);
}

} // namespace

QStringList inspect(const QStringList &files)
{
    QStringList remarks;
    for (const QString &file : files) {
        const auto reader = tryToOpen(file);
        if (reader && reader->length() == ExtAudioFileReader::Length::TooMuch) {
            refuse(Text::tr("%1 is damaged: it has less audio than its header states.").arg(file));
        }
        if (reader && isEmpty(*reader)) {
            refuse(Text::tr("%1 holds no audio.").arg(file));
        }
        if (reader && reader->length() == ExtAudioFileReader::Length::LeftOpen) {
            remarks.append(
                Text::tr(
                    "The header of %1 does not tell how long its audio is; it was read to the file's end.")
                    .arg(file));
        }
        if (const QString tags = reader ? TagsAround::inWords(file) : QString(); !tags.isEmpty()) {
            remarks.append(tagsRemark(file, tags));
        }
    }
    return remarks;
}

QString remarkOnSound(const QString &file, const std::function<bool()> &goesOn)
try {
    const QString tags = TagsAround::inWords(file);
    return !tags.isEmpty() && decode(file, goesOn) ? tagsRemark(file, tags) : QString();
} catch (const std::exception &) {
    return {};
}

bool tellsLength(const QString &file)
{
    const auto reader = tryToOpen(file);
    return !reader || reader->length() == ExtAudioFileReader::Length::Told;
}

QString complaint(const QStringList &files, const std::function<bool()> &goesOn)
{
    for (const QString &file : files) {
        try {
            if (isReadableAudio(file) && !decode(file, goesOn)) {
                return {};
            }
        } catch (const std::exception &failure) {
            // The last line of an error says why.
            QString why = QString::fromUtf8(failure.what()).section(u'\n', -1);
            why.remove(file + QStringLiteral(": ")); // our coders begin with it
            return Text::tr("%1 is damaged: %2").arg(file, why);
        }
    }
    return {};
}

} // namespace kruv::SourceCheck
