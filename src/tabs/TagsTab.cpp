// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/TagsTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "formats/TagFormats.h"
#include "platform/MainThread.h"
#include "tasks/KruvTaskQueue.h"
#include "util/ChangeTagsTask.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLoggingCategory>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(tagsTabLog, "kruv.tags.tab", QtWarningMsg)

constexpr qint64 progressInterval = 50; // milliseconds

const QStringList &pictureTypes()
{
    static const QStringList types = QStringLiteral("JPG JPEG GIF TIFF PNG").split(u' ');
    return types;
}

/// The one picture that lies in the folder; empty when there are several or none.
QString onlyPictureIn(const QString &folder)
{
    QString found;
    const QDir directory(folder);
    const QStringList names = directory.entryList(QDir::Files, QDir::Unsorted);
    for (const QString &name : names) {
        if (!pictureTypes().contains(PathNames::fileType(name))) {
            continue;
        }
        if (!found.isEmpty()) {
            return {};
        }
        found = directory.filePath(name);
    }
    return found;
}

bool lieInOneFolder(const QStringList &files)
{
    return std::ranges::all_of(files, [folder = PathNames::folderOf(files.value(0))](const QString &file) {
        return PathNames::folderOf(file) == folder;
    });
}

} // namespace

/// What is to be written, as the fields stood when the command was given.
struct TagsTab::Command
{
    QStringList files;
    std::vector<std::shared_ptr<TagsObject>> records;
    bool tooFewNames = false;
    bool writeEmptyTags = false;
};

/// A picture that a command may use. No path where there is none.
struct TagsTab::Offer
{
    QString path;
    AlbumArtControl::Shown picture;
};

TagsTab::TagsTab(TabHost &host)
    : BaseTab(QStringLiteral("Tags"), host)
    , m_customTagsPanel(host.userInterface())
    , m_cueSheetTagImporter(host.userInterface())
{
    connect(&trackNamesWindow(), &TrackNameInputController::kruvTrackNamesEnteredNotification, this,
            [this](const QStringList &names) { trackNamesEntered(names, NameSource::Window); });
    connect(&m_cueSheetTagImporter, &CueSheetTagImporter::kruvTrackNamesEnteredNotification, this,
            [this](const QStringList &names) { trackNamesEntered(names, NameSource::CueSheet); });
    connect(&fileList(), &QAbstractItemModel::modelReset, this, [this] { tableViewSelectionDidChange({}); });
    m_usePreviousTagsButton.setEnabled(false);
    tableViewSelectionDidChange({});
}

void TagsTab::tableViewSelectionDidChange(const QList<int> &rows)
{
    m_readingWork.abandon();
    m_pictureWork.abandon();
    m_reading = false;
    m_filesRead = 0;
    m_sheetTags.reset();
    m_differing.reset();
    m_sharedTags.reset();
    m_picturesDiffer = false;
    clearFields();
    m_customTagsPanel.clearTags();
    QList<int> inOrder = rows;
    std::ranges::sort(inOrder);
    m_selectedFiles.clear();
    for (const int row : std::as_const(inOrder)) {
        m_selectedFiles.append(fileList().at(row));
    }
    const qsizetype count = m_selectedFiles.size();
    m_multipleSelectionsLabel.setText(count > 1 ? tr("multiple selections") : QString());
    titleText().setEnabled(count == 1);
    trackText().setEnabled(count == 1);
    if (count == 1) {
        fillTagsForSelectedRow();
    } else if (count > 1) {
        getCommonTags();
    }
    Q_EMIT selectionChanged();
}

void TagsTab::perform(BackgroundWork &on, const BackgroundWork::Work &work)
{
    if (worksInBackground()) {
        on.start(work);
    } else {
        work({})();
    }
}

void TagsTab::fillTagsForSelectedRow()
{
    m_reading = true;
    perform(m_readingWork,
            [this, file = m_selectedFiles.constFirst()](const std::stop_token &) { return readRow(file); });
}

BackgroundWork::Outcome TagsTab::readRow(const QString &file)
{
    const auto record = TagFormats::readOrBlank(TagFormats::read, file);
    auto picture = AlbumArtControl::Shown::of(record->picture());
    return [this, record, picture = std::move(picture)] {
        const TagsObject::CustomTags customTags = record->customTagsDictionary();
        m_customTagsPanel.fillTags(&customTags);
        endReading(*record, picture);
    };
}

void TagsTab::getCommonTags()
{
    m_reading = true;
    perform(m_readingWork,
            [this, files = m_selectedFiles](const std::stop_token &stop) { return readRows(files, stop); });
}

