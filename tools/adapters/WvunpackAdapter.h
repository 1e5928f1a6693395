// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"

#include <functional>

namespace kruv::adapters {

/// What `wvunpack` is to be called with. By itself the tool restores the container the file was made from, so
/// an output called .wav (or standard output, which its callers read as WAV) may turn out to be AIFF. --wav
/// cures that, but also drops the original WAV header and trailing chunks, so it is added only where
/// `madeFromOther` says that the source was made from another container than WAV.
Arguments wvunpackArguments(Arguments arguments, const std::function<bool(const std::string &)> &exists,
                            const std::function<bool(const std::string &)> &madeFromOther);

/// Whether the WavPack file `path` was made from another container than WAV. False for anything unreadable.
bool wavPackMadeFromOther(const std::string &path);

} // namespace kruv::adapters
