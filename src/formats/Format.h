// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>
#include <span>

namespace kruv {

class ConversionTask;
class FileStart;
class KruvTask;
class KruvTaskResults;
class TaskCompletionSink;
struct AudioFormatObject;
struct ConversionRequest;
struct FormatOption;
struct TagAccess;
struct ToolStep;
struct ToolWords;
struct TranscodeRecipe;

/// What making a file of a format does to the sound.
enum class FormatKind {
    Lossless,
    /// Lossless but for files that were made in its other mode.
    LosslessWithLossyMode,
    Lossy,
    /// No samples of the usual kind: reading it computes new ones.
    ChangesSignal
};

/// The lists that take files of a format.
struct TakenBy
{
    bool decode = false;
    bool encode = false;
    bool checksum = false;
    bool shntool = false;
    bool fix = false;
    bool lossy = false;
    bool tags = false;
};

/// The audio that files of a format can hold.
struct AudioLimits
{
    /// Bits a sample, in ascending order.
    std::span<const int> bits;
    int mostChannels = 0;
    int lowestRate = 0;  ///< Hz
    int highestRate = 0; ///< Hz
};

/// Everything that the program knows of one format. There is one constant record of each, in the format's
/// folder, and Registry.cpp lists them.
struct Format
{
    /// As flags and stored plans have it.
    const char *id;
    /// As choices show it.
    QStringView label;
    /// Upper-case extensions; outputs get the first one.
    std::span<const QStringView> types;
    std::span<const char *const> mediaTypes;
    FormatKind kind = FormatKind::Lossless;
    TakenBy takenBy = {};
    /// Whether a file is of this format, by its content.
    bool (*isContent)(const FileStart &start);

    /// What files that are made here can hold; null where none are made.
    const AudioLimits *limits = nullptr;
    std::span<const FormatOption *const> options = {};

    using JobMaker = std::shared_ptr<ConversionTask> (*)(TaskCompletionSink *queue,
                                                         const ConversionRequest &request);
    /// Makes a file of this format; null where none can be made.
    JobMaker encode = nullptr;
    /// Makes WAV or AIFF of a file of this format; null where it can't be read.
    JobMaker decode = nullptr;
    /// The tool without which none can be made; null where this process makes them.
    const char *encoderTool = nullptr;
    /// What a job that encodes goes by, where it takes the usual way.
    const TranscodeRecipe *recipe = nullptr;
    /// Makes a temporary WAV of a file; null where that is done in this process.
    const ToolStep *toWav = nullptr;
    /// Tests a file with its codec's own tool; null where there is none. The report goes into the results.
    std::shared_ptr<KruvTask> (*test)(TaskCompletionSink *queue, const QString &file,
                                      std::shared_ptr<KruvTaskResults> results) = nullptr;
    /// Whether a WAV comes back from it with what it holds beside its audio.
    bool keepsWavChunks = false;
    /// Whether floating-point samples of a WAV stay as they are.
    bool keepsWavFloats = false;
    /// With which files keep all chunks of their sources; null where there is no such option.
    const FormatOption *chunksOption = nullptr;
    /// Null where files have no tags.
    const TagAccess *tags = nullptr;
    /// What is known of its tools' words, or null.
    const ToolWords *words = nullptr;

    QString extension() const { return types.front().toString().toLower(); }
    bool isLossy() const { return kind == FormatKind::Lossy; }
};

} // namespace kruv