BackgroundWork::Outcome TagsTab::readRows(const QStringList &files, const std::stop_token &stop)
{
    QElapsedTimer sinceShown;
    sinceShown.start();
    const CommonTags common = CommonTags::read(files, stop, [&](qsizetype done) {
        if (sinceShown.elapsed() >= progressInterval) {
            sinceShown.restart();
            MainThread::post([this, stop, done] {
                if (!stop.stop_requested()) {
                    showRead(done);
                }
            });
        }
    });
    if (!common.record) {
        return [] {};
    }
    auto picture = AlbumArtControl::Shown::of(common.record->picture());
    return [this, common, picture = std::move(picture)] {
        common.record->setTitleText(QStringLiteral(""));
        common.record->setTrackText(QStringLiteral(""));
        m_differing = common.differing;
        m_sharedTags = common.record;
        m_picturesDiffer = common.picturesDiffer;
        endReading(*common.record, picture);
    };
}

void TagsTab::showRead(qsizetype done)
{
    m_filesRead = done;
    Q_EMIT selectionChanged();
}

void TagsTab::endReading(const TagsObject &record, AlbumArtControl::Shown picture)
{
    fillTexts(record);
    albumArtImageView().show(std::move(picture));
    m_reading = false;
    if (const auto tags = std::exchange(m_sheetTags, nullptr)) {
        fillFromSheet(*tags);
    }
    showRead(m_selectedFiles.size());
}

void TagsTab::usePreviousTags()
{
    if (!m_previousTagsObject || isBusy()) {
        return;
    }
    const QString title = titleText().text();
    const QString track = trackText().text();
    fillTexts(*m_previousTagsObject);
    titleText().setText(title);
    trackText().setText(track);
    perform(m_pictureWork, [this, art = m_previousTagsObject->picture()](const std::stop_token &) {
        return [this, picture = AlbumArtControl::Shown::of(art)] { albumArtImageView().show(picture); };
    });
}

void TagsTab::editCustomTags()
{
    m_customTagsPanel.runPanel();
    Q_EMIT selectionChanged();
}

void TagsTab::chooseAlbumArt()
{
    QStringList types = pictureTypes();
    types << QStringLiteral("TIF") << QStringLiteral("WEBP");
    for (QString &type : types) {
        type = type.toLower();
    }
    if (const auto path = host().userInterface().chooseFile(tr("Choose album art"), types)) {
        chooseAlbumArt(*path);
    }
}

void TagsTab::chooseAlbumArt(const QString &path)
{
    perform(m_pictureWork, [this, path](const std::stop_token &) -> BackgroundWork::Outcome {
        return [this, path, picture = AlbumArtControl::Shown::ofFile(path)] {
            if (picture.art) {
                m_picturesDiffer = false;
                albumArtImageView().show(picture);
            } else {
                host().userInterface().alert(
                    tr("%1 is not a picture that can be read.").arg(PathNames::lastPathComponent(path)), {},
                    acknowledgeButton());
            }
        };
    });
}

void TagsTab::loadTagsFromCueSheet()
{
    const auto tags = m_cueSheetTagImporter.loadTagsFromCueSheet();
    if (tags && m_reading) {
        m_sheetTags = tags; // what is read must not come on top
    } else if (tags) {
        fillFromSheet(*tags);
    }
}

void TagsTab::fillFromSheet(const TagsObject &tags)
{
    for (const TagField field : {TagField::Album, TagField::Artist}) {
        if (const QString value = tags.text(field); !value.isNull()) {
            text(field).setText(value);
        }
    }
}

void TagsTab::trackNamesEntered(const QStringList &names, NameSource source)
{
    if (names.isEmpty()) {
        return;
    }
    m_names = names;
    // Names entered for a listing must not end up in tags unasked.
    if (source == NameSource::CueSheet || trackNamesWindow().asker() == this) {
        m_autoName.setOn(true);
    }
    if (source == NameSource::CueSheet) {
        trackNamesWindow().setNames(names);
        showNamesWindow();
    }
    Q_EMIT selectionChanged();
}

void TagsTab::leaveOutSharedParts(TagsObject &record)
{
    const auto leaveOut = [&](TagField whole, std::initializer_list<TagField> parts) {
        const auto isLost = [this](TagField part) { return differs(part) && text(part).text().isEmpty(); };
        if (record.text(whole) == m_sharedTags->text(whole) && std::ranges::any_of(parts, isLost)) {
            record.setText(whole, {});
        }
    };
    if (m_sharedTags) {
        leaveOut(TagField::Year, {TagField::Month, TagField::Day});
        leaveOut(TagField::Disc, {TagField::DiscTotal});
    }
}

