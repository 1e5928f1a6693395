// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Files.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace kruv::test {

namespace {

[[noreturn]] void fail(const char *what, const QFile &file)
{
    throw std::runtime_error(what + file.fileName().toStdString() + ": " + file.errorString().toStdString());
}

} // namespace

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail("can't read ", file);
    }
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        fail("can't write ", file);
    }
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

TemporaryFolder::TemporaryFolder()
{
    if (!m_folder.isValid()) {
        throw std::runtime_error("can't make a temporary folder: " + m_folder.errorString().toStdString());
    }
}

QString TemporaryFolder::write(const QString &name, const QByteArray &bytes) const
{
    writeFile(file(name), bytes);
    return file(name);
}

QString TemporaryFolder::makeFolder(const QString &name) const
{
    if (!QDir().mkpath(file(name))) {
        throw std::runtime_error("can't make the folder " + file(name).toStdString());
    }
    return file(name);
}

} // namespace kruv::test
