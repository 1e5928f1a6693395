// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QCoreApplication>

#include <cstddef>
#include <memory>
#include <span>

struct evp_md_ctx_st;

namespace kruv {

/// MD5 of what is added, by OpenSSL: Qt's takes a quarter longer, and every proof pays for it.
class Md5
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Md5)
public:
    /// Throws AudioError where the system forbids MD5.
    Md5();

    void add(std::span<const std::byte> bytes);
    /// The 16 bytes. Nothing may be added afterwards.
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
