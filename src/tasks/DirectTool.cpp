// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/DirectTool.h"

#include "FlacAdapter.h"
#include "ToolFinder.h"

#include <QFile>
#include <QFileInfo>

namespace kruv {

namespace {

bool isAdapter(const QString &path)
{
    const QString target = QFile::symLinkTarget(path);
    return !target.isEmpty() && QFileInfo(target).fileName() == QLatin1StringView(adapters::programName);
}

bool staysAsItIs(const QStringList &arguments)
{
    adapters::Arguments words;
    for (const QString &argument : arguments) {
        words.push_back(QFile::encodeName(argument).toStdString());
    }
    const auto exists = [](const std::string &name) {
        return QFileInfo::exists(QString::fromStdString(name));
    };
    return adapters::flacArguments(words, exists) == words;
}

} // namespace

QString directProgram(const QString &launchPath, const QStringList &arguments)
{
    const QFileInfo tool(launchPath);
    if (tool.fileName() != u"flac" || !isAdapter(launchPath) || !staysAsItIs(arguments)) {
        return launchPath;
    }
    const adapters::ToolFinder finder(qgetenv("PATH").toStdString(),
                                      QFile::encodeName(tool.path()).toStdString());
    const std::string found = finder.find("flac");
    return found.empty() ? launchPath : QFile::decodeName(QByteArray::fromStdString(found));
}

} // namespace kruv
