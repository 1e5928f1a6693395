// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <optional>
#include <vector>

struct URegularExpression;

namespace kruv {

/// A regular expression in ICU's syntax over UTF-16 text, which is searched where it lies, without a copy.
///
/// Cheap to make again: the expressions last used are kept compiled, for all threads. One object may be used
/// by several threads at once. Positions and lengths are in UTF-16 units.
///
/// Searching throws std::runtime_error when a text drives the pattern beyond a limit of time (about a second)
/// or memory, and std::length_error for a text of more than 2^31 - 1 units.
class Regex
{
public:
    struct Match
    {
        qsizetype start = 0;
        qsizetype length = 0;
        /// The whole match, then each group. A group that took no part is a null string.
        QStringList captures;
    };

    /// Throws std::invalid_argument, with the pattern and the position of what is wrong in it.
    explicit Regex(const QString &pattern, Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);

    const QString &pattern() const { return m_pattern; }

    /// True when the pattern matches the whole text.
    bool matches(QStringView text) const;
    /// True when the pattern matches somewhere in the text.
    bool isIn(QStringView text) const;
    /// The first match.
    std::optional<Match> find(QStringView text) const;
    /// All matches from left to right, none overlapping.
    std::vector<Match> findAll(QStringView text) const;
    /// The pieces between the matches, empty ones included. An empty match cuts only between two characters.
    QStringList split(QStringView text) const;
    /// The text with every match replaced; $1 in `replacement` stands for the first group and so on, $0 for
    /// the match, and a backslash takes the next character as it is. Throws std::invalid_argument for a group
    /// that the pattern doesn't have.
    QString replace(QStringView text, QStringView replacement) const;

private:
    QString m_pattern;
    std::shared_ptr<const URegularExpression> m_compiled;
};

} // namespace kruv
