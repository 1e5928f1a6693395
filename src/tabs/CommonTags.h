// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QStringList>

#include <bitset>
#include <functional>
#include <memory>
#include <stop_token>

namespace kruv {

/// What the tags of several files have in common.
struct CommonTags
{
    /// Texts that are not the same in all files are empty, and so is a picture that isn't. Null without any
    /// file.
    std::shared_ptr<TagsObject> record;
    /// The texts that are not the same, by TagField.
    std::bitset<tagFieldCount> differing;
    bool picturesDiffer = false;

    /// Reads the files in order; `progress` is told how many are done. Ends early when asked to stop. What
    /// can't be read counts as untagged. Any thread.
    static CommonTags read(const QStringList &files, const std::stop_token &stop,
                           const std::function<void(qsizetype done)> &progress);

private:
    void compare(const TagsObject &next);
};

} // namespace kruv
