// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFont>

namespace kruv {

class FileList;

/// Width of the widest name of a list in that font, in device-independent pixels. Quick for tens of
/// thousands: only those are laid out that a sum over their characters finds to be among the widest.
int widestName(const FileList &list, const QFont &font);

} // namespace kruv
