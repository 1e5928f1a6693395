// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv::Priority {

/// Lets others have the processors and the disks first: for the calling thread, and for the threads and
/// tools that it starts from here on. There is no way back without privileges.
void giveWay();

} // namespace kruv::Priority
