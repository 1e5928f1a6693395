// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/FormatTable.h"
#include "util/BatchRename.h"
#include "util/CDExtractTask.h"
#include "util/CdAccess.h"

#include <functional>
#include <memory>
#include <vector>

namespace kruv {

class KruvTaskResults;
class OutputTask;

/// The utility tab: extracts audio discs, renames, adds replay gain, converts sample rates, takes out
/// pre-emphasis, and makes DVD-Audio images.
class UtilTab : public BaseTab
{
    Q_OBJECT
public:
    /// Indices of commandMatrix().
    enum Command { CdExtraction, Rename, ReplayGain, DeEmphasis, DvdAudio, SampleRateConversion };

    explicit UtilTab(TabHost &host, CdAccess access = {});

    ChoiceControl &commandMatrix() { return m_commandMatrix; }
    ChoiceControl &replayGainMatrix() { return m_replayGainMatrix; }
    ToggleControl &oneTrackButton() { return m_oneTrackButton; }
    /// A rate and " kHz"; sampleRates() are the texts on offer.
    TextControl &sampleRateCombo() { return m_sampleRateCombo; }
    static QStringList sampleRates();
    LabelControl &dvdAudioDiscTime() { return m_dvdAudioDiscTime; }
    LabelControl &dvdAudioDiscSize() { return m_dvdAudioDiscSize; }

    QAbstractItemModel &tableModel() override { return m_table; }

    /// Device files of the machine's drives with what they read: "/dev/sr0 (DVD)".
    QStringList drives() const;
    /// Lists the audio tracks of the disc in a drive as if its files had been dropped. Says so where there is
    /// none. Returns at once.
    void addTracksOfDrive(const QString &device);
    /// The same for given tracks, without asking the drive.
    void addTracksOfDrive(const QString &device, CdTracks::Range tracks);

    void displayRelevantOptions() override;
    void executeCommand() override;

Q_SIGNALS:
    /// Files were renamed, which no job tells of.
    void filesRenamed(const QList<BatchRename::Move> &moves);
    /// The drive was asked for its tracks.
    void tracksOfDriveListed();

protected:
    void filesAdded() override;

private:
    using Results = std::shared_ptr<KruvTaskResults>;
    using SoxJob = std::function<std::shared_ptr<OutputTask>(const QString &file, const QString &folder,
                                                             const Results &results)>;

    void chooseCommand();
    void extractCd();
    CDExtractTask::Request cdRequest(const QString &folder, const QString &bsdName) const;
    QString getProvider(const QString &bsdName) const;
    void batchRename();
    void replayGain();
    void convertSampleRate();
    void applyDeEmphasis();
    void runSox(const QString &suffix, const SoxJob &makeJob);
    void authorDvd();

    void findFormatInfo();
    void formatsFound();
    QHash<QString, AudioFormatObject> formatsOf(const QStringList &files, const std::stop_token &stop) const;
    void makeImage();
    void showDiscSize();
    /// Returns whether the files of the list don't go on one disc.
    bool tellOfMismatch();

    void showError(const QString &message);

    CdAccess m_access;
    FormatTable m_table;
    ChoiceControl m_commandMatrix;
    ChoiceControl m_replayGainMatrix;
    ToggleControl m_oneTrackButton;
    TextControl m_sampleRateCombo;
    LabelControl m_dvdAudioDiscTime;
    LabelControl m_dvdAudioDiscSize;
    int m_commandMatrixLastSelectedCell = CdExtraction;
    bool m_asking = false;
    bool m_busy = false;
    bool m_scanning = false;
    bool m_authorsOnceScanned = false;
    BackgroundWork m_work;
};

} // namespace kruv
