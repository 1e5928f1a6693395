// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

struct UConverter;

namespace kruv {

/// The encoding of a text that doesn't say which it is in.
class TextEncoding
{
public:
    /// `name` as in ICU. A name that ICU doesn't know reads as Latin-1.
    explicit TextEncoding(const QByteArray &name);
    /// What the bytes, which are not UTF-8, look like most.
    static TextEncoding detected(const QByteArray &bytes);

    QString decoded(const QByteArray &bytes) const;
    /// Nothing where the encoding lacks one of the characters.
    std::optional<QByteArray> encoded(const QString &text) const;

    /// The text of bytes in whatever encoding: UTF-8 or UTF-16, with or without a byte-order mark, else what
    /// they look like. Never fails.
    static QString text(const QByteArray &bytes);

private:
    std::shared_ptr<UConverter> m_converter;
};

} // namespace kruv
