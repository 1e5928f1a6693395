// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kruv::tools {
class InputStream;
}

namespace kruv::ttaenc {

/// Skips ID3v2 tags at the present position. What follows may begin with anything.
void skipId3v2(tools::InputStream &input);

} // namespace kruv::ttaenc
