// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/DropPage.h"

class QPushButton;
class QStackedWidget;

namespace kruv {

class BaseTab;
class FileListView;
class OptionColumn;

/// The skeleton of every working tab: the list of files, the tab's options beside it, and a bar below with
/// adding and clearing, what the list holds, and the tab's one command. A tab's own view adds its options and
/// names the command.
class TabView : public DropPage
{
    Q_OBJECT
public:
    /// `tab` must outlive the view. `kinds` are the file types that it takes.
    TabView(BaseTab &tab, const QStringList &kinds, QWidget *parent);

    /// Presses the command's button.
    void runCommand();
    /// Shows what the command would do. For tabs that can tell.
    virtual void showPlan() {}
    virtual bool canShowPlan() const { return false; }

protected:
    OptionColumn &options() { return *m_options; }
    FileListView &list() { return *m_list; }
    /// Names the command, with a mnemonic.
    void setCommand(const QString &text);
    /// Why the command can't run now although there are files; empty when it can.
    virtual QString reasonToWait() const { return {}; }
    void showWhetherCommandRuns();
    /// The command's button was pressed.
    virtual void commandPressed();

    /// What may stand in the place of the list and its options, with a button that leads back. `last`: what
    /// the Tab key reaches last in it.
    void setSheet(QWidget *sheet, QWidget *last);
    void showSheet(bool shown);
    bool isSheetShown() const;
    /// The way back from the sheet was taken.
    virtual void backPressed() {}

    void filesDropped(const QStringList &paths) override;
    void showDrop(bool shown) override;

private:
    QLayout *makeBar();

    BaseTab &m_tab;
    QStackedWidget *m_pages; // the list, or what stands in its place
    FileListView *m_list;
    OptionColumn *m_options;
    QPushButton *m_back;
    QPushButton *m_add;
    QPushButton *m_clear;
    QPushButton *m_command;
};

} // namespace kruv
