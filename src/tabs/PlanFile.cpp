// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanFile.h"

#include "base/Digest.h"
#include "base/FileStamp.h"
#include "base/PathNames.h"
#include "base/WholeFile.h"
#include "tabs/OtherFiles.h"
#include "tabs/Plan.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace kruv {

namespace {

constexpr int formatVersion = 1;
const QString versionKey = QStringLiteral("kruv-plan");

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

constexpr double inOneSecond = 1e6; // microseconds

/// What a byte costs of entries of which no earlier run tells anything: as much as of those that are known,
/// else as on an ordinary machine.
double secondsPerByte(const std::vector<PlanEntry> &entries)
{
    constexpr double usual = 2e-8;
    double seconds = 0.0;
    double bytes = 0.0;
    for (const PlanEntry &entry : entries) {
        if (entry.seconds > 0.0) {
            seconds += entry.seconds;
            bytes += static_cast<double>(entry.sourceBytes);
        }
    }
    return bytes > 0.0 ? seconds / bytes : usual;
}

QJsonObject entryAsJson(const PlanEntry &entry, double perByte)
{
    QJsonObject object{{QStringLiteral("source"), entry.sources.value(0)},
                       {QStringLiteral("output"), entry.output}};
    if (!entry.isMade()) {
        object.insert(QStringLiteral("done"), true);
        return object;
    }
    const bool isCopy = OtherFiles::kindOf(entry.output).has_value();
    const double seconds =
        entry.seconds > 0.0 ? entry.seconds : perByte * static_cast<double>(entry.sourceBytes);
    object.insert(QStringLiteral("seconds"), isCopy ? 0.0 : std::round(seconds * inOneSecond) / inOneSecond);
    object.insert(QStringLiteral("sourceBytes"), entry.sourceBytes);
    if (entry.bytes > 0) {
        object.insert(QStringLiteral("bytes"), entry.bytes);
    }
    const bool replaces =
        entry.action == PlanEntry::Action::Replace || entry.action == PlanEntry::Action::Update;
    if (const auto there = replaces ? FileStamp::of(entry.output) : std::nullopt) {
        object.insert(QStringLiteral("replacedSize"), static_cast<qint64>(there->size));
        object.insert(QStringLiteral("replacedTime"), static_cast<qint64>(there->seconds));
    }
    if (!entry.keepReason.isEmpty()) {
        object.insert(QStringLiteral("keep"), entry.keepReason);
    }
    const std::pair<const char *, bool> marks[] = {{"replace", entry.action == PlanEntry::Action::Replace},
                                                   {"renew", entry.action == PlanEntry::Action::Update},
                                                   {"copy", isCopy}};
    for (const auto &[name, holds] : marks) {
        if (holds) {
            object.insert(QLatin1StringView(name), true);
        }
    }
    return object;
}

/// Whether a job would make it, or has.
bool isKept(const PlanEntry &entry, const QSet<QString> &lists)
{
    return !entry.sources.isEmpty() && !lists.contains(entry.output) &&
           (entry.isMade() || entry.action == PlanEntry::Action::SkipDone);
}

OutputPlan::Entry entryOf(const QJsonObject &object)
{
    OutputPlan::Entry entry{.source = object[QStringLiteral("source")].toString(),
                            .folder = {},
                            .output = object[QStringLiteral("output")].toString(),
                            .mayReplace = object[QStringLiteral("replace")].toBool(),
                            .keepReason = object[QStringLiteral("keep")].toString()};
    if (object.contains(QStringLiteral("replacedTime"))) {
        entry.replaced = FileStamp{.size = object[QStringLiteral("replacedSize")].toInteger(),
                                   .seconds = object[QStringLiteral("replacedTime")].toInteger()};
    }
    entry.folder = PathNames::folderOf(entry.output);
    entry.isDone = object[QStringLiteral("done")].toBool();
    entry.isCopy = object[QStringLiteral("copy")].toBool();
    if (object[QStringLiteral("renew")].toBool()) {
        entry.mayReplace = true;
        entry.earlier = ConversionRequest::Earlier::Renewed;
    }
    return entry;
}

} // namespace

