// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the tags of every file of a folder, through the engine or with the bare tag library, and prints how
// many seconds that took. The bare loop fetches the same things: every text and the bytes of the first
// picture. usage: kruv_bench_tags engine|bare FOLDER

#include "formats/TagFormats.h"

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <attachedpictureframe.h>
#include <cstdio>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <xiphcomment.h>

namespace {

using namespace kruv;

std::size_t readWithEngine(const QByteArray &path)
{
    const auto record = TagFormats::read(QFile::decodeName(path));
    const auto picture = record->picture();
    return static_cast<std::size_t>(record->titleText().size()) +
           static_cast<std::size_t>(picture ? picture->encoded().size() : 0);
}

std::size_t readBareFlac(const QByteArray &path)
{
    TagLib::FLAC::File file(path.constData(), false);
    std::size_t size = 0;
    if (file.hasXiphComment()) {
        for (const auto &[key, values] : file.xiphComment()->fieldListMap()) {
            size += values.toString(" ").to8Bit(true).size();
        }
    }
    const auto pictures = file.pictureList();
    return size + (pictures.isEmpty() ? 0 : pictures.front()->data().size());
}

std::size_t readBareMp3(const QByteArray &path)
{
    TagLib::MPEG::File file(path.constData(), false);
    std::size_t size = 0;
    for (const auto *frame : file.ID3v2Tag(true)->frameList()) {
        if (const auto *picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame *>(frame)) {
            size += picture->picture().size();
        } else {
            size += frame->toString().to8Bit(true).size();
        }
    }
    return size;
}

std::size_t readBare(const QByteArray &path)
{
    return path.endsWith(".flac") ? readBareFlac(path) : readBareMp3(path);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: kruv_bench_tags engine|bare FOLDER\n");
        return 2;
    }
    const auto read = QByteArray(argv[1]) == "engine" ? readWithEngine : readBare;
    QList<QByteArray> paths;
    const QDir folder(QFile::decodeName(argv[2]));
    for (const QString &name : folder.entryList(QDir::Files)) {
        paths.append(QFile::encodeName(folder.filePath(name)));
    }
    QElapsedTimer clock;
    clock.start();
    std::size_t size = 0;
    for (const QByteArray &path : paths) {
        size += read(path);
    }
    std::printf("%.4f %zu\n", static_cast<double>(clock.nsecsElapsed()) / 1e9, size);
    return 0;
}
