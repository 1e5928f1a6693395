// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/OutputTask.h"
#include "util/CdOutput.h"
#include "util/CdTracks.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace kruv {

class UnmountedDisc;

/// Extracts a range of tracks of an audio disc with cdda2wav, gives the files the names of the tracks, writes
/// a log beside them, and gives the disc back to the desktop however it ends. Where the drive fails on the
/// way, the tracks that are whole by then stay.
class CDExtractTask : public OutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CDExtractTask)
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
    /// The tracks' files and the log.
    static QStringList outputs(const Request &request);

    CDExtractTask(TaskCompletionSink *queue, const QString &launchPath, Request request,
                  std::unique_ptr<UnmountedDisc> disc);
    ~CDExtractTask() override;

    void stopTask() override;
    QString inputPath() const override { return m_request.discName; }
    QString outputPath() const override { return m_request.outputFolder; }

protected:
    QStringList sources() const override { return {}; } // the tracks themselves are no files
    void make(StagedOutputs &outputs) override;
    void neverStarted() override { giveDiscBack(); }

private:
    /// A file that the tool writes, and what it is to be called.
    struct Track
    {
        QString toolName;
        QString path;
    };
    static std::vector<Track> tracks(const Request &request);

    QString trackName() const;
    void showTrack();
    void processTaskOutput(const QString &text);
    void keepWholeTracks(StagedOutputs &outputs);
    void writeLog(const QString &path);
    void giveDiscBack();

    const Request m_request;
    const QString m_launchPath;
    const CdTracks::Range m_range;
    std::unique_ptr<UnmountedDisc> m_disc;
    CdOutput::TrackEnds m_trackEnds;
    int m_currentFileIndex = 0; // tracks that are done, up to the last but one
    int m_tracksDone = 0;
    QString m_logOutput;
};

} // namespace kruv
