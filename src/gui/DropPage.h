// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

namespace kruv {

/// A page that takes files and folders dropped anywhere on it.
class DropPage : public QWidget
{
    Q_OBJECT
public:
    explicit DropPage(QWidget *parent);

protected:
    virtual void filesDropped(const QStringList &paths) = 0;
    /// Files are held over the page, or no longer.
    virtual void showDrop(bool) {}

    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};

} // namespace kruv
