// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

namespace kruv::mac {

using Md5Digest = std::array<uint8_t, 16>;

/// MD5 over bytes as they come.
class Md5
{
public:
    Md5();
    ~Md5();

    void add(std::span<const uint8_t> bytes);
    /// The digest of all bytes; call once, last.
    Md5Digest finish();

private:
    struct Context;
    std::unique_ptr<Context> m_context;
};

} // namespace kruv::mac
