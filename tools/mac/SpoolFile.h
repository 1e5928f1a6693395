// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <cstdint>
#include <span>
#include <string>

namespace kruv::mac {

/// A temporary file without a name, so nothing is left of it however the process ends. Failures throw
/// MacError.
class SpoolFile : public tools::ByteSink
{
public:
    explicit SpoolFile(const std::string &folder);
    ~SpoolFile() override;
    SpoolFile(const SpoolFile &) = delete;
    SpoolFile &operator=(const SpoolFile &) = delete;

    /// TMPDIR, or /tmp.
    static std::string defaultFolder();

    void write(std::span<const uint8_t> bytes) override;
    uint64_t size() const { return m_size; }
    /// Writes the whole content to `sink`.
    void copyTo(tools::ByteSink &sink) const;
    /// Hands the descriptor over to the caller.
    int release();

private:
    int m_descriptor = -1;
    uint64_t m_size = 0;
};

} // namespace kruv::mac
