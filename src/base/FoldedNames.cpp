// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/FoldedNames.h"

#include "base/Descriptor.h"
#include "base/StagingName.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kruv::FoldedNames {

namespace {

QByteArray make(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const Descriptor file(open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    return file.isOpen() ? name : QByteArray();
}

/// To the folder that it lies in; false where there is none.
bool goUp(QString &folder)
{
    const qsizetype slash = folder.lastIndexOf(u'/');
    folder.truncate(std::max<qsizetype>(slash, 0));
    return slash > 0;
}

bool isVisible(QChar character)
{
    const bool isVariant = character >= QChar(0xFE00) && character <= QChar(0xFE0F);
    return character.category() != QChar::Other_Format && !isVariant;
}

bool isAscii(QChar character)
{
    return character < QChar(0x80);
}

QString withoutLastPoints(QString name)
{
    while (name.endsWith(u'.')) {
        name.chop(1);
    }
    return name;
}

} // namespace

QString key(const QString &name)
{
    if (std::ranges::all_of(name, isAscii)) { // nearly all, and there may be very many
        return withoutLastPoints(name.toLower());
    }
    QString folded =
        name.normalized(QString::NormalizationForm_KD).toUpper().toCaseFolded(); // the sharp s is SS
    folded.removeIf([](QChar character) { return !isVisible(character); });
    return withoutLastPoints(std::move(folded)).normalized(QString::NormalizationForm_KD);
}

bool areOne(const QString &folder, const QString &first, const QString &second)
{
    if (first == second) {
        return true;
    }
    const QString name = u'/' + StagingName::random();
    QString above = folder; // what is made in it later is alike
    int problem = 0;
    do {
        problem = mkdir(QFile::encodeName(above + name).constData(), 0700) == 0 ? 0 : errno;
    } while (problem == ENOENT && goUp(above));
    if (problem != 0) {
        return true;
    }
    const QString trial = above + name;
    const QByteArray place = QFile::encodeName(trial);
    const QByteArray one = make(trial + u'/' + first);
    errno = 0;
    const QByteArray other = one.isEmpty() ? one : make(trial + u'/' + second);
    const bool areOne = one.isEmpty() || (other.isEmpty() && errno == EEXIST);
    for (const QByteArray &made : {one, other}) {
        if (!made.isEmpty()) {
            unlink(made.constData());
        }
    }
    rmdir(place.constData());
    return areOne;
}

} // namespace kruv::FoldedNames
