// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <cstddef>
#include <memory>
#include <span>

struct evp_md_ctx_st;

namespace kruv {

/// Digest of what is added, by OpenSSL: Qt's MD5 takes a quarter longer, and every proof pays for it.
class Digest
{
public:
    enum class Algorithm { MD5, SHA1, SHA512 };

    explicit Digest(Algorithm algorithm);

    /// False where the system has this algorithm switched off; then nothing may be added.
    bool isAvailable() const { return m_context != nullptr; }
    void add(std::span<const std::byte> bytes);
    /// Nothing may be added afterwards.
    const QByteArray &result();

private:
    struct Free
    {
        void operator()(evp_md_ctx_st *context) const;
    };

    std::unique_ptr<evp_md_ctx_st, Free> m_context;
    QByteArray m_result;
};

} // namespace kruv
