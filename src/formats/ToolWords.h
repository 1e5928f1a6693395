// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <span>

namespace kruv {

/// What a tool says where it fails, and what a person can do then.
struct FailureHint
{
    QStringView toolSays;
    const char *advice;
};

/// What is known of the words that a format's tools print.
struct ToolWords
{
    /// The first that matches is given.
    std::span<const FailureHint> hints;
    /// Regular expressions of what says nothing of a failure: banners, progress, states.
    std::span<const QStringView> chatter;
};

} // namespace kruv
