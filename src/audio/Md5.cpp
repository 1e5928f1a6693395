// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/Md5.h"

#include "audio/AudioError.h"

#include <openssl/evp.h>

namespace kruv {

Md5::Md5()
    : m_context(EVP_MD_CTX_new())
{
    if (!m_context || EVP_DigestInit_ex(m_context.get(), EVP_md5(), nullptr) != 1) {
        throw AudioError(tr("MD5 is switched off on this system."));
    }
}

void Md5::Free::operator()(evp_md_ctx_st *context) const
{
    EVP_MD_CTX_free(context);
}

void Md5::add(std::span<const std::byte> bytes)
{
    EVP_DigestUpdate(m_context.get(), bytes.data(), bytes.size());
}

const QByteArray &Md5::result()
{
    if (m_result.isEmpty()) {
        unsigned length = 0;
        m_result.resize(EVP_MAX_MD_SIZE);
        EVP_DigestFinal_ex(m_context.get(), reinterpret_cast<unsigned char *>(m_result.data()), &length);
        m_result.truncate(length);
    }
    return m_result;
}

} // namespace kruv
