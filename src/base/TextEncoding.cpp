// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/TextEncoding.h"

#include <QStringDecoder>

#include <algorithm>
#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>

namespace kruv {

namespace {

constexpr qsizetype sampleSize = qsizetype{64} * 1024; // bytes

/// UTF-16 without a byte-order mark: text in it has its line breaks, blanks and digits as a zero byte and
/// another one. Nothing else that is text has zero bytes.
const char *wideEncoding(const QByteArray &bytes)
{
    qsizetype zeros[2] = {0, 0};
    const qsizetype end = std::min(bytes.size(), sampleSize);
    for (qsizetype index = 0; index < end; ++index) {
        zeros[index % 2] += bytes[index] == '\0' ? 1 : 0;
    }
    const bool wide =
        bytes.size() % 2 == 0 && std::max(zeros[0], zeros[1]) > end / 8 && std::min(zeros[0], zeros[1]) == 0;
    return !wide ? nullptr : zeros[0] > 0 ? "UTF-16BE" : "UTF-16LE";
}

} // namespace

TextEncoding::TextEncoding(const QByteArray &name)
{
    UErrorCode status = U_ZERO_ERROR;
    m_converter.reset(ucnv_open(name.constData(), &status), ucnv_close);
}

TextEncoding TextEncoding::detected(const QByteArray &bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&status),
                                                                              ucsdet_close);
    ucsdet_setText(detector.get(), bytes.constData(),
                   static_cast<int32_t>(std::min(bytes.size(), sampleSize)), &status);
    const UCharsetMatch *match = ucsdet_detect(detector.get(), &status);
    const char *name = match ? ucsdet_getName(match, &status) : nullptr;
    const bool usable = U_SUCCESS(status) && name && !QByteArrayView(name).startsWith("UTF");
    return TextEncoding(usable ? QByteArray(name) : QByteArrayLiteral("windows-1252"));
}

QString TextEncoding::decoded(const QByteArray &bytes) const
{
    UErrorCode status = m_converter ? U_ZERO_ERROR : U_FILE_ACCESS_ERROR;
    QString text(bytes.size() * 2, Qt::Uninitialized);
    const int32_t length = ucnv_toUChars(m_converter.get(), reinterpret_cast<UChar *>(text.data()),
                                         static_cast<int32_t>(text.size()), bytes.constData(),
                                         static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return QString::fromLatin1(bytes);
    }
    text.truncate(length);
    return text;
}

std::optional<QByteArray> TextEncoding::encoded(const QString &text) const
{
    if (!m_converter) {
        return std::nullopt;
    }
    constexpr int widest = 8; // bytes a UTF-16 unit
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(m_converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    QByteArray bytes(text.size() * widest, Qt::Uninitialized);
    const int32_t length = ucnv_fromUChars(
        m_converter.get(), bytes.data(), static_cast<int32_t>(bytes.size()),
        reinterpret_cast<const UChar *>(text.utf16()), static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    bytes.truncate(length);
    return bytes;
}

QString TextEncoding::text(const QByteArray &bytes)
{
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")) {
        return QStringDecoder(QStringDecoder::Utf16)(bytes);
    }
    if (const char *wide = wideEncoding(bytes)) {
        return TextEncoding(wide).decoded(bytes);
    }
    const QByteArray rest = bytes.startsWith("\xef\xbb\xbf") ? bytes.mid(3) : bytes;
    return rest.isValidUtf8() ? QString::fromUtf8(rest) : detected(rest).decoded(rest);
}

} // namespace kruv
