// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/VerifyListTask.h"

#include <QCoreApplication>

namespace kruv {

/// Verifies a list of FLAC fingerprints, then decodes in test mode each file whose fingerprint matched.
class VerifyFFPTask : public VerifyListTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyFFPTask)
public:
    VerifyFFPTask(TaskCompletionSink *queue, const QString &fileName,
                  std::shared_ptr<KruvTaskResults> results);

private:
    Checked check(const ListText::Line &line, FileProgress &progress) override;
    void prepare() override;
    QString afterwards(std::vector<Entry> &entries) override;

    struct Test;
    void test(Test &test, FileProgress &progress);
};

} // namespace kruv
