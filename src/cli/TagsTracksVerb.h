// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"
#include "util/ChangeTagsTask.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv tags names` and `kruv tags cue`: titles and track numbers from a track list or a cue sheet.
class TagsTracksVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagsTracksVerb)
public:
    enum class Source { TrackList, CueSheet };

    TagsTracksVerb(CLI::App &parent, Source source);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    QString readFile() const;
    void takeTrackList(qsizetype files);
    void takeCueSheet(qsizetype files);
    void checkCount(qsizetype files) const;
    TagChanges changesOf(qsizetype file) const;

    const Source m_source;
    std::string m_file;
    QStringList m_names;
    TagChanges m_ofAll;
};

} // namespace kruv
