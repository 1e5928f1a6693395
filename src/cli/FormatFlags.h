// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"

#include <QCoreApplication>

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace kruv {

class FormatControls;

/// The flags of a command that makes files: --to for the format, and one for each setting that any of the
/// formats declares.
class FormatFlags
{
    Q_DECLARE_TR_FUNCTIONS(kruv::FormatFlags)
public:
    FormatFlags(CLI::App &app, const QList<const Format *> &formats);

    /// "a, b or c".
    static QString either(QStringList words);
    static QStringList ids(const QList<const Format *> &formats);

    /// The format of --to. Throws UsageError for none.
    const Format &chosen() const;
    /// Sets the controls of the chosen format's settings. Throws UsageError for a flag that isn't for that
    /// format, and for a value that it can't have.
    void apply(const FormatControls &controls) const;

private:
    void declare(const char *id);
    std::string typeName(const FormatOption &option) const;
    const FormatOption &option(const std::string &id) const;
    void set(const FormatControls &controls, const FormatOption &option, const QString &text) const;

    CLI::App &m_app;
    const QList<const Format *> m_formats;
    std::string m_format;
    std::map<std::string, std::string> m_texts; // by the option's id
};

} // namespace kruv
