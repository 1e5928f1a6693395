// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TaggedAudio.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::test {

namespace {

QByteArray makeAudio(const QString &extension)
{
    if (extension == u"ape") {
        return QByteArray("MAC ") + QByteArray(20'000, 'a');
    }
    const QTemporaryDir folder;
    const QString wave = folder.filePath(QStringLiteral("noise.wav"));
    const QString result = folder.filePath(QStringLiteral("noise.") + extension);
    toolOutput(QStringLiteral("sox"),
               QStringLiteral("-R -n -r 44100 -c 2 -b 16").split(u' ') +
                   QStringList{wave, QStringLiteral("synth"), QStringLiteral("1"), QStringLiteral("noise"),
                               QStringLiteral("vol"), QStringLiteral("0.5")});
    const QMap<QString, QStringList> commands{
        {QStringLiteral("mp3"), {QStringLiteral("lame"), QStringLiteral("--quiet"), wave, result}},
        {QStringLiteral("aiff"), {QStringLiteral("sox"), wave, result}},
        {QStringLiteral("flac"), {QStringLiteral("flac"), QStringLiteral("-s"), wave}},
        {QStringLiteral("wv"), {QStringLiteral("wavpack"), QStringLiteral("-q"), wave}},
        {QStringLiteral("tta"),
         {QStringLiteral("ffmpeg"), QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), wave,
          QStringLiteral("-bitexact"), QStringLiteral("-map_metadata"), QStringLiteral("-1"), result}},
    };
    const QStringList command = commands.value(extension);
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
        made.insert(extension, makeAudio(extension));
    }
    // Open to the process without privileges, too.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
    const QString result = path(name.isEmpty() ? QStringLiteral("noise.") + extension : name);
    writeFile(result, made.value(extension));
    EXPECT_GT(QFile(result).size(), 5000) << extension.toStdString();
    return result;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
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
    const QByteArray output = toolOutput(
        QStringLiteral("ffprobe"),
        {QStringLiteral("-v"), QStringLiteral("quiet"), QStringLiteral("-of"), QStringLiteral("default=nw=1"),
         QStringLiteral("-show_entries"), QStringLiteral("format_tags"), QStringLiteral("file:") + path});
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
    return toolOutput(QStringLiteral("ffmpeg"),
                      {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                       QStringLiteral("file:") + path, QStringLiteral("-map"), QStringLiteral("0:a"),
                       QStringLiteral("-f"), QStringLiteral("md5"), QStringLiteral("-")});
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
    record->setTitleText(QStringLiteral("Gl\u00fcck \u6b4c \U0001F3B5"));
    record->setArtistText(QStringLiteral("\u05d0\u05e8\u05d8"));
    record->setAlbumArtistText(QStringLiteral("Various \u0416"));
    record->setAlbumText(QString(300, u'A'));
    record->setCommentText(QStringLiteral("50% \"of\" = this"));
    record->setGenreText(QStringLiteral("Rock"));
    record->setComposerText(QStringLiteral("\u010capek"));
    record->setYearText(QStringLiteral("2004"));
    record->setMonthText(QStringLiteral("05"));
    record->setDayText(QStringLiteral("06"));
    record->setTrackText(QStringLiteral("3"));
    record->setTrackTotalText(QStringLiteral("12"));
    record->setDiscText(QStringLiteral("1"));
    record->setDiscTotalText(QStringLiteral("2"));
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
