// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/FileHash.h"
#include "checksums/VerifyListTask.h"

#include <QCoreApplication>

namespace kruv {

/// Verifies an MD5 list, its own or one of md5sum -b.
class VerifyMD5Task : public VerifyListTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyMD5Task)
public:
    VerifyMD5Task(TaskCompletionSink *queue, const QString &fileName,
                  std::shared_ptr<KruvTaskResults> results);

private:
    Checked check(const ListText::Line &line, FileProgress &progress) override;
    /// `isOther`: whether what has the name is no regular file.
    Entry compare(const ListText::Md5Entry &stored, FileProgress &progress, bool &isOther);
    FileHash::Result hash(const ListText::Md5Entry &stored, FileProgress &progress);
};

} // namespace kruv
