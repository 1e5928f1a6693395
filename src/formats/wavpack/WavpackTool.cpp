// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/wavpack/WavpackTool.h"

#include "formats/FormatOption.h"
#include "tasks/ToolOutput.h"

namespace kruv::WavpackTool {

namespace {

constexpr OptionChoice modes[] = {{"fast", QT_TRANSLATE_NOOP("FormatOption", "Fast")},
                                  {"high", QT_TRANSLATE_NOOP("FormatOption", "High")}};

bool isDrawing(QChar character)
{
    constexpr QChar escape(0x1B);
    return character == u'\b' || character == escape;
}

QStringView withoutDrawing(QStringView piece)
{
    while (!piece.isEmpty() && isDrawing(piece.front())) {
        piece = piece.sliced(1);
    }
    while (!piece.isEmpty() && isDrawing(piece.back())) {
        piece.chop(1);
    }
    return piece;
}

} // namespace

const FormatOption mode{.id = "wavpack-mode",
                        .kind = FormatOption::Kind::Choice,
                        .label = QT_TRANSLATE_NOOP("FormatOption", "Mode"),
                        .help = QT_TRANSLATE_NOOP("FormatOption", "WavPack compression; fast when not given"),
                        .choices = modes,
                        .controlName = "wavepackFormatMatrix"};

QStringList encode(const ToolRequest &request)
{
    const QString level = request.options.number(mode) == 0 ? QStringLiteral("-f") : QStringLiteral("-h");
    return {level, request.input, QStringLiteral("-o"), request.output};
}

QStringList decode(const ToolRequest &request)
{
    return {request.input, QStringLiteral("-o"), request.output};
}

QStringList decodeForAiff(const ToolRequest &request)
{
    return {request.input, QStringLiteral("-y"), QStringLiteral("-o"), request.output};
}

QStringList decodeToTemporary(const ToolRequest &request)
{
    return decode(request) << QStringLiteral("-y");
}

ToolPiece read(QStringView piece, QStringView name)
{
    piece = withoutDrawing(piece);
    ToolPiece result;
    if (piece.contains(u"% done...")) {
        QStringView number = piece.left(piece.indexOf(u'%'));
        if (number.startsWith(u"]0;")) {
            number = number.sliced(3); // the title of the terminal's window
        }
        result.percentage = ToolOutput::leadingNumber(number);
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    }
    // The slashes of the question can't be in a name.
    const bool asks = piece.contains(u"overwrite") && piece.contains(u"(yes/no/all)?");
    result.failed = asks || ToolOutput::says(piece, u"couldn't read all samples", name);
    result.results = piece.toString();
    return result;
}

} // namespace kruv::WavpackTool
