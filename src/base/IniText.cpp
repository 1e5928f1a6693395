// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/IniText.h"

#include <QFileDevice>
#include <QLoggingCategory>

namespace kruv::IniText {

namespace {

Q_LOGGING_CATEGORY(preferencesLog, "kruv.preferences", QtWarningMsg)

QString quoted(QString value)
{
    value.replace(u'\\', QStringLiteral("\\\\"));
    value.replace(u'"', QStringLiteral("\\\""));
    value.replace(u'\n', QStringLiteral("\\n"));
    value.replace(u'\r', QStringLiteral("\\r"));
    const QString mark =
        value.startsWith(u'@') ? QStringLiteral("@") : QString(); // else it would name a type
    return u'"' + mark + value + u'"';
}

/// The character that "\xHHHH" stands for; `position` is that of the first digit and becomes the last one's.
QChar numbered(QStringView value, qsizetype &position)
{
    qsizetype end = position;
    while (end < value.size() && end < position + 4 &&
           QStringView(u"0123456789abcdefABCDEF").contains(value[end])) {
        ++end;
    }
    const ushort code = value.sliced(position, end - position).toUShort(nullptr, 16);
    position = end - 1;
    return {code};
}

QString unquoted(QStringView value)
{
    QString result;
    for (qsizetype position = 0; position < value.size(); ++position) {
        if (value[position] == u'"') {
            continue;
        }
        if (value[position] != u'\\' || ++position == value.size()) {
            result += position < value.size() ? value[position] : QChar(u'\\');
        } else if (value[position] == u'x') {
            result += numbered(value, ++position);
        } else {
            result += value[position] == u'n'   ? QChar(u'\n')
                      : value[position] == u'r' ? QChar(u'\r')
                                                : value[position];
        }
    }
    return result.startsWith(u"@@") ? result.sliced(1) : result;
}

bool read(QIODevice &device, QSettings::SettingsMap &map)
{
    const QString text = QString::fromUtf8(device.readAll());
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const qsizetype sign = line.indexOf(u'=');
        if (sign > 0) {
            map.insert(line.first(sign).trimmed().toString(), unquoted(line.sliced(sign + 1).trimmed()));
        }
    }
    return true;
}

bool write(QIODevice &device, const QSettings::SettingsMap &map)
{
    QString text = QStringLiteral("[General]\n");
    for (auto each = map.cbegin(); each != map.cend(); ++each) {
        const bool isText = each.value().typeId() == QMetaType::QString;
        const QString value = each.value().toString();
        text += each.key() + u'=' + (isText ? quoted(value) : value) + u'\n';
    }
    const QByteArray bytes = text.toUtf8();
    // The library doesn't look at what its last flush came to.
    auto *file = qobject_cast<QFileDevice *>(&device);
    const bool written = device.write(bytes) == bytes.size() && (!file || file->flush());
    if (!written) {
        qCWarning(preferencesLog, "The preferences could not be stored, and stay as they were: %s",
                  qUtf8Printable(device.errorString()));
    }
    return written;
}

} // namespace

QSettings::Format settingsFormat()
{
    static const QSettings::Format format = QSettings::registerFormat(QStringLiteral("conf"), read, write);
    return format;
}

} // namespace kruv::IniText
