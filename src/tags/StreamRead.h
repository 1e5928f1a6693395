// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <tbytevector.h>
#include <tiostream.h>

namespace kruv {

/// `length` bytes from `offset` on, or as many as there are.
inline TagLib::ByteVector readAt(TagLib::IOStream &stream, long offset, unsigned long length)
{
    stream.seek(offset);
    return stream.readBlock(length);
}

} // namespace kruv
