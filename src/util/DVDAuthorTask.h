// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioOutputTask.h"

#include <QCoreApplication>

namespace kruv {

/// Makes a DVD-Audio disc image, "image.iso", of PCM files that share one format. The log of the authoring
/// tool, "log.txt", stays beside it; after a failure it is in the results instead.
class DVDAuthorTask : public AudioOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DVDAuthorTask)
public:
    /// `fileNames` in the order of the disc.
    DVDAuthorTask(TaskCompletionSink *queue, const QStringList &fileNames, const QString &outputPath);

    QString outputPath() const override { return imageIn(m_outputPath); }

    static QString imageIn(const QString &folder) { return folder + QStringLiteral("/image.iso"); }
    static QString logIn(const QString &folder) { return folder + QStringLiteral("/log.txt"); }

    // The tools' arguments; all that they write goes into `folder`, the tree "DVD-AUDIO" too.
    static QStringList authorArguments(const QStringList &fileNames, const QString &folder);
    static QStringList imageArguments(const QString &folder);

protected:
    QStringList sources() const override { return m_fileNames; }
    QStringList tools() const override { return {QStringLiteral("dvda"), QStringLiteral("mkisofs")}; }
    void make(StagedOutputs &outputs) override;

private:
    void authorDisc(const QString &staging);
    void makeImage(const QString &staging);
    void processDVDATaskOutput(const QString &piece);
    void processImageTaskOutput(const QString &piece);

    const QStringList m_fileNames;
    const QString m_outputPath;
};

} // namespace kruv
