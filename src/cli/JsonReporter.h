// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/JobReporter.h"

class QJsonObject;

namespace kruv {

/// For programs: one JSON object a line on standard output.
class JsonReporter : public JobReporter
{
public:
    void started(const KruvTask &task) override;
    void progressed(const KruvTask &task) override;
    void ended(const KruvTask &task, const Totals &totals) override;
    void results(const QString &title, const QString &text) override;
    void message(const QString &line) override;
    void summary(const Totals &totals) override;

    static void writeLine(const QJsonObject &object);
};

} // namespace kruv
