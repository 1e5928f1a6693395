// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/NamePattern.h"

#include "base/PathNames.h"
#include "base/PortableName.h"
#include "tags/TagText.h"
#include "tags/TagsObject.h"

#include <QRegularExpression>

#include <algorithm>
#include <stdexcept>

namespace kruv {

struct NamePattern::Values
{
    const TagsObject &tags;
    const QString &source;
    const QString &extension;
};

struct NamePattern::Field
{
    const char *name;
    bool isTag;
    QString (*value)(const Values &values);
};

namespace {

/// Stands where a field is empty; no text of a name has it.
constexpr QChar gap = QChar(1);
constexpr QStringView separators = u" -_.,:;+";

/// Of a tag: no slash, no control character, nothing that turns the direction of what follows, no blanks
/// around it.
QString cleaned(const QString &text)
{
    QString clean;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar each = text[index];
        const bool isPair =
            each.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        const bool turns = (each >= QChar(0x202A) && each <= QChar(0x202E)) ||
                           (each >= QChar(0x2066) && each <= QChar(0x2069));
        if (isPair) {
            clean.append(each);
            clean.append(text[++index]);
        } else if (each == u'/') {
            clean.append(u'-');
        } else if (each.category() == QChar::Other_Control) {
            clean.append(u' ');
        } else if (!each.isSurrogate() && !turns) {
            clean.append(each);
        }
    }
    return clean.simplified();
}

/// The first that is not empty. The last ones stay English, whatever language the program speaks: the same
/// command is to make the same names.
QString firstText(std::initializer_list<QString> texts)
{
    QString clean;
    for (const QString &text : texts) {
        if (clean = cleaned(text); !clean.isEmpty()) {
            break;
        }
    }
    return clean;
}

/// Of a date that is no more than a year and perhaps a month.
QString yearOf(const TagsObject &tags)
{
    const QString date = tags.unparsedDate();
    static const QRegularExpression beginsWithYear(QStringLiteral("\\A[0-9]{4}(?![0-9])"));
    return !tags.yearText().isEmpty() ? tags.yearText() : beginsWithYear.match(date).captured();
}

QString padded(const QString &number, qsizetype digits)
{
    static const QRegularExpression isNumber(QStringLiteral("\\A0*([0-9]+)\\z"));
    const auto match = isNumber.match(number);
    return digits > 0 && match.hasMatch() ? match.captured(1).rightJustified(digits, u'0') : number;
}

bool isSeparator(QChar character)
{
    return separators.contains(character);
}

bool closes(QChar character)
{
    return QStringView(u")]}>").contains(character);
}

/// A text of a name on its way: the pattern's own, or that of a field.
struct Piece
{
    QString text;
    bool isField;
};

/// Takes out what only served the empty field at `index`.
void closeGap(std::vector<Piece> &pieces, std::size_t index)
{
    const auto end = pieces.end();
    const auto after = std::find_if(pieces.begin() + static_cast<std::ptrdiff_t>(index) + 1, end,
                                    [](const Piece &piece) { return !piece.text.isEmpty(); });
    if (after != end && !after->isField) {
        while (!after->text.isEmpty() && isSeparator(after->text.front())) {
            after->text.remove(0, 1);
        }
    }
    const bool isLast = std::all_of(after, end, [](const Piece &piece) { return piece.text.isEmpty(); });
    const bool isAtEnd = isLast || (!after->isField && !after->text.isEmpty() && closes(after->text.front()));
    if (index == 0 || pieces[index - 1].isField) {
        return;
    }
    QString &before = pieces[index - 1].text;
    while (!before.isEmpty() && before.back().isLetterOrNumber()) {
        before.chop(1);
    }
    while (isAtEnd && !before.isEmpty() && isSeparator(before.back())) {
        before.chop(1);
    }
}

/// Without the gaps, and what they leave.
QString withoutGaps(QString name)
{
    static const QRegularExpression brackets(QStringLiteral("[(\\[{<][ \\x01]*\\x01[ \\x01]*[)\\]}>]"));
    static const QRegularExpression atEnds(QStringLiteral("\\A\\x01[-_,:;+ \\x01]*|[-_,:;+ \\x01]*\\x01\\z"));
    for (qsizetype size = -1; size != name.size();) {
        size = name.size();
        name.replace(brackets, gap);
    }
    name.remove(atEnds);
    static const QRegularExpression blanksBetween(QStringLiteral(" +\\x01[ \\x01]*|\\x01[ \\x01]* "));
    name.replace(blanksBetween, QStringLiteral(" "));
    return name.remove(gap).trimmed();
}

} // namespace

