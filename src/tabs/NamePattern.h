// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

namespace kruv {

class TagsObject;

/// Names of outputs made from the tags of their sources: "{albumartist}/{album} ({year})/{track:02} {title}".
/// What stands in braces is a field, with the digits that a number has at least; "{{" is a brace, and a slash
/// begins a name in a new folder. Some fields have a text where the tag is empty, the others are empty then,
/// and with such a one goes what only served it: a word that touches it from the left, the separators behind
/// it (at the end of a name or of a bracket those before it), brackets around nothing, and a folder of which
/// no field says anything.
class NamePattern
{
    Q_DECLARE_TR_FUNCTIONS(kruv::NamePattern)
public:
    /// Throws std::runtime_error, with a sentence for a person, for a text that is no pattern.
    explicit NamePattern(const QString &text);

    /// The names of all fields.
    static QStringList fields();

    /// Whether it can't do without the tags of a source.
    bool readsTags() const;

    /// The path that the output of `source` gets below its folder. None of its names is longer than file
    /// systems take, begins with a blank or a point, or holds a control character.
    QString path(const TagsObject &tags, const QString &source, const QString &extension) const;

private:
    struct Field;
    struct Values;
    /// Of a name: a text, or a field.
    struct Part
    {
        QString text = {};
        const Field *field = nullptr;
        qsizetype digits = 0; ///< at least
    };
    using Component = std::vector<Part>;

    static const std::vector<Field> &allFields();
    static QString valueOf(const Part &part, const Values &values);
    static QString nameOf(const Component &component, const Values &values);
    Part fieldIn(const QString &braces) const;
    void addText(QChar character);

    std::vector<Component> m_components;
};

} // namespace kruv
