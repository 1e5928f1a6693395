// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/NewFolders.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace kruv {

NewFolders::NewFolders(const QString &folder)
{
    QStringList missing; // innermost first
    for (QString each = folder; !QFileInfo::exists(each) && each != u"/"; each = QFileInfo(each).path()) {
        missing.append(each);
    }
    for (auto each = missing.crbegin(); each != missing.crend(); ++each) {
        if (mkdir(QFile::encodeName(*each).constData(), 0777) == 0) { // another job may have been faster
            m_made.append(*each);
        }
    }
}

NewFolders::~NewFolders()
{
    for (auto each = m_made.crbegin(); each != m_made.crend(); ++each) {
        rmdir(QFile::encodeName(*each).constData()); // fails where something lies there, as it should
    }
}

QStringList NewFolders::places() const
{
    QStringList places;
    for (const QString &each : m_made) {
        places.append(QFileInfo(each).path());
    }
    return places;
}

} // namespace kruv
