// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TaggedAudio.h"

#include "support/Audio.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

QByteArray encodedNoise(const QString &extension)
{
    if (extension == u"ape") {
        return QByteArray("MAC ") + QByteArray(20'000, 'a');
    }
    const TemporaryFolder folder;
    const QString wave = folder.file(u"noise.wav"_s);
    const QString result = folder.file(u"noise."_s + extension);
    const QString codec = extension == u"m4a" ? u"alac"_s : u"libvorbis"_s;
    writeWav(wave);
    const QMap<QString, QStringList> commands{
        {u"mp3"_s, {u"lame"_s, u"--quiet"_s, wave, result}},
        {u"aiff"_s, {u"sox"_s, wave, result}},
        {u"flac"_s, {u"flac"_s, u"-s"_s, wave}},
        {u"wv"_s, {u"wavpack"_s, u"-q"_s, wave}},
        {u"tta"_s,
         {u"ffmpeg"_s, u"-v"_s, u"error"_s, u"-i"_s, wave, u"-bitexact"_s, u"-map_metadata"_s, u"-1"_s,
          result}},
    };
    const QStringList byFfmpeg{u"ffmpeg"_s, u"-v"_s,        u"error"_s,         u"-i"_s, wave,  u"-c:a"_s,
                               codec,       u"-bitexact"_s, u"-map_metadata"_s, u"-1"_s, result};
    const QStringList command = commands.value(extension, byFfmpeg);
    toolOutput(command.first(), command.mid(1));
    return readFile(result);
}

bool childReturnedTrue(const std::function<bool()> &body, const std::function<void()> &prepare)
{
    const pid_t child = fork();
    if (child == 0) {
        prepare();
        bool result = false;
        try {
            result = body();
        } catch (...) {
            result = false;
        }
        _exit(result ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

QString AudioFolder::audio(const QString &extension, const QString &name) const
{
    static QMap<QString, QByteArray> made;
    if (!made.contains(extension)) {
        made.insert(extension, encodedNoise(extension));
    }
    // Open to the process without privileges, too.
    QFile::setPermissions(path(), QFile::Permissions(0x7777));
    EXPECT_GT(made.value(extension).size(), 5000) << extension.toStdString();
    return write(name.isEmpty() ? u"noise."_s + extension : name, made.value(extension));
}

QByteArray toolOutput(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput();
}

QMap<QString, QString> probedTags(const QString &path)
{
    const QByteArray output =
        toolOutput(u"ffprobe"_s, {u"-v"_s, u"quiet"_s, u"-of"_s, u"default=nw=1"_s, u"-show_entries"_s,
                                  u"format_tags"_s, u"file:"_s + path});
    QMap<QString, QString> tags;
    for (const QString &line : QString::fromUtf8(output).split(u'\n')) {
        if (line.startsWith(u"TAG:")) {
            tags.insert(line.mid(4).section(u'=', 0, 0).toLower(), line.section(u'=', 1));
        }
    }
    return tags;
}

QByteArray decodedDigest(const QString &path)
{
    return toolOutput(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, u"file:"_s + path, u"-map"_s, u"0:a"_s,
                                    u"-f"_s, u"md5"_s, u"-"_s});
}

bool inUnprivilegedProcess(const std::function<bool()> &body)
{
    return childReturnedTrue(body, [] {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && setuid(nobody) != 0) {
            _exit(2);
        }
    });
}

bool withFileSizeLimit(qint64 bytes, const std::function<bool()> &body)
{
    return childReturnedTrue(body, [bytes] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
}

std::shared_ptr<TagsObject> fullRecord()
{
    auto record = std::make_shared<TagsObject>();
    record->setTitleText(u"Gl\u00fcck \u6b4c \U0001F3B5"_s);
    record->setArtistText(u"\u05d0\u05e8\u05d8"_s);
    record->setAlbumArtistText(u"Various \u0416"_s);
    record->setAlbumText(QString(300, u'A'));
    record->setCommentText(u"50% \"of\" = this"_s);
    record->setGenreText(u"Rock"_s);
    record->setComposerText(u"\u010capek"_s);
    record->setYearText(u"2004"_s);
    record->setMonthText(u"05"_s);
    record->setDayText(u"06"_s);
    record->setTrackText(u"3"_s);
    record->setTrackTotalText(u"12"_s);
    record->setDiscText(u"1"_s);
    record->setDiscTotalText(u"2"_s);
    record->setAlbumArt(picture(Qt::red));
    return record;
}

QImage picture(const QColor &color, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace kruv::test
