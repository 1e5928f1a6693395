// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/Verb.h"

#include <QCoreApplication>
#include <QString>

namespace kruv {

/// `kruv demo`: makes a short album, encodes it to FLAC with fingerprints, verifies it, and says what it did.
class DemoVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DemoVerb)
public:
    explicit DemoVerb(CLI::App &parent);
    int run() override;

private:
    QString makeFolder() const;

    std::string m_folder;
};

} // namespace kruv
