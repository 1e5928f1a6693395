// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioOutputTask.h"
#include "shntool/SHNToolDisplay.h"

#include <QCoreApplication>

namespace kruv {

/// Base of the jobs in which one run of shntool makes files of a tab's files.
class SHNToolOutputTask : public AudioOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolOutputTask)
public:
    struct Request
    {
        QString launchPath; ///< of the tool
        QString folder;     ///< that the outputs go into
        QString format;     ///< of the outputs: their extension
        QStringList files;  ///< in the order of the list
    };

    QString inputPath() const override { return m_request.files.value(0); }
    /// The outputs that are known before the run.
    virtual QStringList outputs() const = 0;
    JobOutline outline() const override { return {sources(), outputs()}; }

protected:
    QStringList tools() const override { return {QStringLiteral("shntool")}; }
    SHNToolOutputTask(TaskCompletionSink *queue, Request request, const SHNToolProgress &progress);

    QStringList sources() const override { return m_request.files; }

    const Request &request() const { return m_request; }
    void setTitles(const QString &title) { m_display.setTitles(title); }

    /// Runs the tool, which makes its files in `staging`, a folder on the way to `folder`. Returns what it
    /// printed, with the names that the files will have; it is in the results too.
    QString runShntool(const QStringList &arguments, const QString &staging, const QString &folder);

private:
    const Request m_request;
    SHNToolDisplay m_display;
};

} // namespace kruv
