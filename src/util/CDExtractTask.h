// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "util/CdOutput.h"
#include "util/CdTracks.h"

#include <memory>

namespace kruv {

class UnmountedDisc;

/// Extracts a range of tracks of an audio disc with cdda2wav, gives the files the names of the tracks, writes
/// a log beside them, and gives the disc back to the desktop however it ends.
class CDExtractTask : public KruvAsyncNSTask
{
public:
    /// What the tool is to do and what its files are to be called.
    struct Request
    {
        QString provider;      ///< name of the drive; empty for the only one
        QStringList fileNames; ///< of the tracks, in track order
        QString trackString;   ///< "3+12"
        bool oneTrack = false; ///< all tracks into one file
        QString discName;
        QString outputFolder;
    };

    static QStringList arguments(const Request &request);
    /// Every file that the tool itself and the log are written to.
    static QStringList outputs(const Request &request);

    CDExtractTask(TaskCompletionSink *queue, const QString &launchPath, Request request,
                  std::unique_ptr<UnmountedDisc> disc);
    ~CDExtractTask() override;

    void startTask() override;
    QString inputPath() const override { return m_request.discName; }
    QString outputPath() const override { return m_request.outputFolder; }

protected:
    void prepare() override;
    void processTaskOutput(const QString &text) override;
    void cleanup() override;
    void neverRan() override;
    void neverStarted() override { giveDiscBack(); }
    void finalCleanup() override;

private:
    QString trackName() const;
    void showTrack();
    void showStatus(const QString &status);
    QString fileNameFor(int track) const;
    /// Whether the first of two outputs is there, and not one that was there before the second was written.
    bool isNewer(const QString &one, const QString &other) const;
    void renameTracks();
    void rename(const QString &toolName, int track);
    void writeLog();
    void giveDiscBack();

    const Request m_request;
    const CdTracks::Range m_range;
    std::unique_ptr<UnmountedDisc> m_disc;
    CdOutput::TrackEnds m_trackEnds;
    int m_currentFileIndex = 0; // tracks that are done, up to the last but one
    int m_tracksDone = 0;
    QString m_logOutput;
};

} // namespace kruv
