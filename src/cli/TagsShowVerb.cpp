// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TagsShowVerb.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "cli/QueueRun.h"
#include "cli/TagsFlags.h"
#include "formats/TagFormats.h"
#include "tabs/KruvController.h"
#include "tabs/TagsTab.h"

#include <QFile>
#include <QJsonObject>

#include <exception>

namespace kruv {

namespace {

constexpr int nameWidth = 14;

/// A value of several lines stays aligned.
QString row(const QString &name, const QString &value)
{
    QStringList lines = value.split(u'\n');
    for (QString &line : lines) {
        line = Console::printable(line);
    }
    return QStringLiteral("  %1%2\n")
        .arg(name, -nameWidth)
        .arg(lines.join(u'\n' + QString(nameWidth + 2, u' ')));
}

QString pictureText(const AlbumArt &art)
{
    return TagsShowVerb::tr("%1, %2 × %3, %4 bytes")
        .arg(art.mimeType().isEmpty() ? TagsShowVerb::tr("not readable")
                                      : QString::fromLatin1(art.mimeType()))
        .arg(art.size().width())
        .arg(art.size().height())
        .arg(art.encoded().size());
}

QString asText(const QString &file, const TagsObject &record)
{
    QString text = Console::printable(file) + u'\n';
    for (const TagsFlag &flag : tagsFlags) {
        if (const QString value = record.text(flag.field); !value.isEmpty()) {
            text += row(QLatin1StringView(flag.name), value);
        }
    }
    if (const auto art = record.picture()) {
        text += row(QStringLiteral("picture"), pictureText(*art));
    }
    const TagsObject::CustomTags custom = record.customTagsDictionary();
    for (auto tag = custom.cbegin(); tag != custom.cend(); ++tag) {
        text += row(QStringLiteral("custom"), tag.key() + u'=' + tag.value());
    }
    return text;
}

QJsonObject asJson(const QString &file, const TagsObject &record)
{
    QJsonObject object{{QStringLiteral("event"), QStringLiteral("tags")}, {QStringLiteral("input"), file}};
    for (const TagsFlag &flag : tagsFlags) {
        object.insert(QLatin1StringView(flag.name), record.text(flag.field));
    }
    QJsonObject custom;
    const TagsObject::CustomTags tags = record.customTagsDictionary();
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        custom.insert(tag.key(), tag.value());
    }
    object.insert(QStringLiteral("custom"), custom);
    if (const auto art = record.picture()) {
        object.insert(QStringLiteral("picture"),
                      QJsonObject{{QStringLiteral("type"), QString::fromLatin1(art->mimeType())},
                                  {QStringLiteral("width"), art->size().width()},
                                  {QStringLiteral("height"), art->size().height()},
                                  {QStringLiteral("bytes"), art->encoded().size()}});
    }
    return object;
}

} // namespace

TagsShowVerb::TagsShowVerb(CLI::App &parent)
    : TabVerb(parent, "show", tr("Show the tags of files"))
{
    declareCommonFlags();
    setFooter(tr("Example: the titles below a folder\n"
                 "  kruv tags show --json ~/Concert | jq -r .title"));
}

void TagsShowVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    queueRun.leaveOutSummary();
    takeIn(controller.tagsTab(), paths);
    for (const QString &file : controller.tagsTab().fileNames()) {
        try {
            if (QFile probe(file); !probe.open(QIODevice::ReadOnly)) {
                throw std::runtime_error(probe.errorString().toStdString());
            }
            show(file, *TagFormats::read(file));
        } catch (const std::exception &failure) {
            Console::complain(QStringLiteral("%1: %2").arg(file, QString::fromUtf8(failure.what())));
            setFailed();
        }
    }
}

void TagsShowVerb::show(const QString &file, const TagsObject &record) const
{
    if (options().json) {
        JsonReporter::writeLine(asJson(file, record));
    } else {
        Console::writeOut(asText(file, record));
    }
}

} // namespace kruv
