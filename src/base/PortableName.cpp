// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/PortableName.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <climits>

namespace kruv::PortableName {

namespace {

QChar portable(QChar character)
{
    constexpr QStringView refused = u"<>:\\|?*/";
    return character == u'"'                                                             ? QChar(u'\'')
           : refused.contains(character) || character.category() == QChar::Other_Control ? QChar(u'-')
                                                                                         : character;
}

/// What Windows takes for a device, whatever stands behind the first point.
bool isDevice(QStringView stem)
{
    static const QRegularExpression devices(
        QStringLiteral("\\A(con|prn|aux|nul|conin\\$|conout\\$|(com|lpt)[0-9\u00b9\u00b2\u00b3])\\z"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return devices.match(stem).hasMatch();
}

} // namespace

QString of(const QString &name)
{
    QString made = name;
    for (QChar &character : made) {
        character = portable(character);
    }
    while (made.endsWith(u'.') || made.endsWith(u' ')) {
        made.chop(1);
    }
    const qsizetype point = made.indexOf(u'.');
    const qsizetype stem = point < 0 ? made.size() : point;
    if (made.isEmpty() || isDevice(QStringView(made).first(stem).trimmed())) {
        made.insert(stem, u'_');
    }
    return made;
}

QString ofPath(const QString &path)
{
    QStringList components = path.split(u'/');
    for (QString &component : components) {
        component = component.isEmpty() ? component : of(component); // what it begins or ends with
    }
    return components.join(u'/');
}

QString cut(const QString &name, const QString &ending)
{
    const qsizetype room = std::max<qsizetype>(NAME_MAX - ending.toUtf8().size(), 0);
    if (name.toUtf8().size() <= room) {
        return name + ending;
    }
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, name);
    qsizetype end = 0;
    for (qsizetype next = characters.toNextBoundary();
         next > 0 && QStringView(name).first(next).toUtf8().size() <= room;
         next = characters.toNextBoundary()) {
        end = next;
    }
    return name.first(end).trimmed() + ending;
}

} // namespace kruv::PortableName
