// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

class TagsObject;

/// `kruv tags show`: what the tags of files say.
class TagsShowVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::TagsShowVerb)
public:
    explicit TagsShowVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    void show(const QString &file, const TagsObject &record) const;
};

} // namespace kruv
