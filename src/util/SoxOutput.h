// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// Reads what sox prints with -S.
namespace kruv::SoxOutput {

/// Text of the latest percentage in a piece of output, empty where it has none: what stands between "In:" and
/// "%".
QString percentageText(const QString &piece);

/// Collects the warnings and failures that sox prints among its progress. The output may come in any pieces.
class Messages
{
public:
    /// Returns those that are complete with this piece, each without a line break.
    QStringList read(QStringView piece);
    /// What sox said of a source or a disk that gave out before the end, after which it ends as if nothing
    /// had happened. Empty where all is well.
    const QString &shortEnd() const { return m_shortEnd; }

private:
    QString m_line;
    QString m_shortEnd;
};

} // namespace kruv::SoxOutput
