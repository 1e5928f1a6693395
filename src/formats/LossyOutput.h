// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <optional>

/// Readers of the lossy encoders' progress: one piece of output in, the percentage out where the piece has
/// one. A reader that comes late gets several updates in one piece; the newest counts.
namespace kruv::LossyOutput {

std::optional<double> lame(QStringView piece);
std::optional<double> aacplusenc(QStringView piece);
std::optional<double> opusenc(QStringView piece);
/// shntool's conversions, less the text that goes into the results.
std::optional<double> shntool(QStringView piece);

} // namespace kruv::LossyOutput
