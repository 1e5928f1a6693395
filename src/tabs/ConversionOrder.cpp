// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionOrder.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "checksums/CreateFFPTask.h"
#include "checksums/CreateMD5Task.h"
#include "checksums/CreateST5Task.h"
#include "convert/CopyTask.h"
#include "formats/ConversionTask.h"
#include "formats/FormatOption.h"
#include "formats/Formats.h"
#include "formats/flac/FlacOptions.h"
#include "formats/shorten/ShortenOptions.h"
#include "platform/Resources.h"
#include "tabs/NewFileNames.h"
#include "tabs/OtherFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

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

constexpr std::array<const char *, 4> listKinds{"option", "md5", "ffp", "st5"};

QString idOf(OutputPlan::List::Kind kind)
{
    return QString::fromLatin1(listKinds.at(static_cast<std::size_t>(kind)));
}

/// That of an option where there is none: earlier versions knew no other.
OutputPlan::List::Kind listKind(const QString &id)
{
    const auto found =
        std::ranges::find_if(listKinds, [&id](const char *each) { return id == QLatin1StringView(each); });
    return found == listKinds.end() ? OutputPlan::List::Kind::OfOption
                                    : static_cast<OutputPlan::List::Kind>(found - listKinds.begin());
}

QJsonArray listsAsJson(const std::vector<OutputPlan::List> &lists)
{
    QJsonArray all;
    for (const OutputPlan::List &list : lists) {
        all.append(QJsonObject{{QStringLiteral("path"), list.path},
                               {QStringLiteral("extension"), list.extension},
                               {QStringLiteral("folder"), list.folder},
                               {QStringLiteral("kind"), idOf(list.kind)}});
    }
    return all;
}

const Format *formatWithId(const QString &id)
{
    const auto found = std::ranges::find_if(
        Formats::all(), [&id](const Format *format) { return id == QLatin1StringView(format->id); });
    return found == Formats::all().end() ? nullptr : *found;
}

std::shared_ptr<KruvTask> listJob(const OutputPlan::List &list, const QStringList &files,
                                  TaskCompletionSink *queue)
{
    using Kind = OutputPlan::List::Kind;
    if (list.kind == Kind::St5) {
        return std::make_shared<CreateST5Task>(queue, toolPath(QStringLiteral("shntool")), files, list.path);
    }
    if (list.kind == Kind::Md5) {
        return std::make_shared<CreateMD5Task>(queue, files, list.path);
    }
    auto job = std::make_shared<CreateFFPTask>(queue, files, list.path);
    job->leaveOutUnmade();
    return job;
}

bool isCueSheet(const OutputPlan::Entry &entry)
{
    return entry.isCopy && OtherFiles::kindOf(entry.source) == OtherFiles::CueSheet;
}

/// Null where no sheet needs them.
std::shared_ptr<const NewFileNames> namesForSheets(const OutputPlan &plan)
{
    return std::ranges::any_of(plan.entries(), isCueSheet) ? std::make_shared<const NewFileNames>(plan)
                                                           : nullptr;
}

std::shared_ptr<KruvTask> copyJob(const OutputPlan::Entry &entry,
                                  const std::shared_ptr<const NewFileNames> &names, TaskCompletionSink *queue)
{
    using Earlier = ConversionRequest::Earlier;
    CopyTask::Request request{.source = entry.source,
                              .output = entry.output,
                              .mayReplace = entry.mayReplace,
                              .mayBeThere =
                                  entry.earlier == Earlier::Kept || entry.earlier == Earlier::Replaced};
    if (isCueSheet(entry)) {
        request.newName = [entry, names](const QString &name) { return names->of(name, entry); };
    }
    auto job = std::make_shared<CopyTask>(queue, request);
    job->setMakesFolders(true);
    job->setReplaced(entry.replaced);
    return job;
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
    job->setDeleteOriginal(deletes);
    job->setProves(proves);
    job->setMakesFolders(makesFolders);
    job->setReplaced(entry.replaced);
    if (!entry.keepReason.isEmpty()) {
        job->failAfterwards(entry.keepReason);
    }
    return job;
}

