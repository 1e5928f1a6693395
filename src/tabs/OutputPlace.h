// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <memory>

namespace kruv {

class NamePattern;

/// Where the outputs of a command go, and what they are called.
struct OutputPlace
{
    QString folder = {}; ///< empty: beside each source
    /// Below `folder` they keep the tree that their sources have below these; others lie in it directly.
    QStringList roots = {};
    /// Of their names, and of folders in which they lie below those; null: as their sources.
    std::shared_ptr<const NamePattern> names = nullptr;
    /// All names below `folder` are such that other systems take them, too.
    bool isPortable = false;

    QString folderFor(const QString &source) const;
    /// The path of each source's output, in their order. Reads their tags where the names are made of these,
    /// of several at once.
    QStringList outputsFor(const QStringList &sources, const QString &extension, std::size_t threads) const;
    /// What lies below the folder of the outputs, as names are to be.
    QString named(const QString &path) const;

private:
    QString outputFor(const QString &source, const QString &extension) const;
};

} // namespace kruv
