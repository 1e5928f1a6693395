// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/ToolCatalog.h"

#include <QString>

namespace kruv {

struct FoundTool
{
    ToolInfo info;
    /// Where it is; empty when missing.
    QString path;
    QString version;
};

namespace ToolCatalog {

/// Looks a tool up and asks it for its version. Blocks for as long as the tool takes; one that takes more
/// than five seconds is ended.
FoundTool find(const ToolInfo &info);

} // namespace ToolCatalog
} // namespace kruv