ConversionOrder::Jobs ConversionOrder::makeJobs(const OutputPlan &plan, TaskCompletionSink *queue) const
{
    const bool areOneSet = (!decodes && !target->isLossy()) || !plan.lists().empty();
    const auto results = std::make_shared<KruvTaskResults>();
    results->setTaskAfterSetDone(makeLists(plan, queue));
    Jobs made;
    const auto order = std::make_shared<const ConversionOrder>(*this);
    const auto names = namesForSheets(plan);
    for (const OutputPlan::Entry &entry : plan.entries()) {
        if (entry.isDone) {
            continue;
        }
        const auto make = [order, entry, queue, names] {
            return entry.isCopy ? copyJob(entry, names, queue) : order->makeJob(entry, queue);
        };
        const std::shared_ptr<KruvTask> job = make();
        if (!job) {
            made.withoutJob.append(entry.source);
            continue;
        }
        job->setMaker(make);
        if (areOneSet && !entry.isCopy) {
            job->setResults(results);
            results->addTaskInSet(*job);
            made.listsFollow = true;
        }
        made.jobs.push_back(job);
    }
    return made;
}

std::shared_ptr<KruvTask> ConversionOrder::makeLists(const OutputPlan &plan, TaskCompletionSink *queue) const
{
    const auto jobs = listJobs(plan, queue);
    for (std::size_t index = 1; index < jobs.size(); ++index) {
        jobs[index - 1]->results()->setTaskAfterSetDone(jobs[index]);
    }
    return jobs.empty() ? nullptr : jobs.front();
}

std::vector<std::shared_ptr<KruvTask>> ConversionOrder::listJobs(const OutputPlan &plan,
                                                                 TaskCompletionSink *queue) const
{
    std::vector<std::shared_ptr<KruvTask>> jobs;
    if (auto job = listOfOption(plan, queue)) {
        jobs.push_back(std::move(job));
    }
    for (const OutputPlan::List &list : plan.lists()) {
        const QStringList files = plan.outputsFor(list);
        if (list.kind != OutputPlan::List::Kind::OfOption && !files.isEmpty()) {
            jobs.push_back(listJob(list, files, queue));
        }
    }
    return jobs;
}

std::shared_ptr<KruvTask> ConversionOrder::listOfOption(const OutputPlan &plan,
                                                        TaskCompletionSink *queue) const
{
    const bool isMd5 = !decodes && options.isOn(ShortenOptions::md5);
    QList<CreateFFPTask::List> lists;
    for (const OutputPlan::List &list : plan.lists()) {
        const QStringList files =
            list.kind == OutputPlan::List::Kind::OfOption ? plan.outputsFor(list) : QStringList();
        if (!files.isEmpty() && isMd5) {
            return std::make_shared<CreateMD5Task>(queue, plan.outputs(), list.path);
        }
        if (!files.isEmpty()) {
            lists.append({list.path, files});
        }
    }
    if (lists.isEmpty()) {
        return nullptr;
    }
    auto job = std::make_shared<CreateFFPTask>(queue, lists);
    job->leaveOutUnmade();
    return job;
}

std::vector<bool> ConversionOrder::lossyAmong(const QStringList &files, std::size_t threads,
                                              const std::function<bool()> &stopped) const
{
    std::vector<const Format *> formats(static_cast<std::size_t>(files.size()));
    if (!decodes && !target->isLossy()) {
        inParallel(formats.size(), threads, stopped, [&](std::size_t index) {
            formats[index] = Formats::identify(files.at(static_cast<qsizetype>(index)));
        });
    }
    std::vector<bool> lossy;
    lossy.reserve(formats.size());
    for (const Format *format : formats) {
        lossy.push_back(format && format->isLossy());
    }
    return lossy;
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
        kept.lists.push_back(
            {list[QStringLiteral("path")].toString(), list[QStringLiteral("extension")].toString(),
             list[QStringLiteral("folder")].toString(), listKind(list[QStringLiteral("kind")].toString())});
    }
    return kept;
}

} // namespace kruv
