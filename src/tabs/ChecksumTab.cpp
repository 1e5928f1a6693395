// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ChecksumTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "checksums/CreateFFPTask.h"
#include "checksums/CreateMD5Task.h"
#include "checksums/CreateST5Task.h"
#include "checksums/ListText.h"
#include "checksums/VerifyFFPTask.h"
#include "checksums/VerifyMD5Task.h"
#include "checksums/VerifyST5Task.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "tasks/KruvTaskQueue.h"

namespace kruv {

ChecksumTab::ChecksumTab(TabHost &host)
    : BaseTab(QStringLiteral("checksum"), host)
    , m_commandOptions({{QStringLiteral("verify-audio"), tr("Verify audio files")},
                        {QStringLiteral("create"), tr("Create checksum file")},
                        {QStringLiteral("verify-lists"), tr("Verify checksum files")}})
    , m_createChecksumOptions({{QStringLiteral("md5"), QStringLiteral("MD5")},
                               {QStringLiteral("st5"), QStringLiteral("ST5")},
                               {QStringLiteral("ffp"), QStringLiteral("FFP")}},
                              3)
{
    connect(&m_commandOptions, &Control::changed, this, &ChecksumTab::displayRelevantOptions);
    ChecksumTab::displayRelevantOptions();
}

void ChecksumTab::displayRelevantOptions()
{
    const bool creates = m_commandOptions.selectedRow() == CreateList;
    m_createChecksumOptions.setEnabled(creates);
    m_createChecksumOptions.setHidden(!creates);
    m_sourceSaveButton.setEnabled(creates);
    m_sourceSaveButton.setHidden(!creates);
}

void ChecksumTab::executeCommand()
{
    if (fileList().isEmpty()) {
        return;
    }
    switch (m_commandOptions.selectedRow()) {
    case VerifyAudio:
        queueReports(audioVerifier);
        break;
    case CreateList:
        if (!createList()) {
            return;
        }
        break;
    case VerifyLists:
        queueReports(listVerifier);
        break;
    default:
        return;
    }
    clearFiles();
}

void ChecksumTab::queueReports(JobMaker (*makerFor)(const QString &file))
{
    const auto results = std::make_shared<KruvTaskResults>();
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const QString &file : fileNames()) {
        if (const JobMaker maker = makerFor(file)) {
            jobs.push_back((this->*maker)(file, results));
            results->addTaskInSet(*jobs.back());
        }
    }
    submit(jobs);
}

ChecksumTab::JobMaker ChecksumTab::audioVerifier(const QString &file)
{
    const Format *format = Formats::ofType(PathNames::fileType(file));
    return format && format->test ? &ChecksumTab::verifyAudio : nullptr;
}

std::shared_ptr<KruvTask> ChecksumTab::verifyAudio(const QString &file,
                                                   const std::shared_ptr<KruvTaskResults> &results)
{
    return Formats::ofType(PathNames::fileType(file))->test(&host().taskQueue(), file, results);
}

template <class Job>
std::shared_ptr<KruvTask> ChecksumTab::verifyList(const QString &file,
                                                  const std::shared_ptr<KruvTaskResults> &results)
{
    return std::make_shared<Job>(&host().taskQueue(), file, results);
}

ChecksumTab::JobMaker ChecksumTab::listVerifier(const QString &file)
{
    static const QHash<QString, JobMaker> makers{
        {QStringLiteral("MD5"), &ChecksumTab::verifyList<VerifyMD5Task>},
        {QStringLiteral("ST5"), &ChecksumTab::verifyList<VerifyST5Task>},
        {QStringLiteral("FFP"), &ChecksumTab::verifyList<VerifyFFPTask>},
    };
    // album.ffp.txt is a fingerprint list that a plain editor opens.
    const bool isText = PathNames::fileType(file) == u"TXT";
    const QString inner = isText ? PathNames::fileType(PathNames::nameWithoutExtension(file)) : QString();
    if (isText && inner != u"FFP") {
        return nullptr;
    }
    return makers.value(isText ? inner : PathNames::fileType(file), nullptr);
}

QStringList ChecksumTab::filesOfTypes(const QStringList &types)
{
    QStringList files = fileNames();
    files.removeIf([&types](const QString &file) { return !types.contains(PathNames::fileType(file)); });
    return files;
}

bool ChecksumTab::createList()
{
    const QStringList flac{flacFormat.types.front().toString()};
    const QStringList audio = Formats::typesFor(&TakenBy::checksum);
    const QString kind = m_createChecksumOptions.selectedId();
    const QStringList files = filesOfTypes(kind == u"ffp" ? flac : audio);
    if (files.isEmpty()) {
        return true;
    }
    if (kind == u"ffp") {
        return createFFP(files);
    }
    const bool sourceSave = m_sourceSaveButton.isOn();
    if (auto job = kind == u"md5" ? createMD5(files, sourceSave) : createST5(files, sourceSave)) {
        submit(job);
    }
    return true;
}

bool ChecksumTab::areAllSameDirectory(const QStringList &files)
{
    return CreateMD5Task::areAllSameDirectory(files);
}

std::optional<QString> ChecksumTab::placeOfList(const QStringList &files, bool sourceSave,
                                                const QString &plainName, const QString &extension)
{
    if (sourceSave && areAllSameDirectory(files)) {
        return placeBeside(files, plainName, extension);
    }
    const QString title = tr("Save %1 as...").arg(extension);
    return openSavePanel(title, title, plainName + u'.' + extension);
}

std::optional<QString> ChecksumTab::placeBeside(const QStringList &files, const QString &plainName,
                                                const QString &extension)
{
    const QString folder = PathNames::folderOf(files.value(0));
    const QString path = ListText::pathIn(folder, host().preferences(), plainName, extension);
    return agreeOnExisting({path}) ? std::optional(path) : std::nullopt;
}

std::shared_ptr<KruvTask> ChecksumTab::createMD5(const QStringList &files, bool sourceSave)
{
    const auto place = placeOfList(files, sourceSave, QStringLiteral("md5sum"), QStringLiteral("md5"));
    if (!place) {
        return nullptr;
    }
    auto job = std::make_shared<CreateMD5Task>(&host().taskQueue(), files, *place);
    job->setTitle(tr("Creating MD5"));
    return job;
}

std::shared_ptr<KruvTask> ChecksumTab::createST5(const QStringList &files, bool sourceSave)
{
    const auto place = placeOfList(files, sourceSave, QStringLiteral("checksum"), QStringLiteral("st5"));
    if (!place) {
        return nullptr;
    }
    return std::make_shared<CreateST5Task>(&host().taskQueue(), tool(QStringLiteral("shntool")), files,
                                           *place);
}

bool ChecksumTab::createFFP(const QStringList &flacFiles)
{
    const QString extension = host().preferences().string(QStringLiteral("ffpExtension"));
    const QString plainName = QStringLiteral("fingerprint");
    std::optional<QString> place;
    if (m_sourceSaveButton.isOn()) {
        place = placeBeside(flacFiles, plainName, extension);
    } else {
        place = openSavePanel(tr("Save fingerprint as..."), tr("Save fingerprint as..."),
                              plainName + u'.' + extension);
    }
    if (!place) {
        return false;
    }
    submit(std::make_shared<CreateFFPTask>(&host().taskQueue(), flacFiles, *place));
    return true;
}

} // namespace kruv
