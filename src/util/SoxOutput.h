// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Reads what sox prints with -S.
namespace kruv::SoxOutput {

/// The latest percentage in a piece of output; nothing where it has none.
std::optional<double> percentage(QStringView piece);
/// Whether the piece says that the work is done.
bool isDone(QStringView piece);

/// Looks for what sox says of a source or a disk that gave out before the end, after which it ends as if
/// nothing had happened. The output may come in any pieces.
class Reader
{
public:
    void read(QStringView piece);
    /// What sox said; empty where all is well.
    const QString &problem() const { return m_problem; }

private:
    QString m_line;
    QString m_problem;
};

} // namespace kruv::SoxOutput
