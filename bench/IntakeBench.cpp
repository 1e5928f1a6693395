// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Takes the files below the given folder into the encode tab's list, as a drop does, and prints how long that
// took and the peak memory. bench/intake.sh compares it with find and a natural sort.

#include "base/Preferences.h"
#include "cli/CliUserInterface.h"
#include "tabs/EncodeTab.h"
#include "tabs/FileList.h"
#include "tabs/KruvController.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <sys/resource.h>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: kruv_bench_intake FOLDER\n", stderr);
        return 2;
    }
    const QTemporaryDir settings;
    kruv::Preferences preferences(settings.filePath(QStringLiteral("kruv.conf")));
    const kruv::CommonOptions options;
    kruv::CliUserInterface userInterface(options);
    kruv::KruvController controller(preferences, userInterface, nullptr);
    QElapsedTimer clock;
    clock.start();
    controller.encodeTab().addFiles({QString::fromLocal8Bit(argv[1])});
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%d %.3f %ld\n", controller.encodeTab().fileList().count(), seconds, usage.ru_maxrss / 1024);
    return 0;
}
