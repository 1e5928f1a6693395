// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/FlacCommandLine.h"

namespace kruv::FlacCommandLine {

namespace {

const QString keepForeignMetadata = QStringLiteral("--keep-foreign-metadata");

}

QStringList encode(const EncodeRequest &request)
{
    QStringList arguments{request.lax ? QStringLiteral("--lax") : QStringLiteral("-%1").arg(request.level)};
    if (request.keepForeignMetadata) {
        arguments << keepForeignMetadata;
    }
    if (request.verify) {
        arguments << QStringLiteral("-V");
    }
    if (request.overwrite) {
        arguments << QStringLiteral("-f");
    }
    return arguments << request.source << QStringLiteral("-o") << request.output;
}

QStringList decode(const DecodeRequest &request)
{
    QStringList arguments{QStringLiteral("-d")};
    if (request.keepForeignMetadata) {
        arguments << keepForeignMetadata;
    }
    if (request.throughErrors) {
        arguments << QStringLiteral("-F");
    }
    if (request.toAiff) {
        arguments << QStringLiteral("--force-aiff-format");
    }
    return arguments << request.source << QStringLiteral("-o") << request.output;
}

QStringList verify(const QString &file)
{
    return {QStringLiteral("-t"), file};
}

} // namespace kruv::FlacCommandLine
