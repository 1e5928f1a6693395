// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/Trash.h"

#include <QFile>

namespace kruv {

bool moveToTrash(const QString &path)
{
    return QFile::moveToTrash(path);
}

} // namespace kruv
