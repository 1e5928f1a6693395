// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/CueFileNames.h"

#include "base/PathNames.h"
#include "base/TextEncoding.h"

#include <QRegularExpression>

#include <memory>
#include <optional>
#include <utility>

namespace kruv::CueFileNames {

namespace {

/// What a sheet is written in: UTF-8, or what it looks like.
class Encoding
{
public:
    explicit Encoding(const QByteArray &sheet)
        : m_encoding(sheet.isValidUtf8() ? TextEncoding(QByteArrayLiteral("UTF-8"))
                                         : TextEncoding::detected(sheet))
    {
    }
    QString decoded(const QByteArray &bytes) const { return m_encoding.decoded(bytes); }
    std::optional<QByteArray> encoded(const QString &text) const { return m_encoding.encoded(text); }

private:
    TextEncoding m_encoding;
};

/// The name's own bytes stay where it has got no more than another ending: whatever the sheet looks like.
std::optional<QByteArray> bytesOf(const QString &name, const QString &before, const QByteArray &bytesBefore,
                                  const Encoding &encoding)
{
    const auto stem = [](const QString &text) { return text.chopped(PathNames::extension(text).size()); };
    return stem(name) == stem(before) && !PathNames::extension(before).isEmpty()
               ? bytesBefore.first(bytesBefore.lastIndexOf('.') + 1) + PathNames::extension(name).toUtf8()
               : encoding.encoded(name);
}

/// Where the name stands in a line of Latin-1; an invalid match in lines that name no file. The last
/// quotation mark ends it: some names have one.
QRegularExpressionMatch nameIn(const QString &line)
{
    static const QRegularExpression fileLine(
        QStringLiteral(
            "\\A(?:\u00ef\u00bb\u00bf)?[ \\t]*FILE[ \\t]+(?:\"(?<quoted>.*)\"|(?<bare>[^ \\t\"]+))"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return fileLine.match(line);
}

QByteArray renamedLine(const QByteArray &line, const Encoding &encoding, const NewName &newName)
{
    const auto match = nameIn(QString::fromLatin1(line)); // a character a byte
    if (!match.hasMatch()) {
        return line;
    }
    const bool isQuoted = match.hasCaptured(u"quoted");
    const QString group = isQuoted ? QStringLiteral("quoted") : QStringLiteral("bare");
    const qsizetype start = match.capturedStart(group);
    const qsizetype end = match.capturedEnd(group);
    const QByteArray before = line.sliced(start, end - start);
    const QString name = newName(encoding.decoded(before));
    if (name.isNull()) {
        return line;
    }
    auto bytes = bytesOf(name, encoding.decoded(before), before, encoding);
    if (bytes && !isQuoted && bytes->contains(' ')) {
        bytes = '"' + *bytes + '"';
    }
    return bytes ? line.first(start) + *bytes + line.sliced(end) : line;
}

/// Calls `change` for each line, and leaves what ends it.
QByteArray withLines(const QByteArray &sheet, const std::function<QByteArray(const QByteArray &line)> &change)
{
    QByteArray changed;
    for (qsizetype start = 0; start < sheet.size();) {
        qsizetype end = start;
        while (end < sheet.size() && sheet[end] != '\n' && sheet[end] != '\r') {
            ++end;
        }
        changed += change(sheet.sliced(start, end - start));
        for (; end < sheet.size() && (sheet[end] == '\n' || sheet[end] == '\r'); ++end) {
            changed += sheet[end];
        }
        start = end;
    }
    return changed;
}

/// Nothing where it isn't UTF-16, which begins with its mark.
const char *wideEncodingOf(const QByteArray &sheet)
{
    return sheet.startsWith("\xff\xfe") ? "UTF-16LE" : sheet.startsWith("\xfe\xff") ? "UTF-16BE" : nullptr;
}

} // namespace

QByteArray renamed(const QByteArray &sheet, const NewName &newName)
{
    if (const char *wide = wideEncodingOf(sheet)) {
        const TextEncoding encoding(wide);
        const QByteArray text = encoding.decoded(sheet).toUtf8();
        const bool isWhole = encoding.encoded(QString::fromUtf8(text)) == sheet;
        return isWhole ? encoding.encoded(QString::fromUtf8(renamed(text, newName))).value_or(sheet) : sheet;
    }
    const Encoding encoding(sheet);
    return withLines(sheet, [&](const QByteArray &line) { return renamedLine(line, encoding, newName); });
}

} // namespace kruv::CueFileNames
