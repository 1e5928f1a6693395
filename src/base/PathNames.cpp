// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/PathNames.h"

namespace kruv::PathNames {

namespace {

QStringView nameView(const QString &path)
{
    return QStringView(path).sliced(path.lastIndexOf(u'/') + 1);
}

/// Position of the dot before the extension, or the name's length.
qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 || dot == name.size() - 1 ? name.size() : dot;
}

} // namespace

QString lastPathComponent(const QString &path)
{
    return nameView(path).toString();
}

QString folderOf(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? path.left(slash + 1) : path.left(slash);
}

QString extension(const QString &path)
{
    const QStringView name = nameView(path);
    const qsizetype dot = extensionDot(name);
    return dot == name.size() ? QString() : name.sliced(dot + 1).toString();
}

QString fileType(const QString &path)
{
    return extension(path).toUpper();
}

QString nameWithoutExtension(const QString &path)
{
    const QStringView name = nameView(path);
    return name.left(extensionDot(name)).toString();
}

QString outputPath(const QString &folder, const QString &source, const QString &newExtension)
{
    const QString separator = folder.endsWith(u'/') ? QString() : QStringLiteral("/");
    return folder + separator + nameWithoutExtension(source) + u'.' + newExtension;
}

QString disc(const QString &path)
{
    return path.section(u'd', -1).section(u't', 0, 0);
}

} // namespace kruv::PathNames
