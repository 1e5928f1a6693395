// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioOutputTask.h"
#include "util/SoxOutput.h"

#include <QCoreApplication>

#include <memory>

namespace kruv {

class TagsObject;
struct Format;

/// Runs one effect of sox over one sound file and copies the tags, which sox doesn't know.
class SoxTask : public AudioOutputTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SoxTask)
public:
    QString outputPath() const override;
    /// Where the output of `source` goes.
    static QString outputFor(const QString &source, const QString &folder, const QString &suffix);
    static QStringList arguments(const QString &source, const QString &output, const QStringList &effect);

protected:
    /// What the effects differ in.
    struct Recipe
    {
        QString status;
        QString suffix; ///< of the output's name
        QStringList effect;
        QString progress;             ///< with a place for the percentage
        QString failure;              ///< what a log says before the output that could not be read
        QList<const Format *> tagged; ///< sources whose tags are copied
        double sampleRate = 0;        ///< of the output, in Hz; 0 means the source's own
    };

    SoxTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputFolder, Recipe recipe,
            std::shared_ptr<KruvTaskResults> results);
    ~SoxTask() override;

    QStringList tools() const override { return {QStringLiteral("sox")}; }
    void make(StagedOutputs &outputs) override;
    void dress(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;
    void committed(const StagedOutputs &outputs) override;

private:
    std::shared_ptr<TagsObject> readTags();
    QString soxInput(StagedOutputs &outputs);
    void processTaskOutput(const QString &piece);
    void checkLength(const QString &output);

    const QString m_outputFolder;
    const Recipe m_recipe;
    std::shared_ptr<TagsObject> m_tags; // for the output
    SoxOutput::Messages m_messages;
};

} // namespace kruv
