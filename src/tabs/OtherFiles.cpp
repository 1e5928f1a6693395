// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OtherFiles.h"

#include "base/FolderWalk.h"
#include "base/PathNames.h"
#include "formats/Formats.h"
#include "formats/Records.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

struct KindOfFile
{
    OtherFiles::Kind kind;
    const char *id;
    const char *types;
};

constexpr KindOfFile kindsOfFiles[] = {
    {OtherFiles::Text, "text", "TXT NFO LOG MD HTM HTML PDF RTF DOC DOCX ODT ACCURIP"},
    {OtherFiles::Picture, "pictures", "JPG JPEG PNG GIF BMP TIF TIFF WEBP SVG"},
    {OtherFiles::CueSheet, "cues", "CUE"},
    {OtherFiles::List, "lists", "MD5 FFP ST5 SFV"},
};

/// Matches a list over audio: "set.md5", "set.ffp.txt", "set-ffp.txt".
QRegularExpressionMatch listName(const QString &file)
{
    static const QRegularExpression name(
        QStringLiteral("\\A(?:(?<stem>.*?)(?<mark>[-._ ]+))?(?<kind>md5|ffp|st5|sfv)(?<text>\\.txt)?\\z"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return name.match(PathNames::lastPathComponent(file));
}

bool isBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

/// The innermost folder that both lie in, or that one of them is.
QString common(QString first, const QString &second)
{
    while (first != second && !isBelow(second, first) && first != u"/") {
        first = PathNames::folderOf(first);
    }
    return first;
}

bool haveSameContent(const QString &first, const QString &second)
{
    QFile one(first);
    QFile other(second);
    return one.open(QIODevice::ReadOnly) && other.open(QIODevice::ReadOnly) && one.size() == other.size() &&
           one.readAll() == other.readAll();
}

} // namespace

std::optional<OtherFiles::Kind> OtherFiles::kindOf(const QString &file)
{
    if (listName(file).hasMatch() && !PathNames::extension(file).isEmpty()) {
        return List;
    }
    const QByteArray type = PathNames::fileType(file).toLatin1();
    const auto found = std::ranges::find_if(kindsOfFiles, [&type](const KindOfFile &each) {
        return !type.isEmpty() && QByteArray(each.types).split(' ').contains(type);
    });
    return found == std::end(kindsOfFiles) ? std::nullopt : std::optional(found->kind);
}

QStringList OtherFiles::ids()
{
    QStringList ids;
    for (const KindOfFile &each : kindsOfFiles) {
        ids.append(QString::fromLatin1(each.id));
    }
    return ids;
}

std::optional<OtherFiles::Kinds> OtherFiles::kindsFrom(const QString &ids)
{
    Kinds kinds;
    for (const QString &id : ids.split(u',')) {
        const auto found = std::ranges::find_if(
            kindsOfFiles, [&id](const KindOfFile &each) { return id == QLatin1StringView(each.id); });
        if (found == std::end(kindsOfFiles) && id != u"all") {
            return std::nullopt;
        }
        kinds |= id == u"all" ? all : found->kind;
    }
    return kinds;
}

bool OtherFiles::isSeenBelow(const QString &folder, const QString &file)
{
    return isBelow(file, folder) && !QStringView(file)
                                         .sliced(folder.endsWith(u'/') ? folder.size() - 1 : folder.size())
                                         .contains(QStringView(u"/."));
}

OtherFiles::OtherFiles(const OutputPlace &place, const QStringList &folders, const Format &target)
    : m_place(place)
    , m_folders(folders)
    , m_target(target)
{
}

void OtherFiles::addTo(OutputPlan &plan, Kinds kinds)
{
    notePlaces(plan);
    for (const QString &file : find(plan, kinds)) {
        if (kindOf(file) != List || !addList(plan, file)) {
            addCopy(plan, file);
        }
    }
}

/// Neither the sources of the audio, nor what an earlier run left in an output folder among them.
QStringList OtherFiles::find(const OutputPlan &plan, Kinds kinds) const
{
    QSet<QString> passedOver;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        passedOver.insert(entry.source);
    }
    QStringList found;
    FolderWalk walk;
    for (const QString &folder : m_folders) {
        const bool hasOutputs = !m_place.folder.isEmpty() && isBelow(m_place.folder, folder);
        walk.walk(folder, [&](const QString &file) {
            const auto kind = kindOf(file);
            if (kind && kinds.testFlag(*kind) && isSeenBelow(folder, file) && !passedOver.contains(file) &&
                !(hasOutputs && isBelow(file, m_place.folder))) {
                passedOver.insert(file);
                found.append(file);
            }
        });
    }
    found.sort();
    return found;
}

