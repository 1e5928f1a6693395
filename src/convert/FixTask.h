// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioOutputTask.h"
#include "audio/Proof.h"

#include <QCoreApplication>
#include <QHash>
#include <QMap>

#include <functional>

namespace kruv {

class Preferences;
struct Format;

/// Runs `shntool fix` over a whole set of tracks, so that each but the last ends on a CD sector boundary
/// (a multiple of 588 frames), then copies tags and writes a checksum list for the fixed files. Fixing moves
/// audio from one file to the next: either all of them are there in the end, or none.
class FixTask final : public AudioOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::FixTask)
public:
    /// The lists that are written of the fixed files: MD5 of Shorten files, fingerprints of FLAC files.
    enum class ListKind { None, Md5, Md5ByDisc, Fingerprints };
    struct Request
    {
        QStringList fileNames; ///< in the order of the set
        const Format *target = nullptr;
        QString outputPath; ///< folder
        ListKind list = ListKind::None;
        int flacLevel = 0;
    };

    /// `clearTab` is called on the main thread when the job ends.
    FixTask(TaskCompletionSink *queue, Request request, std::function<void()> clearTab);

    void stopTask() override;
    QString inputPath() const override { return m_request.fileNames.value(0); }
    QString outputPath() const override { return m_request.outputPath; }
    JobOutline outline() const override;

    static QStringList fixArguments(const QStringList &fileNames, const Format &target,
                                    const QString &outputPath, int flacLevel);
    /// Everything that the job makes: fixed files and lists.
    static QStringList outputs(const Request &request, const Preferences &preferences);
    /// The file's disc by its name's "d<disc>t<track>"; empty where its path says nothing of the kind.
    static QString disc(const QString &path);
    /// Less every number that stands before a percent sign.
    static QString stripPercent(const QString &text);

protected:
    QStringList sources() const override { return m_request.fileNames; }
    QStringList tools() const override;
    void make(StagedOutputs &outputs) override;
    void dress(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;
    bool isOriginal(const QString &source) const override;

private:
    /// The fixed files that go into each list, by the list's path.
    using Lists = QMap<QString, QStringList>;
    static Lists lists(const Request &request, const Preferences &preferences);
    static QStringList fixedFiles(const Request &request);

    void doFixCall(const QString &staging);
    void requireSectorBoundaries(const Proof::Finding &finding) const;
    void checkOutputs(const StagedOutputs &outputs);
    void processTaskOutput(const QString &piece);
    void showCurrentFile(QStringView piece);
    void copyTags(const StagedOutputs &outputs);
    QString md5List(const StagedOutputs &outputs, const QStringList &files);
    QString fingerprintList(const StagedOutputs &outputs, const QStringList &files);

    const Request m_request;
    const std::function<void()> m_clearTab;
    /// File name less its extension to its place in the list, counted from 1.
    QHash<QString, QString> m_fileNameDictionary;
    /// The tool's words from the latest "Fixing [" on, until the name is whole.
    QString m_currentLine;
    QString m_totalOutput;
};

} // namespace kruv
