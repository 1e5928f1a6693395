// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TagsSetVerb.h"

#include "base/PathNames.h"
#include "cli/Console.h"
#include "cli/QueueRun.h"
#include "cli/TagsFlags.h"
#include "cli/UsageError.h"
#include "formats/TagFormats.h"
#include "tabs/AlbumArtControl.h"
#include "tabs/KruvController.h"
#include "tabs/TagsTab.h"

#include <QSet>

namespace kruv {

namespace {

QString flagText(const TagsFlag &flag)
{
    return QStringLiteral("--") + QLatin1StringView(flag.name);
}

/// A part of a date in the digits in which dates are stored; throws where it is no such number.
QString dateDigits(const TagsFlag &flag, const QString &text, int digits, int most)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const bool fits = isNumber && number >= 1 && number <= most && (digits < 4 || text.size() == digits);
    if (!fits && !text.isEmpty()) {
        throw UsageError(
            TagsSetVerb::tr("%1 %2 does not fit: %3").arg(flagText(flag), text, TagsSetVerb::tr(flag.help)));
    }
    return text.isEmpty() ? text : QString::number(number).rightJustified(digits, u'0');
}

QString normalized(const TagsFlag &flag, const QString &text)
{
    switch (flag.field) {
    case TagField::Year:
        return dateDigits(flag, text, 4, 9999);
    case TagField::Month:
        return dateDigits(flag, text, 2, 12);
    case TagField::Day:
        return dateDigits(flag, text, 2, 31);
    default:
        return text;
    }
}

} // namespace

TagsSetVerb::TagsSetVerb(CLI::App &parent)
    : TabVerb(parent, "set", tr("Change the named tags of files; the others stay as they are"))
{
    declareCommonFlags();
    declareDryRunFlag();
    for (const TagsFlag &flag : tagsFlags) {
        addOption(std::string("--") + flag.name, m_texts.at(static_cast<std::size_t>(flag.field)),
                  tr(flag.help))
            ->type_name("TEXT");
    }
    addOption("--custom", m_customTags,
              tr("A tag of any name, in FLAC, WV, APE, TTA, Ogg and Opus files; may be given several times"))
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addOption("--art", m_art, tr("Picture that becomes the cover, beside pictures that are there"))
        ->type_name("FILE");
    addFlag("--write-empty", m_writeEmpty,
            tr("Empty texts clear their tag; tags and pictures that Kruv doesn't show go too"));
    setFooter(tr("Example: the album's name and cover in every file of a folder\n"
                 "  kruv tags set --album 'Live at Home' --art ~/Concert/front.jpg ~/Concert"));
}

TagChanges TagsSetVerb::changes()
{
    TagChanges changes;
    for (const TagsFlag &flag : tagsFlags) {
        if (app().count(std::string("--") + flag.name) == 0) {
            continue;
        }
        const QString text = QString::fromStdString(m_texts.at(static_cast<std::size_t>(flag.field)));
        if (text.isEmpty() && !m_writeEmpty) {
            throw UsageError(tr("%1 is empty. Add --write-empty to clear it.").arg(flagText(flag)));
        }
        changes.texts.insert(flag.field, normalized(flag, text));
    }
    takeCustomTags(changes);
    if (!m_art.empty()) {
        const QString path = QString::fromStdString(m_art);
        changes.picture = AlbumArtControl::Shown::ofFile(path).art;
        if (!changes.picture) {
            throw UsageError(tr("--art %1: not a picture that can be read").arg(path));
        }
    }
    if (changes.texts.isEmpty() && changes.customTags.isEmpty() && !changes.picture) {
        throw UsageError(tr("tags set: say what to set, for example --artist NAME"));
    }
    return changes;
}

void TagsSetVerb::takeCustomTags(TagChanges &changes) const
{
    for (const std::string &given : m_customTags) {
        const QString text = QString::fromStdString(given);
        const qsizetype sign = text.indexOf(u'=');
        if (sign <= 0 || sign + 1 == text.size()) {
            throw UsageError(tr("--custom %1: not a NAME=VALUE").arg(text));
        }
        changes.customTags.insert(text.left(sign).toUpper(), text.mid(sign + 1));
    }
}

void TagsSetVerb::reportUnheld(const QStringList &files, const TagChanges &changes)
{
    QSet<QString> types;
    for (const QString &file : files) {
        types.insert(PathNames::fileType(file));
    }
    for (const QString &type : std::as_const(types)) {
        QStringList unheld;
        for (const QString &name : changes.customTags.keys()) {
            if (!TagFormats::holdsCustomTag(type, name)) {
                unheld << QStringLiteral("--custom ") + name;
            }
        }
        if (!unheld.isEmpty()) {
            Console::complain(tr(".%1 files are left without what they can't hold here: %2")
                                  .arg(type.toLower(), unheld.join(QStringLiteral(", "))));
            setFailed();
        }
    }
}

void TagsSetVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    const TagChanges wanted = changes();
    TagsTab &tab = controller.tagsTab();
    queueRun.leaveOutResults();
    takeIn(tab, paths);
    const QStringList files = tab.fileNames();
    reportUnheld(files, wanted);
    queueRun.run(
        [&] { tab.queueChanges(files, m_writeEmpty, [&wanted](qsizetype) { return TagChanges(wanted); }); });
}

} // namespace kruv
