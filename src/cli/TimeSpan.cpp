// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TimeSpan.h"

#include <QRegularExpression>

namespace kruv {

std::optional<std::chrono::seconds> TimeSpan::fromText(const QString &text)
{
    using namespace std::chrono;
    static const QRegularExpression form(
        QStringLiteral("\\A(?:([0-9]{1,7})h)?(?:([0-9]{1,7})m)?(?:([0-9]{1,7})s)?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    const auto number = [&match](int part) { return match.captured(part).toLongLong(); };
    const seconds span = hours(number(1)) + minutes(number(2)) + seconds(number(3));
    constexpr hours longest{20 * 24}; // what the clock of an event loop can count
    return match.hasMatch() && span > seconds::zero() && span <= longest ? std::optional(span) : std::nullopt;
}

} // namespace kruv
