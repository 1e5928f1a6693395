// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// Shows that outputs hold the audio of their sources, by content: both are decoded in this process and
/// compared sample by sample, piece by piece, in constant memory. Any thread. What is disproved, and a file
/// of either side that is damaged, is a std::runtime_error in words for a person.
namespace kruv::Proof {

constexpr std::uint32_t sectorsInASecond = 75; ///< of a CD

/// What a set job may do besides passing the samples on.
enum class Change {
    None,
    SectorFilled, ///< zeros at the end, as many as fill the last sector of a CD
    SilenceCut    ///< zeros at either end may be missing
};

/// What is to be shown: that the outputs, one after another, give the sources, one after another, but for one
/// change.
struct Claim
{
    QStringList sources = {};
    QStringList outputs = {};
    Change change = Change::None;
};

/// What was shown. Lengths are in frames, one sample of each channel.
struct Finding
{
    std::int64_t frames = 0; ///< of the sources
    std::vector<std::int64_t> sourceLengths = {};
    std::vector<std::int64_t> outputLengths = {};
    AudioStreamFormat format = {}; ///< of the sources
    std::int64_t added = 0;        ///< of silence
    std::int64_t cut = 0;          ///< of silence
    /// MD5 of the outputs' samples as FLAC keeps it: signed, low byte first, in as few bytes as their depth
    /// needs; of floating-point samples, as they are.
    QByteArray digest = {};
    QString decoder = {}; ///< of the outputs
};

/// Told how far the proof is, in percent. False ends it.
using Progress = std::function<bool(double percent)>;

/// Whether what is made of `source` has other samples on purpose: it is DSD, or has floating-point samples.
/// Opens only files whose first bytes don't tell.
bool changesSamples(const QString &source);

/// Why sameness of samples can't be shown for what is made of `source`, a clause; empty where it can. Only an
/// `output` that is told can have floating-point samples as they were.
QString obstacle(const QString &source, const QString &output = {});

/// Nothing where `progress` ended it.
std::optional<Finding> sameAudio(const Claim &claim, const Progress &progress);

/// For lossy outputs: that `output` decodes without a complaint from beginning to end and plays as long as
/// `source`.
std::optional<Finding> sameLength(const QString &source, const QString &output, const Progress &progress);

} // namespace kruv::Proof
