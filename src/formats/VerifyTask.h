// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"

#include <QCoreApplication>

namespace kruv {

/// A run of a codec's tool that tests a file, which is its second argument. The report goes into the
/// command's results.
class VerifyTask : public KruvAsyncNSTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyTask)
public:
    VerifyTask(std::shared_ptr<KruvTaskResults> results, TaskCompletionSink *queue, const QString &launchPath,
               const QStringList &arguments);

    void startTask() override;
    QString inputPath() const override { return arguments().at(1); }

protected:
    /// Last path component.
    const QString &fileName() const { return m_fileName; }

private:
    const QString m_fileName;
};

} // namespace kruv
