// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/StagingName.h"

#include <QRandomGenerator>
#include <QRegularExpression>

namespace kruv::StagingName {

namespace {

constexpr QStringView prefix = u".kruv-";
constexpr int letters = 8;

} // namespace

QString random()
{
    QString name = prefix.toString();
    for (int i = 0; i < letters; ++i) {
        name += QChar(u'a' + static_cast<char16_t>(QRandomGenerator::global()->bounded(26)));
    }
    return name;
}

QString pattern()
{
    return prefix.toString() + u'*';
}

bool isFolder(QStringView name)
{
    static const QRegularExpression expression(QStringLiteral("\\A\\.kruv-[a-z]{%1}\\z").arg(letters));
    return name.startsWith(prefix) && expression.match(name).hasMatch();
}

void removeFolders(QString &text)
{
    static const QRegularExpression expression(QStringLiteral("/\\.kruv-[a-z]{%1}(?=/)").arg(letters));
    if (text.contains(prefix)) {
        text.remove(expression);
    }
}

bool isTemporaryFile(QStringView name)
{
    static const QRegularExpression expression(
        QStringLiteral("\\AKruv-[0-9a-f]{8}-[0-9A-Za-z]{8}\\.[^.]+\\z"));
    return name.startsWith(u"Kruv-") && expression.match(name).hasMatch();
}

} // namespace kruv::StagingName
