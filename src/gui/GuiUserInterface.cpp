// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/GuiUserInterface.h"

#include "base/Preferences.h"
#include "gui/CustomTagsPanel.h"
#include "gui/JobActions.h"
#include "gui/KruvStringGetterPanel.h"
#include "gui/KruvTrimCharsPanel.h"
#include "gui/OutputWindowController.h"
#include "gui/PromptStyle.h"
#include "gui/QueueProgress.h"
#include "gui/StatusPanel.h"
#include "platform/DesktopNotifier.h"
#include "platform/LauncherBadge.h"
#include "tasks/KruvTaskQueue.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <utility>

namespace kruv {

namespace {

const QString outputFolderKey = QStringLiteral("lastOutputFolder");
const QString inputFolderKey = QStringLiteral("lastInputFolder");
const QString saveFolderKey = QStringLiteral("lastSaveFolder");

/// Which button Escape presses: the one that changes nothing, where there is one.
int harmlessButton(const QStringList &buttons)
{
    for (const QString &word : {UserInterface::cancel(), UserInterface::no()}) {
        if (const auto index = buttons.indexOf(word); index >= 0) {
            return static_cast<int>(index);
        }
    }
    return static_cast<int>(buttons.size()) - 1;
}

QMessageBox::ButtonRole roleOf(const QString &word, int index, int harmless)
{
    if (index == harmless) {
        return QMessageBox::RejectRole;
    }
    return word == UserInterface::yes() || index == 0 ? QMessageBox::AcceptRole : QMessageBox::ActionRole;
}

/// Of file names with these extensions, in either case.
QString patternsOf(const QStringList &types)
{
    QStringList patterns;
    for (const QString &type : types) {
        patterns << QStringLiteral("*.") + type.toLower() << QStringLiteral("*.") + type.toUpper();
    }
    return patterns.join(u' ');
}

} // namespace

/// The desktop's services, reached for with the first job and not while the window opens.
struct GuiUserInterface::Desktop
{
    DesktopNotifier notifier;
    LauncherBadge badge;
};

GuiUserInterface::GuiUserInterface(Preferences &preferences)
    : m_preferences(preferences)
{
    m_statusPanelSoon.setSingleShot(true);
    connect(&m_statusPanelSoon, &QTimer::timeout, this, &GuiUserInterface::updateStatusPanel);
}

GuiUserInterface::~GuiUserInterface() = default;

void GuiUserInterface::attach(QWidget *mainWindow, KruvTaskQueue &queue)
{
    m_mainWindow = mainWindow;
    m_queue = &queue;
    m_progress = std::make_unique<QueueProgress>(queue, nullptr);
    m_jobActions = std::make_unique<JobActions>(queue);
    // The results of the last job come after this signal.
    connect(
        &queue, &KruvTaskQueue::becameIdle, this, [this] { m_windowsOfRun = 0; }, Qt::QueuedConnection);
    connect(m_progress.get(), &QueueProgress::changed, this, [this] {
        desktop().badge.setProgress(m_progress->isBusy() ? std::optional(m_progress->fraction())
                                                         : std::nullopt);
    });
}

void GuiUserInterface::leave()
{
    m_statusPanelSoon.stop();
    m_queue = nullptr;
    m_statusPanel.reset();
    m_jobActions.reset();
    m_progress.reset();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        window->hide();
    }
}

StatusPanel *GuiUserInterface::statusPanel()
{
    if (!m_statusPanel && m_queue) {
        m_statusPanel =
            std::make_unique<StatusPanel>(*m_queue, *m_progress, *m_jobActions, m_preferences, m_mainWindow);
        connect(m_statusPanel.get(), &StatusPanel::outputWanted, this, &GuiUserInterface::openWindow);
    }
    return m_statusPanel.get();
}

QWidget *GuiUserInterface::dialogParent() const
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    // A dialog that stands open beside the main window, and gets the keyboard back.
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeWindow());
    return dialog ? dialog : m_mainWindow.data();
}

