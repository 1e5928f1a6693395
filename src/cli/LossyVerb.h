// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

namespace kruv {

class LossyTab;

/// `kruv lossy`: the lossy tab.
class LossyVerb : public TabVerb
{
public:
    explicit LossyVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    struct Format;
    static const Format formats[];

    const Format &chosenFormat() const;
    void selectMode(LossyTab &tab, const Format &format) const;
    void setRate(LossyTab &tab, const Format &format) const;

    std::string m_format;
    std::string m_mode;
    int m_bitRate = -1;
    int m_quality = -1;
    std::string m_frameSize;
};

} // namespace kruv