const std::vector<NamePattern::Field> &NamePattern::allFields()
{
    static const QString unknownArtist = QStringLiteral("Unknown Artist");
    static const QString unknownAlbum = QStringLiteral("Unknown Album");
    using Of = const Values &;
    static const std::vector<Field> fields{
        {"artist", true,
         [](Of of) {
             return firstText({of.tags.artistText(), of.tags.albumArtistText(), unknownArtist});
         }},
        {"albumartist", true,
         [](Of of) {
             return firstText({of.tags.albumArtistText(), of.tags.artistText(), unknownArtist});
         }},
        {"album", true,
         [](Of of) {
             return firstText({of.tags.albumText(), unknownAlbum});
         }},
        {"title", true,
         [](Of of) {
             return firstText({of.tags.titleText(), PathNames::nameWithoutExtension(of.source)});
         }},
        {"track", true,
         [](Of of) { return numberAndTotal(of.tags, TagField::Track, TagField::TrackTotal).first; }},
        {"tracktotal", true,
         [](Of of) { return numberAndTotal(of.tags, TagField::Track, TagField::TrackTotal).second; }},
        {"disc", true,
         [](Of of) { return numberAndTotal(of.tags, TagField::Disc, TagField::DiscTotal).first; }},
        {"disctotal", true,
         [](Of of) { return numberAndTotal(of.tags, TagField::Disc, TagField::DiscTotal).second; }},
        {"year", true, [](Of of) { return yearOf(of.tags); }},
        {"month", true, [](Of of) { return of.tags.monthText(); }},
        {"day", true, [](Of of) { return of.tags.dayText(); }},
        {"genre", true, [](Of of) { return of.tags.genreText(); }},
        {"composer", true, [](Of of) { return of.tags.composerText(); }},
        {"comment", true, [](Of of) { return of.tags.commentText(); }},
        {"name", false, [](Of of) { return PathNames::nameWithoutExtension(of.source); }},
        {"folder", false, [](Of of) { return PathNames::lastPathComponent(PathNames::folderOf(of.source)); }},
        {"ext", false, [](Of of) { return of.extension; }},
    };
    return fields;
}

QStringList NamePattern::fields()
{
    QStringList names;
    for (const Field &field : allFields()) {
        names.append(QString::fromLatin1(field.name));
    }
    return names;
}

NamePattern::NamePattern(const QString &text)
    : m_components(1)
{
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar each = text[index];
        const bool isDoubled = text.mid(index + 1, 1) == each;
        if (each == u'/') {
            m_components.emplace_back();
        } else if ((each == u'{' || each == u'}') && isDoubled) {
            addText(each);
            ++index;
        } else if (each == u'{') {
            const qsizetype end = text.indexOf(u'}', index);
            if (end < 0) {
                throw std::runtime_error(tr("The brace after \"%1\" is not closed; {{ stands for a brace.")
                                             .arg(text.first(index))
                                             .toStdString());
            }
            m_components.back().push_back(fieldIn(text.sliced(index + 1, end - index - 1)));
            index = end;
        } else {
            addText(each.category() == QChar::Other_Control ? QChar(u' ') : each);
        }
    }
    if (m_components.back().empty()) {
        throw std::runtime_error(tr("A name has to end with that of the file.").toStdString());
    }
}

void NamePattern::addText(QChar character)
{
    Component &component = m_components.back();
    if (component.empty() || component.back().field) {
        component.push_back({});
    }
    component.back().text.append(character);
}

NamePattern::Part NamePattern::fieldIn(const QString &braces) const
{
    const QString name = braces.section(u':', 0, 0);
    const auto field = std::ranges::find_if(
        allFields(), [&name](const Field &each) { return name == QLatin1StringView(each.name); });
    if (field == allFields().end()) {
        throw std::runtime_error(tr("There is no field {%1}. There are %2.")
                                     .arg(braces, u'{' + fields().join(QStringLiteral("}, {")) + u'}')
                                     .toStdString());
    }
    static const QRegularExpression isCount(QStringLiteral("\\A0?[1-9]\\z"));
    if (braces.contains(u':') && !isCount.match(braces.section(u':', 1)).hasMatch()) {
        throw std::runtime_error(
            tr("{%1}: behind the colon stands how many digits a number has at least, as in {track:02}.")
                .arg(braces)
                .toStdString());
    }
    return {.field = &*field, .digits = braces.section(u':', 1).toInt()};
}

bool NamePattern::readsTags() const
{
    return std::ranges::any_of(m_components, [](const Component &component) {
        return std::ranges::any_of(component,
                                   [](const Part &part) { return part.field && part.field->isTag; });
    });
}

QString NamePattern::valueOf(const Part &part, const Values &values)
{
    return part.field ? padded(cleaned(part.field->value(values)), part.digits) : part.text;
}

/// Empty where no field of it says anything.
QString NamePattern::nameOf(const Component &component, const Values &values)
{
    std::vector<Piece> pieces;
    for (const Part &part : component) {
        pieces.push_back({valueOf(part, values), part.field != nullptr});
    }
    const auto isEmptyField = [](const Piece &piece) { return piece.isField && piece.text.isEmpty(); };
    const auto fields = std::ranges::count(pieces, true, &Piece::isField);
    if (fields > 0 && std::ranges::count_if(pieces, isEmptyField) == fields) {
        return {};
    }
    for (std::size_t index = pieces.size(); index-- > 0;) {
        if (isEmptyField(pieces[index])) {
            closeGap(pieces, index);
        }
    }
    QString name;
    for (const Piece &piece : pieces) {
        name += isEmptyField(piece) ? QString(gap) : piece.text;
    }
    name = withoutGaps(name);
    return name.startsWith(u'.') ? name.replace(0, 1, u'_') : name; // else it would be hidden
}

QString NamePattern::path(const TagsObject &tags, const QString &source, const QString &extension) const
{
    const Values values{.tags = tags, .source = source, .extension = extension};
    QString path;
    for (const Component &component : m_components) {
        QString name = nameOf(component, values);
        const bool isFile = &component == &m_components.back();
        if (isFile && name.isEmpty()) {
            name = cleaned(PathNames::nameWithoutExtension(source));
            name = name.startsWith(u'.') ? name.replace(0, 1, u'_') : name;
        }
        if (isFile) {
            path += PortableName::cut(name, u'.' + extension);
        } else if (!name.isEmpty()) {
            path += PortableName::cut(name, {}) + u'/';
        }
    }
    return path;
}

} // namespace kruv