TagsTab::Command TagsTab::makeCommand()
{
    padDate();
    m_customTagsPanel.fillTagsDictionary();
    const qsizetype count = m_selectedFiles.size();
    const bool named = count > 1 && m_autoName.isOn();
    Command command{m_selectedFiles, {}, named && m_names.size() < count, m_writeEmptyTags.isOn()};
    for (qsizetype k = 0; k < count; ++k) {
        auto record = std::make_shared<TagsObject>();
        copyFieldsTo(*record);
        if (count > 1) {
            record->setTitleText(named ? m_names.value(k) : QString());
            record->setTrackText(named ? QString::number(k + 1) : QString());
        }
        if (!command.writeEmptyTags) {
            leaveOutSharedParts(*record);
        }
        record->setCustomTagsDictionary(m_customTagsPanel.customTagDictionary());
        command.records.push_back(std::move(record));
    }
    return command;
}

void TagsTab::executeCommand()
{
    if (fileList().isEmpty() || m_selectedFiles.isEmpty() || isBusy()) {
        return;
    }
    auto command = std::make_shared<Command>(makeCommand());
    if (albumArtImageView().art() || !lieInOneFolder(command->files)) {
        carryOut(*command);
        return;
    }
    m_offering = true;
    Q_EMIT selectionChanged();
    perform(m_commandWork, [this, command](const std::stop_token &) -> BackgroundWork::Outcome {
        return [this, command, offer = findPicture(command->files)] {
            offerPicture(*command, offer);
            carryOut(*command);
        };
    });
}

TagsTab::Offer TagsTab::findPicture(const QStringList &files)
{
    if (!TagFormats::readOrBlank(TagFormats::read, files.constFirst())->albumArt().isNull()) {
        return {};
    }
    const QString path = onlyPictureIn(PathNames::folderOf(files.constFirst()));
    return {path, path.isEmpty() ? AlbumArtControl::Shown() : AlbumArtControl::Shown::ofFile(path)};
}

void TagsTab::offerPicture(Command &command, const Offer &offer)
{
    if (!offer.picture.art) {
        return;
    }
    const int answer = host().userInterface().askBesidePicture(
        tr("Kruv has detected an image file in the source directory. Would you like to use it "
           "for album art?"),
        {}, {UserInterface::yes(), UserInterface::no()}, 0, offer.picture.preview);
    if (answer != 0) {
        return;
    }
    qCInfo(tagsTabLog, "use album art: %s", qUtf8Printable(offer.path));
    for (const auto &record : command.records) {
        record->setPicture(offer.picture.art);
    }
    if (m_selectedFiles == command.files) {
        albumArtImageView().show(offer.picture);
    }
}

void TagsTab::carryOut(const Command &command)
{
    m_offering = false;
    Q_EMIT selectionChanged();
    if (command.tooFewNames) {
        host().userInterface().alert(
            UserInterface::errorTitle(),
            tr("Number of selected files to tag is greater than number of track names entered"),
            acknowledgeButton());
        return;
    }
    const auto results = std::make_shared<KruvTaskResults>();
    results->setHasResults(false);
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (qsizetype k = 0; k < command.files.size(); ++k) {
        const QString &file = command.files[k];
        const auto &record = command.records[static_cast<std::size_t>(k)];
        const auto job = std::make_shared<WriteTagsTask>(&host().taskQueue(), file, PathNames::fileType(file),
                                                         record, command.writeEmptyTags);
        job->setWithoutPadding(withoutPadding());
        job->setResults(results);
        results->addTaskInSet(*job);
        jobs.push_back(job);
        m_previousTagsObject = record;
    }
    m_usePreviousTagsButton.setEnabled(true);
    submit(jobs);
    m_autoName.setOn(false);
}

bool TagsTab::withoutPadding()
{
    return host().preferences().boolean(QStringLiteral("noPaddingFlacTags"));
}

void TagsTab::queueChanges(const QStringList &files, bool writeEmpty,
                           const std::function<TagChanges(qsizetype)> &changesOf)
{
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (qsizetype k = 0; k < files.size(); ++k) {
        const auto job = std::make_shared<ChangeTagsTask>(
            &host().taskQueue(), files[k], PathNames::fileType(files[k]), changesOf(k), writeEmpty);
        job->setWithoutPadding(withoutPadding());
        jobs.push_back(job);
    }
    submit(jobs);
}

} // namespace kruv
