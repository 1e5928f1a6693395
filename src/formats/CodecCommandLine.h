// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// Argument lists of the codec tools.
namespace kruv::CodecCommandLine {

struct Request
{
    QString input = {};
    QString output = {};
    /// The mode ("-f" or "-h") of WavPack, the number of Monkey's Audio.
    QString level = {};
    /// FLAC: decode what was encoded and compare.
    bool verify = false;
};

/// Builds one tool's list.
using Builder = QStringList (*)(const Request &request);

QStringList wavpack(const Request &request);
QStringList wvunpack(const Request &request);
/// Replace the output: it is a file that was made for it.
QStringList wvunpackForAiff(const Request &request);
QStringList wvunpackToTemporary(const Request &request);
/// The tool tells from its input's content whether to compress or to extract.
QStringList ttaenc(const Request &request);
QStringList macCompress(const Request &request);
QStringList macExtract(const Request &request);
/// The level is left to the tool.
QStringList flacEncode(const Request &request);
QStringList flacDecode(const Request &request);
/// shntool's decoding of a source into one named WAV file, which is replaced.
QStringList shntoolDecode(const Request &request);

/// shntool's conversion of `source` into `folder`; existing outputs stay. `encoder` is "shn", "wav", "aiff"
/// or a custom encoder.
QStringList shntoolConvert(const QString &encoder, const QString &folder, const QString &source);
/// The same with a FLAC encoder. In lax mode neither level nor verify is passed on.
QStringList shntoolToFlac(int level, bool lax, bool verify, const QString &folder, const QString &source);
/// shntool's own way of decoding WavPack; `extension` is "wav" or "aiff".
QString wvunpackEncoder(const QString &extension);

} // namespace kruv::CodecCommandLine
