// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/StagedTask.h"

namespace kruv {

/// Makes a DVD-Audio disc image, "image.iso", of PCM files that share one format. The log of the authoring
/// tool, "log.txt", stays beside it; the tree "DVD-AUDIO" that the image is made of only after a failure.
class DVDAuthorTask : public StagedTask
{
public:
    /// `fileNames` in the order of the disc.
    DVDAuthorTask(TaskCompletionSink *queue, const QStringList &fileNames, const QString &outputPath);

    QString outputPath() const override { return imageIn(m_outputPath); }

    static QString imageIn(const QString &folder) { return folder + QStringLiteral("/image.iso"); }
    static QString logIn(const QString &folder) { return folder + QStringLiteral("/log.txt"); }
    static QString treeIn(const QString &folder) { return folder + QStringLiteral("/DVD-AUDIO"); }

    static QStringList authorArguments(const QStringList &fileNames, const QString &folder);
    static QStringList imageArguments(const QString &folder);
    /// Names in the tree's folder that no earlier run of this job made.
    static QStringList foreignNamesInTree(const QString &folder);

protected:
    void doStartTask() override;

private:
    void authorDisc();
    void makeImage();
    void processDVDATaskOutput(const QString &piece);
    void processImageTaskOutput(const QString &piece);
    void removeTree() const;

    const QStringList m_fileNames;
    const QString m_outputPath;
};

} // namespace kruv
