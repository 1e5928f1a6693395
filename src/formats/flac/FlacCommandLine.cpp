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
    return arguments << request.source << QStringLiteral("-o") << request.output;
}

QStringList encodeTemporary(const EncodeRequest &request)
{
    constexpr int toolsOwnLevel = 5;
    QStringList arguments;
    if (request.lax) {
        arguments << QStringLiteral("--lax");
    } else if (request.level != toolsOwnLevel) {
        arguments << QStringLiteral("-%1").arg(request.level);
    }
    if (request.verify) {
        arguments << QStringLiteral("-V");
    }
    return arguments << request.source << QStringLiteral("-o") << request.output;
}

QStringList encodeByShntool(const EncodeRequest &request, const QString &folder)
{
    const QString encoder =
        request.lax ? QStringLiteral("cust ext=flac flac --lax -o %f -")
                    : QStringLiteral("cust ext=flac flac -") + QString::number(request.level) + u' ' +
                          (request.verify ? QStringLiteral(" -V ") : QString()) + QStringLiteral(" -o %f -");
    return {QStringLiteral("conv"),
            QStringLiteral("-P"),
            QStringLiteral("pct"),
            QStringLiteral("-O"),
            QStringLiteral("never"),
            QStringLiteral("-d"),
            folder,
            QStringLiteral("-o"),
            encoder,
            request.source};
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

QStringList decodeToTemporary(const QString &source, const QString &wav)
{
    return {QStringLiteral("-d"), source, QStringLiteral("-o"), wav, QStringLiteral("-f")};
}

} // namespace kruv::FlacCommandLine
