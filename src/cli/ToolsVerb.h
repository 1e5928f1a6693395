// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/Verb.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv tools`: which external tools are there, where, in which version, and what is missing without the
/// others.
class ToolsVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ToolsVerb)
public:
    explicit ToolsVerb(CLI::App &parent);
    int run() override;

private:
    bool m_json = false;
};

} // namespace kruv
