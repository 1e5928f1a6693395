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

/// What of a file's tags would be gone with the file, because another one can't hold it.
struct TagLosses
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagLosses)
public:
    bool texts = false;
    bool pictures = false;
    bool customTags = false;

    bool isAny() const { return texts || pictures || customTags; }

    /// `target` is null where files have no tags.
    static TagLosses of(const TagsObject &record, const TagAccess *target);

    using ByFile = QHash<QString, TagLosses>;
    /// Of those files that would lose anything. Reads their tags, on several threads; not for the main thread
    /// where a person waits.
    static ByFile ofFiles(const QStringList &files, const TagAccess *target,
                          const std::function<bool()> &stopped);

    /// One sentence for each kind of loss, in numbers; `label` is the target's.
    static QStringList sentences(const ByFile &losses, const QString &label);
    /// Why an original stays, a clause.
    QString reason(const QString &label) const;
};

} // namespace kruv
