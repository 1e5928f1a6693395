// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

/// Argument lists of the lossy encoders' tools, and of shntool where it runs one. `type` is the rate mode as
/// the lossy tab names it.
namespace kruv::LossyCommandLine {

struct Mp3Request
{
    QString type;
    /// kbit/s, or the quality 0 to 9 of "VBR".
    std::int32_t level = 0;
    bool jointStereo = false;
    /// lame's choice of algorithms, 0 (best) to 9.
    int qValue = 0;
};

QStringList lame(const Mp3Request &request, const QString &source, const QString &output);
/// shntool decodes `source` and pipes it into lame; an existing `output` in `folder` stays.
QStringList shntoolToLame(const Mp3Request &request, const QString &source, const QString &folder,
                          const QString &output);

struct OpusRequest
{
    QString type;
    std::int32_t bitRate = 0; // kbit/s
    double frameSize = 0.0;   // milliseconds
    // Passed on where they are not empty.
    QString title;
    QString artist;
};

QStringList opusenc(const OpusRequest &request, const QString &source, const QString &output);

} // namespace kruv::LossyCommandLine
