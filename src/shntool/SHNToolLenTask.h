// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolLenReport.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"
#include "tasks/KruvAsyncNSTask.h"

#include <QCoreApplication>

namespace kruv {

/// Reports the lengths of files in one of three layouts.
class SHNToolLenTask : public KruvAsyncNSTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolLenTask)
public:
    enum class LenType { Normal, FileSet, Disc };

    /// `files` follow "len" on the tool's command line. `parser` lays out the lines of named tracks.
    SHNToolLenTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &files,
                   LenType type, const SHNtoolOutputNamingFormatParser &parser);

    void setTrackNames(const QStringList &names) { m_set.names = names; }
    void setDiscNumber(const QString &discNumber) { m_set.discNumber = discNumber; }
    void setMaxTrackNameLength(int length) { m_set.maxTrackNameLength = length; }

    void startTask() override;

protected:
    void processTaskOutput(const QString &text) override
    {
        m_output += text.left(KruvTaskResults::maxTextLength - m_output.size());
    }
    void willEnd() override;

private:
    const LenType m_type;
    const SHNtoolOutputNamingFormatParser m_parser;
    SHNToolLenReport::FileSet m_set;
    QString m_output;
};

} // namespace kruv
