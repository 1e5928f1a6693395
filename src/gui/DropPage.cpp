// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/DropPage.h"

#include "gui/FileDrop.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

namespace kruv {

DropPage::DropPage(QWidget *parent)
    : QWidget(parent)
{
    setAcceptDrops(true);
}

void DropPage::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        showDrop(true);
    }
}

void DropPage::dragLeaveEvent(QDragLeaveEvent *)
{
    showDrop(false);
}

void DropPage::dropEvent(QDropEvent *event)
{
    showDrop(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QStringList paths = FileDrop::localPaths(*event->mimeData());
    if (!paths.isEmpty()) {
        filesDropped(paths);
    }
}

} // namespace kruv
