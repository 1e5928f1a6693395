// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/TextFile.h"

#include "base/TextEncoding.h"
#include "base/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace kruv::TextFile {

namespace {

Q_LOGGING_CATEGORY(textLog, "kruv.text", QtWarningMsg)

constexpr qint64 mostBytes = qint64{16} * 1024 * 1024;

} // namespace

QString write(const QString &path, const QString &text)
{
    return WholeFile::write(path, text.toUtf8());
}

std::optional<QString> read(const QString &path)
{
    QFile file(path);
    // Opening a pipe could wait for ever.
    const bool readable = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
    const QByteArray bytes = readable ? file.read(mostBytes + 1) : QByteArray();
    if (!readable || file.error() != QFileDevice::NoError || bytes.size() > mostBytes) {
        qCInfo(textLog, "Could not open file...%s %s", qUtf8Printable(path),
               qUtf8Printable(readable ? QStringLiteral("not a text") : file.errorString()));
        return std::nullopt;
    }
    return TextEncoding::text(bytes);
}

} // namespace kruv::TextFile
