// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// Where the outputs of a command go.
struct OutputPlace
{
    QString folder = {}; ///< empty: beside each source
    /// Below `folder` they keep the tree that their sources have below these; others lie in it directly.
    QStringList roots = {};

    QString folderFor(const QString &source) const;
};

} // namespace kruv