void OtherFiles::notePlaces(const OutputPlan &plan)
{
    QSet<QString> noted;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        QString folder = PathNames::folderOf(entry.source);
        const QString pair = folder + QChar(0) + entry.folder;
        if (noted.contains(pair)) {
            continue;
        }
        noted.insert(pair);
        m_foldersOfOutputs.insert(entry.folder);
        if (!m_placeOfAudio.contains(folder)) {
            m_placeOfAudio.insert(folder, entry.folder);
        }
        for (; folder != u"/"; folder = PathNames::folderOf(folder)) {
            QString &above = m_placeAbove[folder];
            above = above.isNull() ? entry.folder : common(above, entry.folder);
        }
    }
}

/// Where the files of a folder go that are no audio: to its audio, else above that of the folders below it,
/// else as the folder lies in the next one.
QString OtherFiles::placeOf(const QString &folder) const
{
    if (!m_place.names && !m_place.roots.isEmpty()) {
        return m_place.folderFor(folder + QStringLiteral("/file"));
    }
    if (const auto known = m_placeOfAudio.constFind(folder); known != m_placeOfAudio.constEnd()) {
        return *known;
    }
    if (const auto known = m_placeAbove.constFind(folder); known != m_placeAbove.constEnd()) {
        return *known;
    }
    if (m_folders.contains(folder) || folder == u"/") {
        return m_place.folder.isEmpty() ? folder : m_place.folder;
    }
    return placeOf(PathNames::folderOf(folder)) + u'/' + PathNames::lastPathComponent(folder);
}

void OtherFiles::addCopy(OutputPlan &plan, const QString &file)
{
    const QString output =
        m_place.named(placeOf(PathNames::folderOf(file)) + u'/' + PathNames::lastPathComponent(file));
    const OutputPlan::Entry entry{
        .source = file, .folder = PathNames::folderOf(output), .output = output, .isCopy = true};
    const QString earlier = m_copied.value(output);
    if (output == file) {
        return;
    }
    if (!earlier.isEmpty() && haveSameContent(earlier, file)) {
        plan.leaveOut(entry, PlanEntry::Action::SkipOther, tr("It is the same as %1.").arg(earlier));
        return;
    }
    m_copied.insert(output, file);
    plan.addEntry(entry);
}

/// False for a list over audio that is not converted: that is a text like others.
bool OtherFiles::addList(OutputPlan &plan, const QString &file) const
{
    const QString folder =
        m_place.named(placeOf(PathNames::folderOf(file)) + QStringLiteral("/file")).chopped(5);
    const auto liesBelow = [&](const OutputPlan::Entry &entry) { return isBelow(entry.output, folder); };
    const bool isAbove = !m_foldersOfOutputs.contains(folder);
    if (isAbove && std::ranges::none_of(plan.entries(), liesBelow)) {
        return false;
    }
    const OutputPlan::List list = listFor(file, folder, isAbove);
    if (!plan.addList(list)) {
        plan.leaveOut({.source = file, .folder = folder, .output = list.path}, PlanEntry::Action::SkipOther,
                      tr("Another list is made anew under that name."));
    }
    return true;
}

/// Fingerprints are FLAC's and name files without their folders, and shntool hashes only what it reads.
OutputPlan::List OtherFiles::listFor(const QString &file, const QString &folder, bool isAbove) const
{
    using Kind = OutputPlan::List::Kind;
    const auto match = listName(file);
    const QString kind = match.captured(u"kind").toLower();
    const bool keepsFfp = kind == u"ffp" && &m_target == &flacFormat && !isAbove;
    const bool keepsSt5 = kind == u"st5" && !isAbove &&
                          Formats::typesFor(&TakenBy::shntool).contains(m_target.extension().toUpper());
    QString name = PathNames::lastPathComponent(file);
    const QString stem = match.captured(u"stem");
    QString extension =
        stem.isEmpty() ? PathNames::extension(name) : match.captured(u"kind") + match.captured(u"text");
    if (!keepsFfp && !keepsSt5 && kind != u"md5") {
        extension = QStringLiteral("md5");
        name = (stem.isEmpty() ? QStringLiteral("md5sum") : stem) + u'.' + extension;
    }
    return {.path = m_place.named(folder + u'/' + name),
            .extension = extension,
            .folder = folder,
            .kind = keepsFfp   ? Kind::Fingerprints
                    : keepsSt5 ? Kind::St5
                               : Kind::Md5,
            .madeAnewOf = file};
}

} // namespace kruv
