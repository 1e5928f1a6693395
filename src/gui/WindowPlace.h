// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QString;
class QWidget;

namespace kruv {

class Preferences;

/// Where a window was and how large, from one run to the next.
namespace WindowPlace {

/// False when nothing usable is stored.
bool restore(QWidget &window, const Preferences &preferences, const QString &key);
void store(const QWidget &window, Preferences &preferences, const QString &key);

} // namespace WindowPlace
} // namespace kruv