void PlanFile::write(const QString &path, const Plan &plan)
{
    const auto kept = ConversionOrder::fromText(plan.order());
    QSet<QString> lists;
    for (const OutputPlan::List &list : kept ? kept->lists : std::vector<OutputPlan::List>()) {
        lists.insert(list.path);
    }
    const double perByte = secondsPerByte(plan.entries());
    QByteArray lines;
    int entries = 0;
    bool replacesLists = false;
    for (const PlanEntry &entry : plan.entries()) {
        if (isKept(entry, lists)) {
            ++entries;
            lines += lineOf(entryAsJson(entry, perByte));
        }
        replacesLists |= lists.contains(entry.output) && entry.action == PlanEntry::Action::Replace;
    }
    if (!kept || entries == 0) {
        throw std::runtime_error(tr("There is nothing that a plan could be made of.").toStdString());
    }
    const QJsonObject header{
        {versionKey, formatVersion},
        {QStringLiteral("entries"), entries},
        {QStringLiteral("made"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
        {QStringLiteral("order"), QJsonDocument::fromJson(plan.order().toUtf8()).object()},
        {QStringLiteral("replaceLists"), replacesLists}};
    if (const QString problem = WholeFile::write(path, lineOf(header) + lines); !problem.isEmpty()) {
        throw std::runtime_error(tr("%1 could not be written: %2.").arg(path, problem).toStdString());
    }
}

bool PlanFile::isPlan(const QString &path)
{
    constexpr qint64 longest = qint64{1024} * 1024; // bytes of a first line
    QFile file(path);
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink() && file.open(QIODevice::ReadOnly) &&
           QJsonDocument::fromJson(file.readLine(longest)).object()[versionKey].toInt() > 0;
}

PlanFile::PlanFile(const QString &path)
    : m_path(path)
{
    QFile file(path);
    open(file);
    Digest digest(Digest::Algorithm::SHA512);
    const auto next = [&] {
        QByteArray line = file.readLine();
        digest.add(std::as_bytes(std::span(line)));
        return line;
    };
    if (file.peek(1) != "{") { // the first line of something else may be all of it
        refuseKind();
    }
    readHeader(next());
    m_costs.reserve(std::min(m_announced, static_cast<std::size_t>(file.size())));
    for (std::size_t line = 2; !file.atEnd(); ++line) {
        QJsonParseError error = {};
        const QJsonObject object = QJsonDocument::fromJson(next(), &error).object();
        if (object[QStringLiteral("source")].toString().isEmpty() ||
            object[QStringLiteral("output")].toString().isEmpty()) {
            refuseLine(line, file.atEnd() ? tr("it was cut off") : tr("it is no entry"));
        }
        constexpr double longest = 1e9; // seconds
        const double seconds = std::clamp(object[QStringLiteral("seconds")].toDouble(), 0.0, longest);
        m_costs.push_back(std::llround(seconds * inOneSecond));
        m_areCopies.push_back(object[QStringLiteral("copy")].toBool());
    }
    if (m_costs.size() != m_announced) {
        refuseLine(
            std::min(m_costs.size(), m_announced) + 2,
            m_costs.size() < m_announced
                ? tr("the file ends there, before the last of its %1 entries").arg(m_announced)
                : tr("there are more than the %1 entries that its first line tells of").arg(m_announced));
    }
    constexpr qsizetype enough = 16; // bytes
    m_id = QString::fromLatin1(digest.result().left(enough).toHex());
}

void PlanFile::open(QFile &file) const
{
    file.setFileName(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        refuse(file.errorString());
    }
}

void PlanFile::readHeader(const QByteArray &line)
{
    const QJsonObject header = QJsonDocument::fromJson(line).object();
    const int version = header[versionKey].toInt();
    if (version < 1) {
        refuseKind();
    }
    if (version > formatVersion) {
        refuse(tr("it was made by a newer version of Kruv; this one reads plans up to version %1")
                   .arg(formatVersion));
    }
    const auto kept = ConversionOrder::fromText(QString::fromUtf8(
        QJsonDocument(header[QStringLiteral("order")].toObject()).toJson(QJsonDocument::Compact)));
    if (!kept) {
        refuse(tr("it asks for what this version of Kruv can't do; make it anew with this one"));
    }
    m_kept = *kept;
    m_announced = static_cast<std::size_t>(std::max(header[QStringLiteral("entries")].toInt(), 0));
    m_replacesLists = header[QStringLiteral("replaceLists")].toBool();
    m_made = QDateTime::fromString(header[QStringLiteral("made")].toString(), Qt::ISODateWithMs)
                 .toMSecsSinceEpoch();
}

void PlanFile::forEach(const Wanted &wanted, const Visitor &visit) const
{
    QFile file;
    open(file);
    file.readLine();
    for (std::size_t entry = 0; entry < size(); ++entry) {
        const QByteArray line = file.readLine();
        if (line.isEmpty()) {
            refuse(tr("it was changed while it was read"));
        }
        if (wanted(entry)) {
            visit(entry, entryOf(QJsonDocument::fromJson(line).object()));
        }
    }
}

void PlanFile::refuse(const QString &reason) const
{
    throw std::runtime_error(tr("The plan %1 can't be used: %2.").arg(m_path, reason).toStdString());
}

void PlanFile::refuseKind() const
{
    refuse(tr("it is no plan; kruv encode --save-plan FILE makes one"));
}

void PlanFile::refuseLine(std::size_t line, const QString &reason) const
{
    refuse(tr("line %1: %2").arg(QString::number(line), reason));
}

} // namespace kruv
