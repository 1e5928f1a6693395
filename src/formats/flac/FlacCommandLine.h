// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// Argument lists of the flac tool.
namespace kruv::FlacCommandLine {

struct EncodeRequest
{
    QString source;
    QString output;
    /// 0 to 8; not passed in lax mode, where the tool's own default applies.
    int level = 5;
    bool lax = false;
    bool keepForeignMetadata = false;
    bool verify = false;
};

struct DecodeRequest
{
    QString source;
    QString output;
    bool keepForeignMetadata = false;
    bool throughErrors = false;
    bool toAiff = false;
};

QStringList encode(const EncodeRequest &request);
/// Of a temporary WAV: options that are as the tool has them by itself are not passed on.
QStringList encodeTemporary(const EncodeRequest &request);
/// shntool's conversion into `folder`, with flac as its encoder. In lax mode neither level nor verify is
/// passed on.
QStringList encodeByShntool(const EncodeRequest &request, const QString &folder);
QStringList decode(const DecodeRequest &request);
/// Replaces a WAV that is there.
QStringList decodeToTemporary(const QString &source, const QString &wav);

} // namespace kruv::FlacCommandLine
