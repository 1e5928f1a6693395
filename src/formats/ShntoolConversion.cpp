// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ShntoolConversion.h"

#include "tasks/ToolOutput.h"

#include <QtGlobal>

namespace kruv::ShntoolConversion {

namespace {

void readPercentage(ToolPiece &result, QStringView text)
{
    result.percentage = percentage(text);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    }
}

/// The tool may end with success where an encoder behind it failed.
bool tellsOfFailedEncoder(QStringView text)
{
    return text.contains(u"child encoder process");
}

} // namespace

std::optional<double> percentage(QStringView text)
{
    const qsizetype names = text.lastIndexOf(u": ");
    return ToolOutput::lastPercentage(names < 0 ? text : text.sliced(names));
}

QStringList decode(const ToolRequest &request)
{
    return {QStringLiteral("conv"),   QStringLiteral("-P"), QStringLiteral("pct"), QStringLiteral("-O"),
            QStringLiteral("always"), QStringLiteral("-o"), QStringLiteral("wav"), QStringLiteral("-n"),
            request.output,           request.input};
}

QStringList convert(const QString &encoder, const QString &folder, const QString &source)
{
    return {QStringLiteral("conv"),
            QStringLiteral("-o"),
            encoder,
            QStringLiteral("-P"),
            QStringLiteral("pct"),
            QStringLiteral("-O"),
            QStringLiteral("never"),
            QStringLiteral("-d"),
            folder,
            source};
}

ToolPiece read(QStringView piece, QStringView)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    ToolPiece result;
    if (text.contains(u"Converting")) {
        result.results += text.left(text.indexOf(u": "));
    }
    if (text.contains(u"ERROR") || text.contains(u"OK")) {
        result.results += text;
    }
    readPercentage(result, text);
    result.failed = tellsOfFailedEncoder(text);
    return result;
}

ToolPiece readRepeating(QStringView piece, QStringView name)
{
    ToolPiece result = read(piece, name);
    result.results += ToolOutput::withoutBackspaces(piece);
    return result;
}

ToolPiece readWords(QStringView piece, QStringView name)
{
    ToolPiece result = readRepeating(piece, name);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage);
    }
    return result;
}

ToolPiece readPlain(QStringView piece, QStringView)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    ToolPiece result;
    readPercentage(result, text);
    result.results = text.toString();
    result.failed = tellsOfFailedEncoder(text);
    return result;
}

const ToolStep toWav{"shntool", decode, readRepeating,
                     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to Wav: %1%")};

} // namespace kruv::ShntoolConversion
