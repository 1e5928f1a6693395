// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// The application's short version, for example "1.0.0".
QString shortVersion();
/// Grows with every build that is given away.
QString buildNumber();

} // namespace kruv
