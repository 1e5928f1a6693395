// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

#include <functional>

namespace kruv {

class TagsObject;
struct TagAccess;

/// What of a file beside its audio would be gone with the file, because another one can't hold it.
struct TagLosses
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagLosses)
public:
    bool texts = false;
    bool pictures = false;
    bool customTags = false;
    bool chunks = false; ///< what WAV and AIFF files hold beside audio and tags
    bool around = false; ///< tags before and behind FLAC

    bool isAny() const { return texts || pictures || customTags || chunks || around; }

    /// `target` is null where files have no tags.
    static TagLosses of(const TagsObject &record, const TagAccess *target);

    using ByFile = QHash<QString, TagLosses>;
    enum class KeptChunks { None, OfWav, All };
    /// What the new files hold.
    struct Target
    {
        const TagAccess *tags = nullptr;
        KeptChunks chunks = KeptChunks::None;
    };
    /// Of those files that would lose anything. Reads their tags, on several threads; not for the main thread
    /// where a person waits.
    static ByFile ofFiles(const QStringList &files, const Target &target,
                          const std::function<bool()> &stopped);

    /// One sentence for each kind of loss, in numbers; `label` is the target's.
    static QStringList sentences(const ByFile &losses, const QString &label);
    /// What files of that format can't hold, a clause.
    QString loss(const QString &label) const;
    /// Why an original stays, a clause that says what would let it go.
    QString reason(const QString &label) const;
};

} // namespace kruv