int GuiUserInterface::ask(Matter, const QString &title, const QString &text, const QStringList &buttons,
                          int defaultButton)
{
    return askBesidePicture(title, text, buttons, defaultButton, {});
}

int GuiUserInterface::askBesidePicture(const QString &title, const QString &text, const QStringList &buttons,
                                       int defaultButton, const QImage &picture)
{
    const int harmless = harmlessButton(buttons);
    if (!m_queue) {
        return harmless;
    }
    QPointer<QMessageBox> box = PromptStyle::message(dialogParent(), title, text);
    box->setAttribute(Qt::WA_DeleteOnClose, false);
    box->setObjectName(QStringLiteral("question"));
    QList<QAbstractButton *> pushButtons;
    for (int index = 0; index < buttons.size(); ++index) {
        QPushButton *button = box->addButton(buttons[index], roleOf(buttons[index], index, harmless));
        if (index == defaultButton) {
            box->setDefaultButton(button);
        }
        if (index == harmless) {
            box->setEscapeButton(button);
        }
        pushButtons.append(button);
    }
    if (picture.isNull()) {
        box->setIcon(buttons.size() > 1 ? QMessageBox::Question : QMessageBox::Information);
    } else {
        constexpr int side = 128; // device-independent pixels
        const qreal scale = box->devicePixelRatioF();
        QPixmap pixmap = QPixmap::fromImage(
            picture.scaled(QSize(side, side) * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        pixmap.setDevicePixelRatio(scale);
        box->setIconPixmap(pixmap);
    }
    box->exec();
    if (!box) {
        return harmless;
    }
    const auto pressed = pushButtons.indexOf(box->clickedButton());
    delete box;
    return pressed < 0 ? harmless : static_cast<int>(pressed);
}

void GuiUserInterface::remark(const QString &sentence)
{
    openResultsWindow(sentence, tr("Note"));
}

void GuiUserInterface::alert(const QString &title, const QString &text, const QString &button)
{
    askBesidePicture(title, text, {button}, 0, {});
}

QStringList GuiUserInterface::runFileDialog(QFileDialog &dialog, const QString &folderKey)
{
    if (const QString folder = m_preferences.string(folderKey); QFileInfo(folder).isDir()) {
        dialog.setDirectory(folder);
    }
    if (!m_queue || dialog.exec() != QDialog::Accepted) {
        return {};
    }
    QStringList chosen = dialog.selectedFiles();
    m_preferences.setValue(folderKey, dialog.fileMode() == QFileDialog::Directory
                                          ? chosen.value(0)
                                          : dialog.directory().absolutePath());
    return chosen;
}

std::optional<QString> GuiUserInterface::chooseFolder(const QString &title)
{
    QFileDialog dialog(dialogParent(), title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, tr("Choose"));
    const QStringList chosen = runFileDialog(dialog, outputFolderKey);
    return chosen.isEmpty() ? std::nullopt : std::optional(QDir::cleanPath(chosen.constFirst()));
}

QStringList GuiUserInterface::chooseFiles(const QString &title, const QString &prompt,
                                          const QStringList &types)
{
    QFileDialog dialog(dialogParent(), title);
    dialog.setOption(QFileDialog::HideNameFilterDetails); // two dozen patterns
    if (!types.isEmpty()) {
        dialog.setNameFilters({tr("Files of use here (%1)").arg(patternsOf(types)), tr("All files (*)")});
    }
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setLabelText(QFileDialog::Accept, prompt);
    return runFileDialog(dialog, inputFolderKey);
}

std::optional<QString> GuiUserInterface::chooseFile(const QString &title, const QStringList &types)
{
    QFileDialog dialog(dialogParent(), title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({patternsOf(types), tr("All files (*)")});
    const QStringList chosen = runFileDialog(dialog, inputFolderKey);
    return chosen.isEmpty() ? std::nullopt : std::optional(QDir::cleanPath(chosen.constFirst()));
}

std::optional<QString> GuiUserInterface::savePath(const QString &message, const QString &title,
                                                  const QString &proposedName)
{
    QFileDialog dialog(dialogParent(), title.isEmpty() ? message : title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    const QFileInfo proposed(proposedName);
    if (proposed.isAbsolute()) {
        m_preferences.setValue(saveFolderKey, proposed.absolutePath());
    }
    dialog.selectFile(proposed.fileName());
    const QStringList chosen = runFileDialog(dialog, saveFolderKey);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen.constFirst());
}

std::optional<QString> GuiUserInterface::enterText(const QString &title, const QString &message,
                                                   const QString &initialText)
{
    return KruvStringGetterPanel(dialogParent())
        .runPanel({.title = title, .message = message, .initialString = initialText});
}

std::optional<TrimCharsObject> GuiUserInterface::trimCharacters()
{
    return KruvTrimCharsPanel(dialogParent()).runPanel();
}

UserInterface::CustomTagRows GuiUserInterface::editCustomTags(const CustomTagRows &rows)
{
    return CustomTagsPanel(dialogParent()).runPanel(rows);
}

void GuiUserInterface::showStatusPanel()
{
    m_bringToFront = true;
    m_statusPanelSoon.start();
}

void GuiUserInterface::scrollStatusPanelTo(int row)
{
    m_scrollTo = row;
    m_statusPanelSoon.start();
}

void GuiUserInterface::closeStatusPanel()
{
    m_statusPanelSoon.stop();
    m_bringToFront = false;
    m_scrollTo = -1;
    if (m_statusPanel) {
        m_statusPanel->hide();
    }
}

void GuiUserInterface::updateStatusPanel()
{
    StatusPanel *panel = statusPanel();
    if (!panel) {
        return;
    }
    if (std::exchange(m_bringToFront, false)) {
        panel->bringToFront();
    }
    if (const int row = std::exchange(m_scrollTo, -1); row >= 0) {
        panel->scrollTo(row);
    }
}

void GuiUserInterface::openResultsWindow(const QString &text, const QString &title)
{
    constexpr int mostOfRun = 5;
    if (!m_queue) {
        return;
    }
    if (m_windowsOfRun < mostOfRun) {
        ++m_windowsOfRun;
        openWindow(text, title);
        return;
    }
    if (!m_moreOutput) {
        m_moreOutput = openWindow({}, tr("More output"));
    }
    m_moreOutput->addText(text, title);
}

OutputWindowController *GuiUserInterface::openWindow(const QString &text, const QString &title)
{
    constexpr int step = 28; // device-independent pixels, both ways
    auto *window = new OutputWindowController;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setTextValue(text, title);
    const QScreen *screen = m_mainWindow ? m_mainWindow->screen() : QApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    if (m_outputWindowTopLeft.isNull() && m_mainWindow) {
        m_outputWindowTopLeft = m_mainWindow->pos();
    }
    m_outputWindowTopLeft += QPoint(step, step);
    if (!room.contains(QRect(m_outputWindowTopLeft, window->size()))) {
        m_outputWindowTopLeft = room.topLeft() + QPoint(step, step);
    }
    window->move(m_outputWindowTopLeft);
    window->show();
    return window;
}

GuiUserInterface::Desktop &GuiUserInterface::desktop()
{
    if (!m_desktop) {
        m_desktop = std::make_unique<Desktop>();
        connect(&m_desktop->notifier, &DesktopNotifier::refused, this, &GuiUserInterface::requestAttention);
    }
    return *m_desktop;
}

void GuiUserInterface::setBadge(int count)
{
    desktop().badge.setCount(count);
}

bool GuiUserInterface::notify(const QString &title)
{
    return desktop().notifier.notify(title);
}

void GuiUserInterface::requestAttention()
{
    if (m_mainWindow) {
        QApplication::alert(m_mainWindow);
    }
}

} // namespace kruv
