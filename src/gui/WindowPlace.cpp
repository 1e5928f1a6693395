// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/WindowPlace.h"

#include "base/Preferences.h"

#include <QWidget>

namespace kruv::WindowPlace {

bool restore(QWidget &window, const Preferences &preferences, const QString &key)
{
    const QByteArray stored = QByteArray::fromBase64(preferences.string(key).toLatin1());
    return !stored.isEmpty() && window.restoreGeometry(stored);
}

void store(const QWidget &window, Preferences &preferences, const QString &key)
{
    preferences.setValue(key, QString::fromLatin1(window.saveGeometry().toBase64()));
}

} // namespace kruv::WindowPlace
