// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

namespace kruv {

class EncodeTab;

/// `kruv encode`: the encode tab.
class EncodeVerb : public TabVerb
{
public:
    explicit EncodeVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    void declareFormatFlags();
    void checkFlags(const QString &format);
    void setLevel(EncodeTab &tab, const QString &format) const;
    void setControls(EncodeTab &tab);

    std::string m_format;
    int m_level = -1;
    bool m_lax = false;
    bool m_verify = false;
    bool m_keepForeignMetadata = false;
    bool m_fingerprints = false;
    bool m_md5 = false;
    std::string m_wavpackMode;
};

} // namespace kruv
