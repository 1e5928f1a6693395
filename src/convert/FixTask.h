// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/OutputWatch.h"
#include "tasks/StagedTask.h"

#include <QHash>

#include <functional>
#include <vector>

namespace kruv {

/// Runs `shntool fix` over a whole set of tracks, so that each but the last ends on a CD sector boundary
/// (a multiple of 588 frames), then copies tags and writes a checksum list for the fixed files.
class FixTask final : public StagedTask
{
public:
    /// `outputFormat` is the lower-case extension ("shn", "flac", "wav", "aiff"); `md5Option` one of
    /// "No MD5", "1 MD5", "MD5 by disc*" and "FFP"; `clearTab` is called on the main thread when the job
    /// ends.
    FixTask(TaskCompletionSink *queue, const QStringList &fileNames, const QString &outputFormat,
            const QString &outputPath, const QString &md5Option, int flacLevel,
            std::function<void()> clearTab);

    void stopTask() override;
    QString inputPath() const override { return m_fileNames.value(0); }
    QString outputPath() const override { return m_outputPath; }

    static QStringList fixArguments(const QStringList &fileNames, const QString &outputFormat,
                                    const QString &outputPath, int flacLevel);
    /// The file's disc by its name's "d<disc>t<track>"; empty where its path says nothing of the kind.
    static QString disc(const QString &path);
    /// Less every number that stands before a percent sign.
    static QString stripPercent(const QString &text);

protected:
    void doStartTask() override;

private:
    void doFixCall();
    void checkOutputs();
    void processTaskOutput(const QString &piece);
    void showCurrentFile(QStringView piece);
    void copyTags();
    void writeChecksums();
    void handleMD5(const QStringList &files);
    void doMd5Call(const QString &list, const QStringList &files);
    void doCreateFFP(const QStringList &files);
    void writeList(const QString &path, const QString &text);
    void deleteOriginals();
    /// What the tool made of `source`, or was to make.
    QString fixedFile(const QString &source) const;
    QStringList existingOutputs() const;

    const QStringList m_fileNames;
    const QString m_outputFormat;
    const QString m_outputPath;
    const QString m_md5Option;
    const int m_flacLevel;
    const std::function<void()> m_clearTab;
    std::vector<OutputWatch> m_outputs;
    /// File name less its extension to its place in the list, counted from 1.
    QHash<QString, QString> m_fileNameDictionary;
    /// The tool's words from the latest "Fixing [" on, until the name is whole.
    QString m_currentLine;
    QString m_totalOutput;
    /// Empty while all tags could be copied.
    QString m_sourceOfLostTags;
};

} // namespace kruv
