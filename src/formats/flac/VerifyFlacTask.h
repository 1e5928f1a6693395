// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/VerifyTask.h"

#include <QCoreApplication>

namespace kruv {

/// Tests a FLAC file with the flac tool.
class VerifyFlacTask : public VerifyTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyFlacTask)
public:
    using VerifyTask::VerifyTask;

protected:
    void processTaskOutput(const QString &text) override;
    void willEnd() override;
    void neverRan() override { cleanup(); }
    void cleanup() override;

private:
    QString m_singleResult;
};

} // namespace kruv
