// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"
#include "util/ChangeTagsTask.h"

#include <QCoreApplication>

#include <array>

namespace kruv {

/// `kruv tags set`: changes the named tags of files and leaves the others as they are.
class TagsSetVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagsSetVerb)
public:
    explicit TagsSetVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    TagChanges changes();
    void takeCustomTags(TagChanges &changes) const;
    /// Says what can't be kept in which kinds of files; that isn't success.
    void reportUnheld(const QStringList &files, const TagChanges &changes);

    std::array<std::string, tagFieldCount> m_texts; // by TagField
    std::vector<std::string> m_customTags;
    std::string m_art;
    bool m_writeEmpty = false;
};

} // namespace kruv
