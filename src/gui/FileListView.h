// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStackedWidget>

class QMenu;
class QRubberBand;
class QTreeView;

namespace kruv {

class BaseTab;

/// A tab's list of files in one column, or, while it is empty, what may be dropped there.
class FileListView : public QStackedWidget
{
    Q_OBJECT
public:
    /// `tab` must outlive the view. `kinds` are the file types it takes.
    FileListView(BaseTab &tab, const QStringList &kinds, QWidget *parent);

    /// Shows that files held over the list may be let go there.
    void setDropShown(bool shown);

    void selectAll();
    bool hasSelection() const;
    /// Selects the file before (-1) or after (1) the selected one; of several the last or the first; where
    /// none is selected, the first. At the end nothing changes.
    void selectBeside(int step);

Q_SIGNALS:
    /// The rows that are selected now. Not sent when the list itself changes, which selects nothing.
    void selectedRowsChanged(const QList<int> &rows);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeEmptyPage(const QStringList &kinds);
    void makeList();
    void showFittingPage();
    void fitColumn();
    void showContextMenu(const QPoint &position);
    void fillExtensionMenu(QMenu *menu);
    void deleteSelected();
    QList<int> selectedRows() const;

    BaseTab &m_tab;
    QWidget *m_empty;
    QTreeView *m_list;
    QRubberBand *m_dropMark = nullptr;
    int m_columnWidth = 0;
};

} // namespace kruv
