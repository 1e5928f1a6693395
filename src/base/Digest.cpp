// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Digest.h"

#include <openssl/evp.h>

namespace kruv {

namespace {

const EVP_MD *openSslDigest(Digest::Algorithm algorithm)
{
    switch (algorithm) {
    case Digest::Algorithm::MD5:
        return EVP_md5();
    case Digest::Algorithm::SHA1:
        return EVP_sha1();
    case Digest::Algorithm::SHA512:
        return EVP_sha512();
    }
    return nullptr;
}

} // namespace

Digest::Digest(Algorithm algorithm)
    : m_context(EVP_MD_CTX_new())
{
    if (m_context && EVP_DigestInit_ex(m_context.get(), openSslDigest(algorithm), nullptr) != 1) {
        m_context.reset();
    }
}

void Digest::Free::operator()(evp_md_ctx_st *context) const
{
    EVP_MD_CTX_free(context);
}

void Digest::add(std::span<const std::byte> bytes)
{
    EVP_DigestUpdate(m_context.get(), bytes.data(), bytes.size());
}

const QByteArray &Digest::result()
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
