// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Md5.h"

#include "MacError.h"

#include <openssl/evp.h>

namespace kruv::mac {

namespace {

void check(int result)
{
    if (result != 1) {
        throw MacError(ErrorNumber::Undefined, "the cryptographic library computes no MD5");
    }
}

} // namespace

struct Md5::Context
{
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> handle{EVP_MD_CTX_new(), &EVP_MD_CTX_free};
};

Md5::Md5()
    : m_context(std::make_unique<Context>())
{
    check(EVP_DigestInit_ex(m_context->handle.get(), EVP_md5(), nullptr));
}

Md5::~Md5() = default;

void Md5::add(std::span<const uint8_t> bytes)
{
    check(EVP_DigestUpdate(m_context->handle.get(), bytes.data(), bytes.size()));
}

Md5Digest Md5::finish()
{
    Md5Digest digest{};
    check(EVP_DigestFinal_ex(m_context->handle.get(), digest.data(), nullptr));
    return digest;
}

} // namespace kruv::mac
