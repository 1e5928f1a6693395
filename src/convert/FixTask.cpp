// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/FixTask.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/TextFile.h"
#include "checksums/FileHash.h"
#include "checksums/FlacFingerprint.h"
#include "checksums/ListText.h"
#include "formats/Formats.h"
#include "formats/TagCopy.h"
#include "platform/MainThread.h"
#include "platform/Resources.h"
#include "regex/Regex.h"
#include "tasks/OriginalFile.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolOutput.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <exception>
#include <utility>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(fixLog, "kruv.fix")

const QString oneList = QStringLiteral("1 MD5");
const QString listByDisc = QStringLiteral("MD5 by disc*");
const QString fingerprints = QStringLiteral("FFP");

bool isOneOf(const QString &path, const char *types)
{
    return QString::fromLatin1(types).split(u' ').contains(PathNames::fileType(path));
}

} // namespace

FixTask::FixTask(TaskCompletionSink *queue, const QStringList &fileNames, const QString &outputFormat,
                 const QString &outputPath, const QString &md5Option, int flacLevel,
                 std::function<void()> clearTab)
    : StagedTask(queue, {})
    , m_fileNames(fileNames)
    , m_outputFormat(outputFormat)
    , m_outputPath(outputPath)
    , m_md5Option(md5Option)
    , m_flacLevel(flacLevel)
    , m_clearTab(std::move(clearTab))
{
    appendToPATH(resourcesFolder());
    setTitle(QStringLiteral("Fixing"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    int position = 0;
    for (const QString &file : fileNames) {
        m_fileNameDictionary.insert(PathNames::nameWithoutExtension(file), QString::number(++position));
    }
}

QStringList FixTask::fixArguments(const QStringList &fileNames, const QString &outputFormat,
                                  const QString &outputPath, int flacLevel)
{
    QString line = QStringLiteral("fix -P pct -O never -k -d");
    QStringList arguments = line.split(u' ');
    arguments << outputPath << QStringLiteral("-o");
    if (outputFormat == u"flac") {
        line = QStringLiteral("cust ext=flac { flac -s -%1 -o %f - }").arg(flacLevel);
        arguments << line.split(u' ');
    } else {
        arguments << outputFormat;
    }
    return arguments << fileNames;
}

QString FixTask::disc(const QString &path)
{
    const QString disc = PathNames::disc(path);
    return disc.contains(u'/') ? QString() : disc;
}

QString FixTask::stripPercent(const QString &text)
{
    return Regex(QStringLiteral("[0-9]+%")).replace(text, u"");
}

void FixTask::doStartTask()
{
    for (const QString &file : m_fileNames) {
        m_outputs.emplace_back(fixedFile(file));
    }
    doFixCall();
    checkOutputs();
    if (!cancelled()) {
        copyTags();
        writeChecksums();
    }
    appendResults(m_totalOutput);
    deleteOriginals();
}

void FixTask::doFixCall()
{
    runTool(
        toolPath(QStringLiteral("shntool")),
        fixArguments(m_fileNames, m_outputFormat, m_outputPath, m_flacLevel),
        [this](const QString &piece) { processTaskOutput(piece); }, PathNames::folderOf(m_fileNames.at(0)));
}

/// The tool ends with success also where an encoder failed behind its back, as on a full disk.
void FixTask::checkOutputs()
{
    const bool encoderFailed = m_totalOutput.contains(u"child encoder process");
    for (std::size_t index = 0; index < m_outputs.size() && mayGoOn(); ++index) {
        if (encoderFailed || !m_outputs[index].written()) {
            fail(QStringLiteral("The fixed files are not complete: %1.\n")
                     .arg(encoderFailed ? QStringLiteral("an encoder failed")
                                        : fixedFile(m_fileNames[static_cast<qsizetype>(index)]) +
                                              QStringLiteral(" is missing")));
        }
    }
}

void FixTask::processTaskOutput(const QString &piece)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    m_totalOutput += stripPercent(text.toString());
    showCurrentFile(text);
    if (const qsizetype percent = text.indexOf(u'%'); percent >= 0) {
        const double value = ToolOutput::leadingNumber(text.first(percent));
        setProgressIndicatorValue(value);
        setTopTextFieldString(QStringLiteral("Fixing: %1%").arg(value, 0, 'f', 6));
        publish(&KruvTask::updateStatus);
    }
}

/// The path stands in "Fixing [path] (length) --> [output] :", which comes in several pieces at times.
void FixTask::showCurrentFile(QStringView piece)
{
    constexpr QStringView start = u"Fixing [";
    m_currentLine += piece;
    const qsizetype from = m_currentLine.lastIndexOf(start);
    if (from < 0) {
        m_currentLine = m_currentLine.right(start.size());
        return;
    }
    m_currentLine.remove(0, from);
    const qsizetype end = m_currentLine.indexOf(u"] (");
    if (end < 0) {
        return;
    }
    const QString name =
        PathNames::nameWithoutExtension(m_currentLine.sliced(start.size(), end - start.size()));
    m_currentLine.clear();
    setTextFieldString(QStringLiteral("%1 (%2 of %3)")
                           .arg(name, m_fileNameDictionary.value(name), QString::number(m_fileNames.size())));
    publish(&KruvTask::setTextFieldValue);
}

void FixTask::copyTags()
{
    if (m_outputFormat != u"aiff" && m_outputFormat != u"flac") {
        return;
    }
    for (std::size_t index = 0; index < m_outputs.size() && !cancelled(); ++index) {
        const QString &source = m_fileNames[static_cast<qsizetype>(index)];
        if (!m_outputs[index].written() || !isOneOf(source, "AIFF AIF FLAC WV TTA")) {
            continue;
        }
        showStatus(QStringLiteral("Writing tags"));
        try {
            TagCopy::copy(*Formats::ofType(PathNames::fileType(source)), source,
                          *Formats::ofType(m_outputFormat.toUpper()), fixedFile(source));
        } catch (const std::exception &failure) {
            m_sourceOfLostTags = source;
            qCWarning(fixLog, "Exception trying to tag fixed files: %s", failure.what());
        }
    }
}

void FixTask::writeChecksums()
{
    const QStringList files = existingOutputs();
    if (files.isEmpty()) {
        return;
    }
    if (m_outputFormat == u"shn") {
        showStatus(QStringLiteral("Creating MD5"));
        handleMD5(files);
    } else if (m_outputFormat == u"flac" && m_md5Option == fingerprints) {
        showStatus(QStringLiteral("Creating FFP"));
        doCreateFFP(files);
    }
}

void FixTask::handleMD5(const QStringList &files)
{
    if (m_md5Option == oneList) {
        doMd5Call(ListText::pathIn(m_outputPath, queue()->preferences(), QStringLiteral("md5sum"),
                                   QStringLiteral("md5")),
                  files);
    } else if (m_md5Option == listByDisc) {
        QMap<QString, QStringList> discs;
        for (const QString &file : files) {
            discs[disc(file)].append(file);
        }
        for (const auto &[number, filesOfDisc] : discs.asKeyValueRange()) {
            doMd5Call(ListText::joined(m_outputPath, QStringLiteral("Disc%1.md5").arg(number)), filesOfDisc);
        }
    }
}

void FixTask::doMd5Call(const QString &list, const QStringList &files)
{
    QString text = ListText::md5Header();
    restartProgress();
    for (qsizetype index = 0; index < files.size() && !cancelled(); ++index) {
        const QString name = PathNames::lastPathComponent(files[index]);
        setTextFieldString(name);
        publish(&KruvTask::setTextFieldValue);
        const auto hash = FileHash::hashOfFileAtPath(
            QFile::encodeName(files[index]), FileHash::Algorithm::MD5, [&](double share) {
                constexpr double percent = 100.0;
                showProgress(QStringLiteral("Creating MD5"), percent * (static_cast<double>(index) + share) /
                                                                 static_cast<double>(files.size()));
                return !cancelled();
            });
        if (hash.problem == FileHash::Problem::None) {
            text += ListText::md5Line(hash.digest, name);
        } else {
            fail(QStringLiteral("%1 is not in the list: %2\n").arg(files[index], hash.message));
        }
    }
    writeList(list, text);
}

void FixTask::doCreateFFP(const QStringList &files)
{
    QString text = ListText::ffpHeader();
    for (const QString &file : files) {
        if (cancelled()) {
            return;
        }
        if (const QString line = fingerprint(file); !isMetaflacError(line)) {
            text += line;
        }
    }
    const Preferences &preferences = queue()->preferences();
    writeList(ListText::pathIn(m_outputPath, preferences, QStringLiteral("fingerprint"),
                               preferences.string(QStringLiteral("ffpExtension"))),
              text);
}

void FixTask::writeList(const QString &path, const QString &text)
{
    if (!cancelled() && !TextFile::write(path, text)) {
        fail(QStringLiteral("The list %1 could not be written.\n").arg(path));
    }
}

/// Fixing moves audio from one file to the next, so an original is needless only when every output is whole.
void FixTask::deleteOriginals()
{
    if (!deleteOriginal() || !mayGoOn()) {
        return;
    }
    if (!m_sourceOfLostTags.isEmpty()) {
        OriginalFile::keep(*this, m_sourceOfLostTags, QStringLiteral("its tags could not be copied"));
        return;
    }
    for (std::size_t index = 0; index < m_outputs.size(); ++index) {
        if (!m_outputs[index].written() || !m_outputs[index].reachedDisk()) {
            OriginalFile::keep(*this, m_fileNames[static_cast<qsizetype>(index)],
                               QStringLiteral("its output is missing, empty or not safely on the disk"));
            return;
        }
    }
    for (std::size_t index = 0; index < m_outputs.size(); ++index) {
        const QString &source = m_fileNames[static_cast<qsizetype>(index)];
        if (isOneOf(source, "FLAC SHN WAV AIF AIFF WV TTA")) {
            OriginalFile::deleteAfterSuccess(*this, source, m_outputs[index]);
        }
    }
}

void FixTask::stopTask()
{
    MainThread::run(m_clearTab);
    StagedTask::stopTask();
}

QString FixTask::fixedFile(const QString &source) const
{
    return PathNames::outputPath(m_outputPath, source, m_outputFormat);
}

QStringList FixTask::existingOutputs() const
{
    QStringList files;
    for (const QString &source : m_fileNames) {
        if (const QString file = fixedFile(source); QFileInfo::exists(file)) {
            files.append(file);
        }
    }
    return files;
}

} // namespace kruv
