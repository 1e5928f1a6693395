// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TagText.h"

#include <QDate>

#include <array>

namespace kruv {

namespace {

constexpr std::array<QStringView, 9> datePatterns{
    u"yyyy-MM-dd", u"yyyy/MM/dd", u"yyyy/dd/MM", u"yyyy-dd-MM", u"MM-dd-yyyy",
    u"MM/dd/yyyy", u"dd-MM-yyyy", u"dd/MM/yyyy", u"yyyy",
};

/// The digits that stand in the text where the pattern has this letter.
QString digitsAt(QStringView text, QStringView pattern, char16_t letter)
{
    return text.mid(pattern.indexOf(letter), pattern.count(letter)).toString();
}

bool hasShape(QStringView text, QStringView pattern)
{
    if (text.size() != pattern.size()) {
        return false;
    }
    for (qsizetype index = 0; index < pattern.size(); ++index) {
        const bool isDigit = text[index] >= u'0' && text[index] <= u'9';
        if (pattern[index].isLetter() ? !isDigit : text[index] != pattern[index]) {
            return false;
        }
    }
    return true;
}

} // namespace

TagLib::String toTagLibString(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return {TagLib::ByteVector(bytes.constData(), static_cast<unsigned int>(bytes.size())),
            TagLib::String::UTF8};
}

QString fromTagLibString(const TagLib::String &text)
{
    const TagLib::ByteVector bytes = text.data(TagLib::String::UTF8);
    return bytes.isEmpty() ? QStringLiteral("") : QString::fromUtf8(bytes.data(), bytes.size());
}

TagLib::StringList toTagLibList(const QStringList &values)
{
    TagLib::StringList list;
    for (const QString &value : values) {
        list.append(toTagLibString(value));
    }
    return list;
}

QStringList fromTagLibList(const TagLib::StringList &values)
{
    QStringList list;
    for (const TagLib::String &value : values) {
        list.append(fromTagLibString(value));
    }
    return list;
}

QByteArray fromTagLibBytes(const TagLib::ByteVector &bytes)
{
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

TagLib::ByteVector toTagLibBytes(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

bool readDate(const QString &text, TagsObject &record)
{
    for (const QStringView pattern : datePatterns) {
        if (!hasShape(text, pattern)) {
            continue;
        }
        const bool yearOnly = !pattern.contains(u'M');
        const QString year = digitsAt(text, pattern, u'y');
        const QString month = yearOnly ? QStringLiteral("01") : digitsAt(text, pattern, u'M');
        const QString day = yearOnly ? QStringLiteral("01") : digitsAt(text, pattern, u'd');
        if (!QDate::isValid(year.toInt(), month.toInt(), day.toInt())) {
            continue;
        }
        record.setYearText(year);
        if (text.size() >= 5) {
            record.setMonthText(month);
            record.setDayText(day);
        }
        return true;
    }
    return false;
}

void readDateOrKeep(const QString &text, TagsObject &record)
{
    if (!readDate(text, record)) {
        record.setUnparsedDate(text);
    }
}

QString joinedDate(const TagsObject &record)
{
    const QString month = record.monthText();
    const QString day = record.dayText();
    if (month.isEmpty() || day.isEmpty()) {
        const QString whole = record.unparsedDate();
        return whole.startsWith(record.yearText()) ? whole.isEmpty() ? record.yearText() : whole
                                                   : record.yearText();
    }
    return QStringLiteral("%1-%2-%3").arg(record.yearText(), month, day);
}

std::pair<QString, QString> numberAndTotal(const TagsObject &record, TagField number, TagField total)
{
    const QString text = record.text(number);
    if (!record.text(total).isEmpty() || !text.contains(u'/')) {
        return {text, record.text(total)};
    }
    return {text.section(u'/', 0, 0), text.section(u'/', 1)};
}

} // namespace kruv
