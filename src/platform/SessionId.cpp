// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/SessionId.h"

#include <unistd.h>

namespace kruv {

std::uint32_t sessionId()
{
    return static_cast<std::uint32_t>(getsid(0));
}

} // namespace kruv
