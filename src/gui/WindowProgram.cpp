// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/WindowProgram.h"

#include "base/Preferences.h"
#include "base/TaskPool.h"
#include "gui/DarkPalette.h"
#include "gui/FileDrop.h"
#include "gui/GuiUserInterface.h"
#include "gui/MainWindow.h"
#include "platform/BatteryWatch.h"
#include "platform/ColorScheme.h"
#include "platform/DesktopId.h"
#include "platform/OneWindow.h"
#include "platform/SignalWatcher.h"
#include "platform/SleepInhibitor.h"
#include "tabs/KruvController.h"
#include "tabs/Resumption.h"
#include "tasks/BatteryPause.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

/// Resources in a static library have to be asked for, from outside any namespace.
static void initializeIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace kruv::WindowProgram {

namespace {

constexpr int wrongUsage = 2;

/// The toolkit ends the process where it finds no display; a person gets a line that helps instead.
void reportMissingDisplay(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg) {
        std::fputs("kruv: there is no display to open a window on (kruv --help shows the commands)\n",
                   stderr);
        std::_Exit(wrongUsage);
    }
    if (type == QtCriticalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    }
}

/// The installed icon, or, where there is none, our own copy of it.
QIcon applicationIcon()
{
    initializeIcons();
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(size), QSize(size, size));
    }
    return QIcon::fromTheme(desktopId(), icon);
}

QStringList pathsOf(const QStringList &arguments)
{
    QStringList paths;
    for (const QString &argument : arguments) {
        paths.append(FileDrop::pathOfArgument(argument));
    }
    return paths;
}

/// What later starts of the program ask of this one.
void serveOtherStarts(OneWindow &one, MainWindow &window, KruvController &controller)
{
    QObject::connect(&one, &OneWindow::wanted, &window, [&window] {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.show();
        window.raise();
        window.activateWindow();
    });
    QObject::connect(&one, &OneWindow::tabWanted, &window, &MainWindow::selectTab);
    QObject::connect(&one, &OneWindow::filesGiven, &controller,
                     [&controller](const QStringList &files) { controller.addFiles(pathsOf(files)); });
    one.setRunTaker([&controller](std::int64_t run, const QString &journal) {
        return Resumption::takeOver(run, journal, controller.taskQueue(), controller.runRecorder());
    });
    QObject::connect(&window, &MainWindow::leaving, &one, &OneWindow::close);
    one.open();
}

} // namespace

int run(int argc, char **argv, const Wanted &wanted)
{
    const QtMessageHandler usual = qInstallMessageHandler(reportMissingDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(desktopId());
    QApplication::setWindowIcon(applicationIcon());

    OneWindow one;
    if (!wanted.newWindow && one.hand(wanted.tab, wanted.paths)) {
        return 0;
    }
    ColorScheme colorScheme;
    DarkPalette::follow(colorScheme);

    Preferences preferences(Preferences::userFile());
    GuiUserInterface userInterface(preferences);
    SleepInhibitor power;
    KruvController controller(preferences, userInterface, &power);
    controller.setIntakeInBackground(true);
    MainWindow window(controller, userInterface);
    QObject::connect(&window, &MainWindow::readyToEnd, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    BatteryWatch battery;
    BatteryPause batteryPause(controller.taskQueue());
    QObject::connect(&battery, &BatteryWatch::onBatteryChanged, &batteryPause, &BatteryPause::setOnBattery);
    QObject::connect(&batteryPause, &BatteryPause::paused, &userInterface, [&userInterface] {
        userInterface.notify(
            QCoreApplication::translate("kruv::WindowProgram", "Jobs are paused: on battery"));
    });
    SignalWatcher watcher;
    QObject::connect(&watcher, &SignalWatcher::interrupted, &window, &MainWindow::quitWithoutAsking);
    QObject::connect(&watcher, &SignalWatcher::endWanted, &window, &MainWindow::quitWithoutAsking);
    QObject::connect(&watcher, &SignalWatcher::stopWanted, &window, &MainWindow::stopProcess);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window, &MainWindow::commitData,
                     Qt::DirectConnection);
    window.selectTab(wanted.tab);
    window.show();
    if (!wanted.paths.isEmpty()) {
        QTimer::singleShot(0, &controller, [&] { controller.addFiles(pathsOf(wanted.paths)); });
    }
    serveOtherStarts(one, window, controller);
    QTimer::singleShot(0, &controller, [&] {
        Resumption::offer(controller.taskQueue(), controller.runRecorder(), userInterface,
                          [&](const HistoryRun &run) { window.showHistory(run.id); });
    });
    const int status = QApplication::exec();
    if (controller.taskQueue().taskCount() > 0) {
        std::_Exit(status); // nobody waits for these jobs any more; their tools go with the program
    }
    TaskPool::drain();
    return status;
}

} // namespace kruv::WindowProgram
