// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "regex/Regex.h"

#include "regex/CompiledExpressions.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <unicode/uregex.h>

namespace kruv {

namespace {

constexpr int timeLimit = 1000; // in steps of ICU's matcher, about a millisecond each

const UChar *utf16(QStringView text)
{
    // ICU refuses a null pointer even for no text at all.
    return text.isNull() ? u"" : text.utf16();
}

int sizeOf(QStringView text)
{
    if (text.size() > std::numeric_limits<int>::max()) {
        throw std::length_error("the text is too long for a regular expression");
    }
    return static_cast<int>(text.size());
}

/// One search through one text, which must outlive it.
class Search
{
public:
    Search(const URegularExpression &compiled, QStringView text)
        : m_text(text)
        , m_expression(uregex_clone(&compiled, &m_status))
    {
        uregex_setTimeLimit(m_expression.get(), timeLimit, &m_status);
        uregex_setText(m_expression.get(), utf16(text), sizeOf(text), &m_status);
        check();
    }

    bool matchesAll() { return checked(uregex_matches(m_expression.get(), 0, &m_status)); }
    bool next() { return checked(uregex_findNext(m_expression.get(), &m_status)); }
    qsizetype start(int group = 0) { return uregex_start(m_expression.get(), group, &m_status); }
    qsizetype end(int group = 0) { return uregex_end(m_expression.get(), group, &m_status); }

    Regex::Match match()
    {
        Regex::Match match{start(), end() - start(), {}};
        const int groups = uregex_groupCount(m_expression.get(), &m_status);
        for (int group = 0; group <= groups; ++group) {
            match.captures << captured(group);
        }
        check();
        return match;
    }

    QString replaceAll(QStringView replacement)
    {
        QString result(m_text.size() + m_text.size() / 4 + replacement.size(), Qt::Uninitialized);
        int needed = replaceAllInto(result, replacement);
        if (m_status == U_BUFFER_OVERFLOW_ERROR) {
            m_status = U_ZERO_ERROR;
            result.resize(needed);
            needed = replaceAllInto(result, replacement);
        }
        check();
        result.truncate(needed);
        return result;
    }

private:
    struct Close
    {
        void operator()(URegularExpression *expression) const { uregex_close(expression); }
    };

    QString captured(int group)
    {
        const qsizetype from = start(group);
        return from < 0 ? QString() : m_text.mid(from, end(group) - from).toString();
    }

    int replaceAllInto(QString &result, QStringView replacement)
    {
        return uregex_replaceAll(m_expression.get(), utf16(replacement), sizeOf(replacement),
                                 reinterpret_cast<UChar *>(result.data()), sizeOf(result), &m_status);
    }

    bool checked(UBool found)
    {
        check();
        return found != 0;
    }

    void check() const
    {
        if (m_status == U_INDEX_OUTOFBOUNDS_ERROR || m_status == U_REGEX_INVALID_CAPTURE_GROUP_NAME) {
            throw std::invalid_argument(
                "the replacement names a group that its regular expression doesn't have");
        }
        // U_STRING_NOT_TERMINATED_WARNING and the like are no failures.
        if (U_FAILURE(m_status)) {
            throw std::runtime_error(std::string("a regular expression gave up: ") + u_errorName(m_status));
        }
    }

    QStringView m_text;
    UErrorCode m_status = U_ZERO_ERROR;
    std::unique_ptr<URegularExpression, Close> m_expression;
};

} // namespace

Regex::Regex(const QString &pattern, Qt::CaseSensitivity caseSensitivity)
    : m_pattern(pattern)
    , m_compiled(CompiledExpressions::shared().get(
          pattern, caseSensitivity == Qt::CaseInsensitive ? UREGEX_CASE_INSENSITIVE : 0))
{
}

bool Regex::matches(QStringView text) const
{
    return Search(*m_compiled, text).matchesAll();
}

bool Regex::isIn(QStringView text) const
{
    return Search(*m_compiled, text).next();
}

std::optional<Regex::Match> Regex::find(QStringView text) const
{
    Search search(*m_compiled, text);
    return search.next() ? std::optional(search.match()) : std::nullopt;
}

std::vector<Regex::Match> Regex::findAll(QStringView text) const
{
    std::vector<Match> matches;
    Search search(*m_compiled, text);
    while (search.next()) {
        matches.push_back(search.match());
    }
    return matches;
}

QStringList Regex::split(QStringView text) const
{
    QStringList pieces;
    qsizetype pieceStart = 0;
    Search search(*m_compiled, text);
    while (search.next()) {
        const qsizetype start = search.start();
        const qsizetype end = search.end();
        if (start == end && (start == 0 || end == text.size())) {
            continue;
        }
        pieces << text.mid(pieceStart, start - pieceStart).toString();
        pieceStart = end;
    }
    pieces << text.mid(pieceStart).toString();
    return pieces;
}

QString Regex::replace(QStringView text, QStringView replacement) const
{
    return Search(*m_compiled, text).replaceAll(replacement);
}

} // namespace kruv
