// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace kruv {

/// A text that a job writes about its files: a checksum list, a cue sheet. What had its name when the job was
/// made was agreed to be replaced; what came later is not, and neither is a file that the text is about.
class TextOutput
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TextOutput)
public:
    enum class Content { Whole, LacksFiles };

    TextOutput(const QString &path, const QStringList &aboutFiles);

    const QString &path() const { return m_path; }
    /// Any thread. An empty text, or why it was not written. What lacks files doesn't replace an older text.
    QString write(const QString &text, Content content) const;

private:
    bool isAbout(const QString &file) const;

    QString m_path;
    QStringList m_aboutFiles;
    bool m_replaces;
};

} // namespace kruv
