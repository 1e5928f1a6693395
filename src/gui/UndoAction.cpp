// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/UndoAction.h"

#include "gui/GuiUserInterface.h"
#include "tabs/KruvController.h"
#include "tabs/Undoing.h"

#include <QApplication>

#include <stdexcept>

namespace kruv {

UndoAction::UndoAction(KruvController &controller, GuiUserInterface &userInterface, QObject *parent)
    : QAction(tr("&Undo"), parent)
    , m_controller(controller)
    , m_userInterface(userInterface)
{
    setObjectName(QStringLiteral("undo"));
    setShortcut(QKeySequence::Undo);
    connect(this, &QAction::triggered, this, &UndoAction::undoLatest);
}

void UndoAction::refresh()
{
    m_controller.journal().waitUntilWritten();
    QString title;
    try {
        const auto run = Undoing::latest();
        title = run ? Undoing(*run).title() : QString();
    } catch (const std::runtime_error &) { // the History window says why
    }
    setText(title.isEmpty() ? tr("Nothing to Undo") : tr("&Undo %1").arg(title));
    setEnabled(!title.isEmpty());
}

void UndoAction::undoLatest()
{
    attempt([this] {
        m_controller.journal().waitUntilWritten();
        if (const auto run = Undoing::latest()) {
            begin(*run);
        } else {
            QApplication::beep();
        }
    });
}

void UndoAction::undo(const HistoryRun &run)
{
    attempt([&] { begin(run); });
}

void UndoAction::attempt(const std::function<void()> &work)
{
    try {
        work();
    } catch (const std::runtime_error &error) {
        m_userInterface.alert(tr("The journal can't be read."), QString::fromUtf8(error.what()), tr("OK"));
    }
}

void UndoAction::begin(const HistoryRun &run)
{
    auto *undoing = new Undoing(run);
    undoing->setParent(this);
    const QStringList stays = undoing->whatStays();
    enum Answer { Undo, Cancel };
    if (undoing->jobs() == 0 ||
        (!stays.isEmpty() &&
         m_userInterface.ask(UserInterface::Matter::Other, tr("Undo %1?").arg(undoing->title()),
                             stays.join(u'\n'), {tr("Undo"), UserInterface::cancel()}, Undo) != Undo)) {
        delete undoing;
        return;
    }
    if (!undoing->take()) {
        delete undoing;
        m_userInterface.alert(tr("Run %1 is being undone already, or was undone just now.").arg(run.id),
                              QString(), tr("OK"));
        return;
    }
    connect(undoing, &Undoing::finished, this, [this, undoing](qsizetype done, const QStringList &problems) {
        if (!problems.isEmpty()) {
            m_userInterface.openResultsWindow(
                tr("%n job(s) were undone. These could not be:", nullptr, static_cast<int>(done)) +
                    QStringLiteral("\n\n") + problems.join(u'\n'),
                tr("Undo"));
        }
        undoing->deleteLater();
    });
    m_controller.runRecorder().announce(Undoing::command, {});
    undoing->queueJobs(m_controller.taskQueue(), m_controller.journal());
}

} // namespace kruv
