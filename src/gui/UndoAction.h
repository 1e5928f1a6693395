// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAction>

#include <functional>

namespace kruv {

class GuiUserInterface;
class KruvController;
struct HistoryRun;

/// Edit › Undo: names what it would undo, and does it.
class UndoAction : public QAction
{
    Q_OBJECT
public:
    /// Both must outlive it.
    UndoAction(KruvController &controller, GuiUserInterface &userInterface, QObject *parent);

    /// Looks what there is to be undone, for a menu that opens.
    void refresh();
    /// Asks first where something of the run can't be put back.
    void undo(const HistoryRun &run);

private:
    void undoLatest();
    void begin(const HistoryRun &run);
    void attempt(const std::function<void()> &work);

    KruvController &m_controller;
    GuiUserInterface &m_userInterface;
};

} // namespace kruv
