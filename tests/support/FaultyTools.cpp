// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/FaultyTools.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

const QStringList FaultyTools::faults = {u"half"_s,       u"garbage"_s, u"wrong64"_s, u"flip"_s,
                                         u"empty"_s,      u"nothing"_s, u"failed"_s,  u"flood"_s,
                                         u"halfFailed"_s, u"crashed"_s, u"silent"_s,  u"keepsPipe"_s};

FaultyTools::FaultyTools(TemporaryFolder &folder)
    : m_folder(folder)
    , m_real(qgetenv("KRUV_RESOURCES"))
    , m_tools(folder.makeFolder(u"tools"_s))
    , m_behind(folder.makeFolder(u"behind"_s))
    , m_resources("KRUV_RESOURCES", m_tools.toUtf8())
    , m_realTools("KRUV_REAL", m_real)
    , m_behindShntool("KRUV_BEHIND", m_behind.toUtf8())
{
    const QString program = QStringLiteral(KRUV_FAULTY_TOOL);
    for (const QString &name : QDir(QString::fromLocal8Bit(m_real)).entryList(QDir::Files)) {
        QFile::link(program, m_tools + u'/' + name);
        if (name != u"shntool") {
            QFile::link(program, m_behind + u'/' + name);
        }
    }
}

QString FaultyTools::newCase(const QString &plan)
{
    const QString name = u"case-%1"_s.arg(m_cases.size());
    QString folder = m_folder.makeFolder(name);
    m_folder.makeFolder(name + u"/out"_s);
    m_folder.write(name + u".fault"_s, plan.toUtf8());
    m_cases.insert(folder, plan);
    return folder;
}

QStringList FaultyTools::toolsOf(const QString &caseFolder)
{
    QFile log(caseFolder + u".log"_s);
    QStringList used;
    if (log.open(QIODevice::ReadOnly)) {
        used = QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts);
        used.removeDuplicates();
    }
    return used;
}

std::vector<Audio> decodedByFfmpeg(const QStringList &files, TemporaryFolder &folder)
{
    QStringList arguments{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
    for (const QString &file : files) {
        arguments << u"-i"_s << file;
    }
    const QString decoded = folder.makeFolder(u"decoded"_s);
    for (qsizetype i = 0; i < files.size(); ++i) {
        arguments << u"-map"_s << u"%1:a"_s.arg(i) << u"-c:a"_s << u"pcm_s16le"_s << u"-f"_s << u"wav"_s
                  << u"%1/%2"_s.arg(decoded).arg(i);
    }
    QProcess process;
    process.start(u"ffmpeg"_s, arguments);
    EXPECT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    std::vector<Audio> all;
    for (qsizetype i = 0; i < files.size(); ++i) {
        all.push_back(readWav(u"%1/%2"_s.arg(decoded).arg(i)));
    }
    return all;
}

} // namespace kruv::test
