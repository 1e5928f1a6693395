// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvLog.h"

#include "audio/AvFunctions.h"

#include <array>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

namespace kruv::AvLog {

namespace {

thread_local std::string lastError;

/// What a decoder calls a warning although samples are wrong or missing after it.
bool isLoss(std::string_view format)
{
    return format.starts_with("Lossless check failed") || format.starts_with("Stream parameters not seen");
}

void keepErrors(void *, int level, const char *format, va_list arguments)
{
    if (level > AV_LOG_ERROR && !(level == AV_LOG_WARNING && isLoss(format))) {
        return;
    }
    std::array<char, 512> line{};
    std::vsnprintf(line.data(), line.size(), format, arguments);
    lastError = line.data();
}

} // namespace

void install()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_callback(keepErrors); });
    lastError.clear();
}

bool hasComplained()
{
    return !lastError.empty();
}

bool lastErrorBegins(std::string_view text)
{
    return lastError.starts_with(text);
}

QString takeLastError(int code)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> cause{};
    av_strerror(code, cause.data(), cause.size());
    QString text = QString::fromUtf8(lastError).simplified();
    lastError.clear();
    QString causeText = QString::fromUtf8(cause.data());
    if (text.isEmpty() || code == AVERROR(ENOSPC)) {
        return causeText;
    }
    return text.endsWith(causeText) ? text : QStringLiteral("%1 (%2)").arg(text, causeText);
}

} // namespace kruv::AvLog
