// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/FileListSummary.h"

#include "tabs/BaseTab.h"

#include <QFileInfo>
#include <QLocale>

#include <chrono>

namespace kruv {

namespace {

QString countText(int count)
{
    return count == 1 ? FileListSummary::tr("1 file") : FileListSummary::tr("%Ln files", nullptr, count);
}

} // namespace

FileListSummary::FileListSummary(BaseTab &tab, QWidget *parent)
    : QLabel(parent)
    , m_tab(tab)
{
    setObjectName(QStringLiteral("summary"));
    m_lookUpSoon.setSingleShot(true);
    m_lookUpSoon.setInterval(std::chrono::milliseconds(50));
    connect(&m_lookUpSoon, &QTimer::timeout, this, &FileListSummary::lookUpSizes);
    connect(&tab.fileList(), &QAbstractItemModel::modelReset, this, &FileListSummary::refresh);
    connect(&tab, &BaseTab::takingInChanged, this, &FileListSummary::refresh);
    refresh();
}

void FileListSummary::refresh()
{
    m_work.abandon();
    const int count = m_tab.fileList().count();
    if (m_tab.isTakingIn()) {
        setText(tr("Reading folders…"));
    } else {
        setText(count == 0 ? tr("No files") : countText(count));
        m_lookUpSoon.start();
    }
}

void FileListSummary::lookUpSizes()
{
    if (m_tab.fileList().isEmpty()) {
        return;
    }
    m_work.start([this, paths = m_tab.fileNames()](const std::stop_token &stop) {
        qint64 bytes = 0;
        for (const QString &path : paths) {
            if (stop.stop_requested()) {
                break;
            }
            bytes += QFileInfo(path).size();
        }
        return [this, bytes] { showSize(bytes); };
    });
}

void FileListSummary::showSize(qint64 bytes)
{
    constexpr qint64 gigabyte = 1'000'000'000;
    const int decimals = bytes < gigabyte ? 0 : 1;
    setText(QStringLiteral("%1, %2").arg(
        countText(m_tab.fileList().count()),
        QLocale().formattedDataSize(bytes, decimals, QLocale::DataSizeSIFormat)));
}

} // namespace kruv
