// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Files.h"
#include "support/QtPrinters.h"
#include "tags/TagsObject.h"

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace kruv::test {

/// A folder with one second of noise in each format, made on demand: audio("flac"). Removes itself.
class AudioFolder : public TemporaryFolder
{
public:
    /// Path of a new untagged file. Extensions: mp3, aiff, flac, ape, wv, tta, m4a, ogg. The .ape has no more
    /// than the format's marker before its noise.
    QString audio(const QString &extension, const QString &name = {}) const;
};

/// Runs a program of the system and returns what it printed on its standard output.
QByteArray toolOutput(const QString &program, const QStringList &arguments);

/// The tags of a file as ffprobe sees them. Keys in lower case.
QMap<QString, QString> probedTags(const QString &path);
/// MD5 of the decoded samples.
QByteArray decodedDigest(const QString &path);

/// Runs `body` in a child process that is not root, and tells whether it returned true.
bool inUnprivilegedProcess(const std::function<bool()> &body);
/// Runs `body` in a child process in which no file can grow beyond `bytes`, as on a full disk.
bool withFileSizeLimit(qint64 bytes, const std::function<bool()> &body);

/// A record with text in every field that ID3v2 and FLAC have.
std::shared_ptr<TagsObject> fullRecord();
QImage picture(const QColor &color, int width = 8, int height = 6);

} // namespace kruv::test
