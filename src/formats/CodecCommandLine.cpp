// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/CodecCommandLine.h"

namespace kruv::CodecCommandLine {

namespace {

const QString toFile = QStringLiteral("-o");
const QString conv = QStringLiteral("conv");
const QStringList percentages{QStringLiteral("-P"), QStringLiteral("pct")};
const QStringList neverOverwrite{QStringLiteral("-O"), QStringLiteral("never")};
const QString intoFolder = QStringLiteral("-d");

} // namespace

QStringList wavpack(const Request &request)
{
    return {request.level, request.input, toFile, request.output};
}

QStringList wvunpack(const Request &request)
{
    return {request.input, toFile, request.output};
}

QStringList wvunpackForAiff(const Request &request)
{
    return {request.input, QStringLiteral("-y"), toFile, request.output};
}

QStringList wvunpackToTemporary(const Request &request)
{
    return {request.input, toFile, request.output, QStringLiteral("-y")};
}

QStringList ttaenc(const Request &request)
{
    return {request.input, toFile, request.output};
}

QStringList macCompress(const Request &request)
{
    return {request.input, request.output, QStringLiteral("-c") + request.level};
}

QStringList macExtract(const Request &request)
{
    return {request.input, request.output, QStringLiteral("-d")};
}

QStringList flacEncode(const Request &request)
{
    QStringList arguments;
    if (request.verify) {
        arguments << QStringLiteral("-V");
    }
    return arguments << request.input << toFile << request.output;
}

QStringList flacDecode(const Request &request)
{
    return {QStringLiteral("-d"), request.input, toFile, request.output, QStringLiteral("-f")};
}

QStringList shntoolDecode(const Request &request)
{
    return QStringList{conv} << percentages << QStringLiteral("-O") << QStringLiteral("always") << toFile
                             << QStringLiteral("wav") << QStringLiteral("-n") << request.output
                             << request.input;
}

QStringList shntoolConvert(const QString &encoder, const QString &folder, const QString &source)
{
    return QStringList{conv, toFile, encoder} << percentages << neverOverwrite << intoFolder << folder
                                              << source;
}

QStringList shntoolToFlac(int level, bool lax, bool verify, const QString &folder, const QString &source)
{
    const QString encoder = lax ? QStringLiteral("cust ext=flac flac --lax -o %f -")
                                : QStringLiteral("cust ext=flac flac -%1 ").arg(level) +
                                      (verify ? QStringLiteral(" -V ") : QString()) +
                                      QStringLiteral(" -o %f -");
    return QStringList{conv} << percentages << neverOverwrite << intoFolder << folder << toFile << encoder
                             << source;
}

QString wvunpackEncoder(const QString &extension)
{
    return QStringLiteral("cust ext=") + extension + QStringLiteral(" wvunpack %f -");
}

} // namespace kruv::CodecCommandLine
