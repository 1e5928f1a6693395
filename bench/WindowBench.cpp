// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the window keeps a person waiting: the longest time between two beats of a timer that is due every
// millisecond, while many files come in and many jobs are made. Prints milliseconds; offscreen will do.

#include "base/Preferences.h"
#include "base/TaskPool.h"
#include "gui/GuiUserInterface.h"
#include "gui/MainWindow.h"
#include "tabs/EncodeTab.h"
#include "tabs/KruvController.h"
#include "tabs/TagsTab.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <cstdio>

namespace {

class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(1);
        m_clock.start();
    }

    /// Serves events until `done`, and prints the longest gap since the last report.
    template <typename Done> void report(const char *what, Done done)
    {
        m_longest = 0;
        m_clock.restart();
        QElapsedTimer whole;
        whole.start();
        while (!done()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        std::printf("%-48s longest gap %4lld ms of %6lld ms\n", what, static_cast<long long>(m_longest),
                    static_cast<long long>(whole.elapsed()));
    }

private:
    void beat() { m_longest = std::max(m_longest, m_clock.restart()); }

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

void makeFiles(const QString &folder, int count)
{
    QDir().mkpath(folder);
    for (int number = 0; number < count; ++number) {
        QFile file(QStringLiteral("%1/%2 A song of a long concert recording.wav").arg(folder).arg(number));
        file.open(QIODevice::WriteOnly);
    }
}

/// FLAC files of metadata alone: an album each, and a cover.
void makeTaggedFiles(const QString &folder, int count)
{
    const auto block = [](char type, const QByteArray &content) {
        const auto size = static_cast<quint32>(content.size());
        return QByteArray(1, type) + static_cast<char>(size >> 16U) + static_cast<char>(size >> 8U) +
               static_cast<char>(size) + content;
    };
    QDir().mkpath(folder);
    for (int number = 0; number < count; ++number) {
        const QByteArray album = "ALBUM=" + QByteArray::number(number / 20);
        const QByteArray cover(40000, static_cast<char>(number / 20));
        QFile file(QStringLiteral("%1/%2.flac").arg(folder).arg(number));
        file.open(QIODevice::WriteOnly);
        file.write("fLaC" + block(0, QByteArray(34, '\1')) +
                   block(4, QByteArray(4, '\0') + QByteArray("\1\0\0\0", 4) +
                                static_cast<char>(album.size()) + QByteArray(3, '\0') + album) +
                   block('\x86', QByteArray(28, '\0') + QByteArray("\0\0\x9C\x40", 4) + cover));
    }
}

void selectTagged(kruv::KruvController &controller, kruv::MainWindow &window, Heartbeat &heartbeat,
                  const QString &folder)
{
    constexpr int taggedFiles = 2000;
    makeTaggedFiles(folder, taggedFiles);
    kruv::TagsTab &tab = controller.tagsTab();
    window.selectTab(tab.label());
    tab.addFiles({folder});
    heartbeat.report("2,000 tagged files", [&] { return tab.fileList().count() == taggedFiles; });
    auto *list = window.findChild<QWidget *>(tab.label())->findChild<QTreeView *>();
    QTimer::singleShot(0, &tab, [list] { list->selectAll(); });
    heartbeat.report("all of them selected and read", [&] { return tab.filesRead() == taggedFiles; });
    QTimer::singleShot(0, &tab, [&tab, list] {
        list->clearSelection();
        list->selectAll();
        tab.tableViewSelectionDidChange({1});
    });
    heartbeat.report("selected, and one of them instead", [&] { return tab.filesRead() == 1; });
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int manyFiles = 20000;
    constexpr int manyJobs = 2000;
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    makeFiles(folder.filePath(QStringLiteral("many")), manyFiles);
    makeFiles(folder.filePath(QStringLiteral("jobs")), manyJobs);

    kruv::Preferences preferences(folder.filePath(QStringLiteral("kruv.conf")));
    kruv::GuiUserInterface userInterface(preferences);
    kruv::KruvController controller(preferences, userInterface, nullptr);
    controller.setIntakeInBackground(true);
    kruv::MainWindow window(controller, userInterface);
    window.show();
    Heartbeat heartbeat;
    selectTagged(controller, window, heartbeat, folder.filePath(QStringLiteral("tagged")));

    window.selectTab(QStringLiteral("encode"));
    kruv::EncodeTab &tab = controller.encodeTab();
    QTimer::singleShot(0, &tab, [&] { tab.addFiles({folder.filePath(QStringLiteral("many"))}); });
    heartbeat.report("20,000 files into an empty list", [&] { return tab.fileList().count() == manyFiles; });
    QTimer::singleShot(0, &tab, [&] { tab.addFiles({folder.filePath(QStringLiteral("jobs"))}); });
    heartbeat.report("2,000 more", [&] { return tab.fileList().count() == manyFiles + manyJobs; });
    bool cleared = false;
    QTimer::singleShot(0, &tab, [&] {
        tab.clearFiles();
        cleared = true;
    });
    heartbeat.report("all of them out", [&] { return cleared; });

    tab.addFiles({folder.filePath(QStringLiteral("jobs"))});
    heartbeat.report("2,000 files", [&] { return tab.fileList().count() == manyJobs; });
    tab.sourceEncodeButton().setOn(true);
    QTimer::singleShot(0, &tab, [&] { tab.executeCommand(); });
    heartbeat.report("2,000 jobs made and begun", [&] { return tab.fileList().isEmpty(); });
    heartbeat.report("20 of them run", [&] { return controller.taskQueue().taskCount() <= manyJobs - 20; });
    userInterface.leave();
    QTimer::singleShot(0, &tab, [&] { controller.applicationWillTerminate(); });
    heartbeat.report("the others cancelled", [&] { return controller.taskQueue().taskCount() == 0; });
    kruv::TaskPool::drain();
    return 0;
}
