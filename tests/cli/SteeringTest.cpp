// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Signals to a program that runs jobs, and its flags on when and how they run.

#include "support/Program.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QMap>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <sys/resource.h>
#include <unistd.h>

namespace kruv::test {

namespace {

/// As the system calls it: R, S, T (stopped) and others; nothing for one that is gone.
char stateOf(qint64 process)
{
    QFile stat(u"/proc/%1/stat"_s.arg(process));
    const QByteArray text = stat.open(QIODevice::ReadOnly) ? stat.readAll() : QByteArray();
    const auto end = text.lastIndexOf(") ");
    return end < 0 ? '\0' : text[end + 2];
}

class Steering : public Program
{
protected:
    void SetUp() override { journal = folder.file(u"state/journal.db"_s); }
    /// With a process group of its own, as a shell gives it: the system stops no group that nobody could
    /// continue.
    void begin(const QStringList &arguments)
    {
        m_process = start(arguments, [] { setpgid(0, 0); });
        ASSERT_TRUE(m_process->waitForStarted());
    }
    /// Files "0.wav" to "49.wav", and a flac that waits for the file "release" and is then what it is.
    void beginWaiting(const QStringList &more)
    {
        shell(u"flac"_s, "echo $$ >> '" + m_log.toUtf8() + "'\nwhile [ ! -e '" +
                             folder.file(u"release"_s).toUtf8() + "' ]; do sleep 0.02; done\nexec '" +
                             resourcesFolder().toUtf8() + "/flac' \"$@\"\n");
        QFile::link(resourcesFolder() + u"/metaflac"_s, resources + u"/metaflac"_s);
        for (int index = 0; index < 50; ++index) {
            wav(u"%1.wav"_s.arg(index));
        }
        begin(QStringList{u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, u"--jobs"_s, u"2"_s} +
              more + QStringList{music});
        ASSERT_TRUE(waitUntil([this] { return tools().size() == 2; }));
    }
    QList<QByteArray> tools() const
    {
        return QFile::exists(m_log) ? readFile(m_log).trimmed().split('\n') : QList<QByteArray>();
    }
    void send(int signal) { Program::send(*m_process, signal); }
    bool says(const QByteArray &words)
    {
        return waitUntil([&] {
            m_process->waitForReadyRead(1);
            return (m_said += m_process->readAllStandardError()).contains(words);
        });
    }
    Outcome finish()
    {
        Outcome outcome = end(*m_process);
        outcome.err.prepend(m_said);
        return outcome;
    }
    /// Bytes in staging folders.
    qint64 staged() const
    {
        qint64 bytes = 0;
        QDirIterator walk(music, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            bytes += path.contains(u"/.kruv-"_s) ? QFileInfo(path).size() : 0;
        }
        return bytes;
    }
    QMap<QString, QByteArray> outputs() const
    {
        QMap<QString, QByteArray> found;
        for (const QString &name : files(u"*.flac"_s)) {
            found.insert(name, readFile(music + u'/' + name));
        }
        return found;
    }
    qint64 processId() const { return m_process->processId(); }

private:
    std::unique_ptr<QProcess> m_process;
    QByteArray m_said;
    QString m_log = folder.file(u"log"_s);
};

} // namespace

TEST_F(Steering, StandsStillWithItsToolsAndGoesOnToTheSameBytes)
{
    for (const QString &name : {u"1.wav"_s, u"2.wav"_s, u"3.wav"_s}) {
        writeWav(music + u'/' + name, {.frames = std::size_t{44'100} * 90});
    }
    const QStringList command{u"encode"_s,  u"--to"_s, u"flac"_s,
                              u"--level"_s, u"8"_s,    u"--jobs"_s,
                              u"2"_s,       u"-o"_s,   folder.makeFolder(u"whole"_s),
                              u"--prove"_s, music};
    ASSERT_EQ(run(command).status, 0);
    QStringList here = command;
    here[8] = music;
    begin(here);
    ASSERT_TRUE(waitUntil([this] { return staged() > 100'000; }));
    send(SIGTSTP);
    ASSERT_TRUE(waitUntil([this] { return stateOf(processId()) == 'T'; }));
    const qint64 before = staged();
    QThread::msleep(300);
    EXPECT_EQ(staged(), before);
    send(SIGCONT);
    const Outcome outcome = finish();
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.err.contains("3 done")) << outcome.err.constData();
    const auto made = outputs();
    EXPECT_EQ(made.size(), 3);
    for (const auto &[name, bytes] : made.asKeyValueRange()) {
        EXPECT_TRUE(bytes == readFile(folder.file(u"whole/"_s + name))) << name.toStdString();
    }
}

TEST_F(Steering, EndsAtOnceWhereNobodyWaitsAnyMore)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        for (const bool isStopped : {false, true}) {
            SCOPED_TRACE(testing::Message() << strsignal(signal) << (isStopped ? ", stopped" : ""));
            QFile::remove(folder.file(u"log"_s));
            beginWaiting({});
            if (isStopped) {
                send(SIGTSTP);
                ASSERT_TRUE(waitUntil([this] { return stateOf(processId()) == 'T'; }));
            }
            QElapsedTimer clock;
            clock.start();
            send(signal);
            send(signal == SIGTERM ? SIGHUP : SIGTERM); // as the end of a session does
            send(SIGCONT);
            const Outcome outcome = finish();
            EXPECT_LT(clock.elapsed(), 4500);
            EXPECT_EQ(outcome.status, 130);
            EXPECT_TRUE(outcome.err.contains("0 done, 2 canceled, 48 not begun")) << outcome.err.constData();
            EXPECT_TRUE(outcome.err.contains("kruv resume")) << outcome.err.constData();
            EXPECT_EQ(tools().size(), 2) << "nothing new may start";
            for (const QByteArray &tool : tools()) {
                EXPECT_TRUE(endsSoon(tool)) << "an orphan is left";
            }
            EXPECT_EQ(files(u"*.flac"_s), QStringList());
        }
    }
}

TEST_F(Steering, TellsHowFarItIs)
{
    beginWaiting({u"--quiet"_s});
    send(SIGUSR1);
    EXPECT_TRUE(says("0 of 50 done, 0 of them failed, 48 waiting; running: ")) << finish().err.constData();
    folder.write(u"release"_s, "");
    EXPECT_EQ(finish().status, 0);
}

TEST_F(Steering, LeavesForLaterWhatHasNotBegunWhenTheTimeIsOver)
{
    beginWaiting({u"--stop-after"_s, u"2s"_s, u"--fingerprints"_s});
    ASSERT_TRUE(says("48 job(s) are left for later"));
    folder.write(u"release"_s, "");
    const Outcome outcome = finish();
    EXPECT_EQ(outcome.status, 130);
    EXPECT_TRUE(outcome.err.contains("2 done, 48 not begun")) << outcome.err.constData();
    EXPECT_TRUE(outcome.err.contains("kruv resume")) << outcome.err.constData();
    EXPECT_EQ(files(u"*.flac"_s).size(), 2);
    EXPECT_EQ(files(u"*.txt"_s), QStringList()) << "the list belongs to all of them";
    EXPECT_EQ(run({u"resume"_s, u"--stop-after"_s, u"1h"_s}).status, 0);
    EXPECT_EQ(files(u"*.flac"_s).size(), 50);
    EXPECT_EQ(files(u"*.txt"_s).size(), 1);
    const QStringList nonsense{u"8"_s, u"h"_s, u"0s"_s, u"-3m"_s, u"30m1h"_s, u"500h"_s, u" 8h"_s, QString()};
    for (const QString &time : nonsense) {
        const Outcome refused = encode({u"--stop-after"_s, time, u"--beside-source"_s, music});
        EXPECT_EQ(refused.status, 2) << time.toStdString();
        EXPECT_TRUE(refused.err.contains("--stop-after")) << refused.err.constData();
    }
}

TEST_F(Steering, ChecksGiveWayToOthers)
{
    const QString song = wav(u"a.wav"_s);
    ASSERT_EQ(encode({u"--beside-source"_s, song}).status, 0);
    const QString log = folder.file(u"log"_s);
    shell(u"flac"_s,
          "nice >> '" + log.toUtf8() + "'\nexec '" + resourcesFolder().toUtf8() + "/flac' \"$@\"\n");
    const int usual = getpriority(PRIO_PROCESS, 0);
    const int given = std::max(usual, 10);
    struct Case
    {
        QStringList arguments;
        int niceness;
    };
    const QStringList again{u"encode"_s, u"--to"_s, u"flac"_s, u"--overwrite"_s, u"--beside-source"_s, song};
    const QString output = music + u"/a.flac"_s;
    for (const Case &each :
         {Case{{u"verify"_s, output}, given}, Case{{u"verify"_s, u"--no-nice"_s, output}, usual},
          Case{again, usual}, Case{again + QStringList{u"--nice"_s}, given}}) {
        QFile::remove(log);
        EXPECT_EQ(run(each.arguments).status, 0);
        EXPECT_EQ(readFile(log).split('\n').constFirst().toInt(), each.niceness)
            << each.arguments.join(u' ').toStdString();
    }
}

} // namespace kruv::test
