// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/WindowProgram.h"

#include "app/KruvController.h"
#include "app/Preferences.h"
#include "gui/FileDrop.h"
#include "gui/GuiUserInterface.h"
#include "gui/MainWindow.h"
#include "tasks/TaskPool.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

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

QStringList pathsOf(const QStringList &arguments)
{
    QStringList paths;
    for (const QString &argument : arguments) {
        paths.append(FileDrop::pathOfArgument(argument));
    }
    return paths;
}

} // namespace

int run(int argc, char **argv, const QString &tab, const QStringList &paths)
{
    const QtMessageHandler usual = qInstallMessageHandler(reportMissingDisplay);
    QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(QStringLiteral("kruv"));

    Preferences preferences(Preferences::userFile());
    GuiUserInterface userInterface(preferences);
    KruvController controller(preferences, userInterface, nullptr);
    controller.setIntakeInBackground(true);
    MainWindow window(controller, userInterface);
    QObject::connect(&window, &MainWindow::readyToEnd, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    window.selectTab(tab);
    window.show();
    if (!paths.isEmpty()) {
        QTimer::singleShot(0, &controller, [&] { controller.addFiles(pathsOf(paths)); });
    }
    const int status = QApplication::exec();
    TaskPool::drain();
    return status;
}

} // namespace kruv::WindowProgram
