// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/HistoryExport.h"

#include "base/TextFile.h"
#include "gui/PromptStyle.h"
#include "tabs/HistoryCsv.h"
#include "tabs/HistoryJson.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

#include <memory>

namespace kruv::HistoryExport {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::HistoryExport)
};

std::unique_ptr<HistoryReport> makeReport(bool isJson, const HistoryReport::Sink &write)
{
    if (isJson) {
        return std::make_unique<HistoryJson>(write);
    }
    return std::make_unique<HistoryCsv>(write);
}

} // namespace

void askAndSave(QWidget *parent, const std::vector<HistoryEntry> &entries)
{
    const QString csv = Text::tr("Comma-separated values (*.csv)");
    const QString json = Text::tr("JSON, an object a line (*.json)");
    QString kind = csv;
    const QString path = QFileDialog::getSaveFileName(parent, Text::tr("Export history"),
                                                      Text::tr("History") + QStringLiteral(".csv"),
                                                      csv + QStringLiteral(";;") + json, &kind);
    if (path.isEmpty()) {
        return;
    }
    QString text;
    const bool isJson = kind == json || path.endsWith(QStringLiteral(".json"), Qt::CaseInsensitive);
    const auto report = makeReport(isJson, [&text](const QString &piece) { text += piece; });
    report->beginFound();
    for (const HistoryEntry &entry : entries) {
        report->entry(entry);
    }
    if (const QString problem = TextFile::write(path, text); !problem.isEmpty()) {
        PromptStyle::message(parent, Text::tr("The history could not be saved."),
                             QStringLiteral("%1\n%2").arg(path, problem))
            ->open();
    }
}

} // namespace kruv::HistoryExport
