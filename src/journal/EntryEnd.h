// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Receipt.h"

#include <QString>

#include <optional>

namespace kruv {

/// How a job ended.
struct EntryEnd
{
    enum class State {
        Done,
        Failed,
        Cancelled,
        /// Taken out of the queue before it began; nobody wants it later.
        Removed
    };

    State state = State::Done;
    QString reason = {};
    /// Of a job that gave files their names, whatever was wrong with it besides.
    std::optional<Receipt> receipt = {};
};

} // namespace kruv
