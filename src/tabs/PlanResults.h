// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <optional>

namespace kruv {

struct FileStamp;

/// What the runs of a plan left in its folder of results: a file a run, of JSON lines, the first of which
/// names the plan and the shard.
namespace PlanResults {

/// How an entry ended, or all lists together.
struct Line
{
    std::optional<std::size_t> entry = {}; ///< nothing: the lists
    bool isDone = false;
    bool hasFailed = false; ///< else it was canceled
    QString reason = {};
    QJsonObject json = {};

    /// Whether the output is as that run left it. What other machines see of a file is its size and its time.
    bool isOf(const FileStamp &output) const;
};

QString shardKey();
QString planKey();

using Visitor = std::function<void(const Line &line)>;
/// Returns the shards, as texts, that runs did. Passes over what was cut off by a kill, and other plans'
/// results.
QStringList read(const QString &folder, const QString &plan, const Visitor &visit);

/// Adds it to a line.
void addStamp(QJsonObject &line, const FileStamp &output);

} // namespace PlanResults

} // namespace kruv
