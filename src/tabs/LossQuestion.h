// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "formats/TagLosses.h"

#include <QHash>
#include <QStringList>

#include <functional>

namespace kruv {

struct ConversionOrder;
struct Format;
class TabHost;

/// The questions before originals go that can't be got back from the new files: whose sound is computed anew,
/// or whose tags these can't hold. Files are read for it, so it is for commands that delete only. Main
/// thread.
class LossQuestion
{
public:
    /// The originals that are to stay, each with the reason.
    using Kept = QHash<QString, QString>;
    struct Answer
    {
        Kept kept = {};
        /// Originals go also where the new files have other samples on purpose.
        bool mayDeleteChanged = false;
    };
    using GoOn = std::function<void(const Answer &answer)>;
    struct Run
    {
        QStringList files;
        /// What the new files are, null where they get no tags; and what they are called.
        const Format *target = nullptr;
        QString label = {};
        /// Of the originals that need no question.
        TagLosses::KeptChunks chunks = TagLosses::KeptChunks::None;
    };

    struct Found
    {
        TagLosses::ByFile losses = {};
        QStringList changed = {};
    };
    /// What a conversion of these files asks about.
    static Run runOf(const ConversionOrder &order, const QStringList &files);
    /// `atTags`: also at what their tags hold. Any thread.
    static Found look(const Run &run, bool atTags, const std::function<bool()> &stopped);

    explicit LossQuestion(TabHost &host)
        : m_host(host)
    {
    }

    /// Goes on at once where nothing is lost or all was agreed to before, and not at all where the person
    /// cancels. `inBackground`: the files are read on the pool, and it goes on later.
    void settle(const Run &run, bool inBackground, const GoOn &goOn);
    /// Whether files are being read.
    bool isOpen() const { return m_isOpen; }

private:
    void ask(const Found &found, const QString &label, const GoOn &goOn);

    TabHost &m_host;
    bool m_isOpen = false;
    BackgroundWork m_work;
};

} // namespace kruv
