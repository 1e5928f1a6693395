// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/OptionValues.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace kruv {

/// What one run of a codec's tool is to do.
struct ToolRequest
{
    QString input;
    QString output;
    OptionValues options = {};
};

/// What one piece of a tool's output tells.
struct ToolPiece
{
    /// Where the piece has one.
    std::optional<double> percentage;
    /// What the status line says: the percentage, and what goes with it (a ratio, the seconds that remain).
    QString percentageText;
    QString detail;
    /// For the job's results.
    QString results;
    /// The tool tells of a failure that its exit status may not show.
    bool failed = false;
};

/// `name` is the last path component of the tool's input, which some tools print and which may itself look
/// like what is searched for.
using ToolReader = ToolPiece (*)(QStringView piece, QStringView name);

/// One run of a tool of the resources folder: its argument list and the reader of its output are pure
/// functions.
struct ToolStep
{
    const char *tool;
    QStringList (*arguments)(const ToolRequest &request);
    ToolReader read;
    /// Status line; %1 is the percentage, %2 what goes with it.
    const char *progress;
};

} // namespace kruv
