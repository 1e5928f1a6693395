// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>

#include <CLI/CLI.hpp>
#include <string>

namespace kruv {

struct CommonOptions;

/// One subcommand: declares its flags, then runs with what was given.
class Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Verb)
public:
    Verb(CLI::App &parent, const std::string &name, const QString &description)
        : m_app(*parent.add_subcommand(name, description.toStdString()))
    {
    }
    virtual ~Verb() = default;
    Verb(const Verb &) = delete;
    Verb &operator=(const Verb &) = delete;

    bool wasGiven() const { return m_app.parsed(); }
    /// Returns the exit status; throws UsageError for what can't be carried out as given.
    virtual int run() = 0;

protected:
    CLI::App &app() { return m_app; }
    /// For commands that run jobs.
    void declareRunFlags(CommonOptions &options);
    /// The argument that names a run of the journal; `number` stays 0 where it is not given.
    CLI::Option *addRunNumber(std::int64_t &number, const QString &help);
    template <typename Variable>
    CLI::Option *addOption(const std::string &names, Variable &variable, const QString &help)
    {
        return m_app.add_option(names, variable, help.toStdString());
    }
    CLI::Option *addFlag(const std::string &names, bool &variable, const QString &help)
    {
        return m_app.add_flag(names, variable, help.toStdString());
    }
    void setFooter(const QString &text) { m_app.footer(text.toStdString()); }

private:
    void declareSteeringFlags(CommonOptions &options);

    CLI::App &m_app;
};

} // namespace kruv
