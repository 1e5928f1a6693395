// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

class UtilTab;

/// `kruv util extract-cd`: the tracks of a disc, named by their files or by the drive.
class UtilExtractCdVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UtilExtractCdVerb)
public:
    explicit UtilExtractCdVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    void listTracksOfDrive(UtilTab &tab) const;
    void keepTracks(UtilTab &tab) const;

    std::string m_device;
    std::string m_tracks;
    bool m_oneFile = false;
};

} // namespace kruv
