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
    bool overwrite = false;
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
QStringList decode(const DecodeRequest &request);
QStringList verify(const QString &file);

} // namespace kruv::FlacCommandLine
