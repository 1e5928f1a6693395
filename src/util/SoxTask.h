// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/StagedTask.h"
#include "util/SoxOutput.h"

#include <memory>

namespace kruv {

class OutputWatch;
class TagsObject;

/// Runs one effect of sox over one sound file and copies the tags, which sox doesn't know.
class SoxTask : public StagedTask
{
public:
    QString outputPath() const override;
    /// Where the output of `source` goes.
    static QString outputFor(const QString &source, const QString &folder, const QString &suffix);

protected:
    /// What the effects differ in.
    struct Recipe
    {
        QString status;
        QString suffix; ///< of the output's name
        QStringList effect;
        QString progress; ///< what stands before the percentage
        QString failure;  ///< what a log says before the output that could not be read
        QStringList taggedTypes;
        double sampleRate = 0; ///< of the output, in Hz; 0 means the source's own
    };

    SoxTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputFolder, Recipe recipe,
            std::shared_ptr<KruvTaskResults> results);
    ~SoxTask() override;

    void doStartTask() override;

private:
    std::shared_ptr<TagsObject> readTags();
    void writeTags(const TagsObject &tags);
    void processTaskOutput(const QString &piece);
    void checkLength();

    const QString m_outputFolder;
    const Recipe m_recipe;
    SoxOutput::Messages m_messages;
    bool m_saidDone = false;
};

} // namespace kruv
