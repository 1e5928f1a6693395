// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionOrder.h"

#include "base/PathNames.h"
#include "checksums/CreateFFPTask.h"
#include "checksums/CreateMD5Task.h"
#include "formats/ConversionTask.h"
#include "formats/FormatOption.h"
#include "formats/Formats.h"
#include "formats/flac/FlacOptions.h"
#include "formats/shorten/ShortenOptions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kruv {

namespace {

constexpr int textVersion = 1;

/// By the file's content; by its name where the content is of no known kind, so that a job says so.
const Format *formatOf(const QString &file)
{
    const Format *format = Formats::identify(file);
    return format && format->decode ? format : Formats::ofType(PathNames::fileType(file));
}

std::vector<const FormatOption *> optionsOf(const ConversionOrder &order)
{
    if (order.decodes) {
        return {&FlacOptions::throughErrors, &FlacOptions::keepForeignMetadata};
    }
    return {order.target->options.begin(), order.target->options.end()};
}

/// A choice by its id, for their order may change.
QJsonValue valueOf(const OptionValues &values, const FormatOption &option)
{
    return option.kind == FormatOption::Kind::Choice ? QJsonValue(values.choice(option))
                                                     : QJsonValue(values.number(option));
}

QJsonObject chosenOf(const ConversionOrder &order)
{
    QJsonObject chosen;
    for (const FormatOption *option : optionsOf(order)) {
        chosen.insert(QString::fromLatin1(option->id), valueOf(order.options, *option));
    }
    return chosen;
}

/// False for a choice that there is no more.
bool read(OptionValues &values, const FormatOption &option, const QJsonValue &value)
{
    if (option.kind != FormatOption::Kind::Choice) {
        values.set(option, value.toInt(option.standard));
        return true;
    }
    const auto found = std::ranges::find_if(option.choices, [&value](const OptionChoice &choice) {
        return value.toString() == QLatin1StringView(choice.id);
    });
    values.set(option, static_cast<int>(found - option.choices.begin()));
    return found != option.choices.end();
}

QJsonArray listsAsJson(const std::vector<OutputPlan::List> &lists)
{
    QJsonArray all;
    for (const OutputPlan::List &list : lists) {
        all.append(QJsonObject{{QStringLiteral("path"), list.path},
                               {QStringLiteral("extension"), list.extension},
                               {QStringLiteral("folder"), list.folder}});
    }
    return all;
}

const Format *formatWithId(const QString &id)
{
    const auto found = std::ranges::find_if(
        Formats::all(), [&id](const Format *format) { return id == QLatin1StringView(format->id); });
    return found == Formats::all().end() ? nullptr : *found;
}

} // namespace

std::shared_ptr<KruvTask> ConversionOrder::makeJob(const OutputPlan::Entry &entry,
                                                   TaskCompletionSink *queue) const
{
    const Format *format = decodes ? formatOf(entry.source) : target;
    const Format::JobMaker maker = !format ? nullptr : decodes ? format->decode : format->encode;
    if (!maker) {
        return nullptr;
    }
    const std::shared_ptr<ConversionTask> job = maker(queue, {.source = entry.source,
                                                              .output = entry.output,
                                                              .options = options,
                                                              .mayReplace = entry.mayReplace,
                                                              .earlier = entry.earlier,
                                                              .goneSince = entry.goneSince,
                                                              .mayDeleteChanged = mayDeleteChanged});
    job->setDeleteOriginal(deletes && entry.earlier != ConversionRequest::Earlier::Kept);
    job->setProves(proves);
    job->setMakesFolders(makesFolders);
    if (!entry.keepReason.isEmpty()) {
        job->failAfterwards(entry.keepReason);
    }
    return job;
}

ConversionOrder::Jobs ConversionOrder::makeJobs(const OutputPlan &plan, TaskCompletionSink *queue) const
{
    const bool areOneSet = !decodes && !target->isLossy();
    const auto results = std::make_shared<KruvTaskResults>();
    results->setTaskAfterSetDone(makeLists(plan, queue));
    Jobs made;
    const auto order = std::make_shared<const ConversionOrder>(*this);
    for (const OutputPlan::Entry &entry : plan.entries()) {
        if (entry.isDone) {
            continue;
        }
        const auto job = makeJob(entry, queue);
        if (!job) {
            made.withoutJob.append(entry.source);
            continue;
        }
        job->setMaker([order, entry, queue] { return order->makeJob(entry, queue); });
        if (areOneSet) {
            job->setResults(results);
            results->addTaskInSet(*job);
        }
        made.jobs.push_back(job);
    }
    return made;
}

std::shared_ptr<KruvTask> ConversionOrder::makeLists(const OutputPlan &plan, TaskCompletionSink *queue) const
{
    if (plan.lists().empty()) {
        return nullptr;
    }
    if (options.isOn(ShortenOptions::md5)) {
        return std::make_shared<CreateMD5Task>(queue, plan.outputs(), plan.lists().front().path);
    }
    QList<CreateFFPTask::List> lists;
    for (const OutputPlan::List &list : plan.lists()) {
        if (const QStringList files = plan.outputsFor(list); !files.isEmpty()) {
            lists.append({list.path, files});
        }
    }
    auto job = std::make_shared<CreateFFPTask>(queue, lists);
    job->leaveOutUnmade();
    return job;
}

bool ConversionOrder::makesTheSame(const ConversionOrder &other) const
{
    return target == other.target && decodes == other.decodes && chosenOf(*this) == chosenOf(other);
}

bool ConversionOrder::provesLike(const ConversionOrder &other) const
{
    return (proves || deletes) == (other.proves || other.deletes);
}

QString ConversionOrder::toText(const OutputPlan &plan) const
{
    const QJsonObject object{{QStringLiteral("version"), textVersion},
                             {QStringLiteral("to"), QString::fromLatin1(target->id)},
                             {QStringLiteral("decode"), decodes},
                             {QStringLiteral("options"), chosenOf(*this)},
                             {QStringLiteral("delete-originals"), deletes},
                             {QStringLiteral("delete-changed"), mayDeleteChanged},
                             {QStringLiteral("prove"), proves},
                             {QStringLiteral("make-folders"), makesFolders},
                             {QStringLiteral("lists"), listsAsJson(plan.lists())}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<ConversionOrder::Kept> ConversionOrder::fromText(const QString &text)
{
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    const Format *target = formatWithId(object[QStringLiteral("to")].toString());
    if (object[QStringLiteral("version")].toInt() != textVersion || !target) {
        return std::nullopt;
    }
    Kept kept{.order = {.target = target,
                        .decodes = object[QStringLiteral("decode")].toBool(),
                        .deletes = object[QStringLiteral("delete-originals")].toBool(),
                        .mayDeleteChanged = object[QStringLiteral("delete-changed")].toBool(),
                        .proves = object[QStringLiteral("prove")].toBool(),
                        .makesFolders = object[QStringLiteral("make-folders")].toBool()}};
    const QJsonObject chosen = object[QStringLiteral("options")].toObject();
    for (const FormatOption *option : optionsOf(kept.order)) {
        if (!read(kept.order.options, *option, chosen[QString::fromLatin1(option->id)])) {
            return std::nullopt;
        }
    }
    for (const auto &list : object[QStringLiteral("lists")].toArray()) {
        kept.lists.push_back({list[QStringLiteral("path")].toString(),
                              list[QStringLiteral("extension")].toString(),
                              list[QStringLiteral("folder")].toString()});
    }
    return kept;
}

} // namespace kruv
