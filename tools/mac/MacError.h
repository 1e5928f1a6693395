// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ToolError.h"

#include <string>

namespace kruv::mac {

/// The numbers people and callers know from "Error: N" lines.
enum class ErrorNumber {
    Read = 1000,
    Write = 1001,
    InvalidInput = 1002,
    InvalidOutput = 1003,
    InputTooLarge = 1004,
    BitDepth = 1005,
    SampleRate = 1006,
    ChannelCount = 1007,
    InputTooSmall = 1008,
    Checksum = 1009,
    DecodingFrame = 1010,
    FileVersion = 1014,
    Memory = 2000,
    Undefined = 5000,
};

/// A failure with its number and a sentence for the person at the keyboard.
class MacError : public tools::ToolError
{
public:
    MacError(ErrorNumber number, const std::string &text)
        : ToolError(text)
        , m_number(number)
    {
    }

    ErrorNumber number() const { return m_number; }

private:
    ErrorNumber m_number;
};

/// Runs `action`; a failure in it that has no number gets this one.
template <typename Action> auto numbered(ErrorNumber number, Action &&action) -> decltype(action())
{
    try {
        return action();
    } catch (const MacError &) {
        throw;
    } catch (const tools::ToolError &error) {
        throw MacError(number, error.what());
    }
}

} // namespace kruv::mac
