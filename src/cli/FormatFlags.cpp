// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/FormatFlags.h"

#include "cli/UsageError.h"
#include "formats/FormatOption.h"
#include "tabs/FormatControls.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace kruv {

namespace {

QStringList choiceIds(const FormatOption &option)
{
    QStringList all;
    for (const OptionChoice &choice : option.choices) {
        all.append(QString::fromLatin1(choice.id));
    }
    return all;
}

/// The declarations of that id, with the formats they are for.
QList<std::pair<const Format *, const FormatOption *>> declarations(const QList<const Format *> &formats,
                                                                    const char *id)
{
    QList<std::pair<const Format *, const FormatOption *>> found;
    for (const Format *format : formats) {
        for (const FormatOption *option : format->options) {
            if (qstrcmp(option->id, id) == 0) {
                found.append({format, option});
            }
        }
    }
    return found;
}

/// The help of all formats that have the flag; those that say the same are named together.
std::string help(const QList<std::pair<const Format *, const FormatOption *>> &options)
{
    QStringList texts;
    QList<QStringList> formats;
    for (const auto &[format, option] : options) {
        const QString text = QCoreApplication::translate("FormatOption", option->help);
        qsizetype index = texts.indexOf(text);
        if (index < 0) {
            index = texts.size();
            texts.append(text);
            formats.emplaceBack();
        }
        formats[index].append(QString::fromLatin1(format->id));
    }
    QStringList lines;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        lines.append(formats[i].join(QStringLiteral(", ")) + QStringLiteral(": ") + texts[i]);
    }
    return lines.join(QStringLiteral("; ")).toStdString();
}

} // namespace

QString FormatFlags::either(QStringList words)
{
    const QString last = words.takeLast();
    return words.isEmpty() ? last : tr("%1 or %2").arg(words.join(QStringLiteral(", ")), last);
}

QStringList FormatFlags::ids(const QList<const Format *> &formats)
{
    QStringList all;
    for (const Format *format : formats) {
        all.append(QString::fromLatin1(format->id));
    }
    return all;
}

FormatFlags::FormatFlags(CLI::App &app, const QList<const Format *> &formats)
    : m_app(app)
    , m_formats(formats)
{
    m_app.add_option("--to", m_format, tr("Format to make").toStdString())
        ->required()
        ->type_name(ids(m_formats).join(u'|').toStdString());
    for (const Format *format : m_formats) {
        for (const FormatOption *option : format->options) {
            if (!m_texts.contains(option->id)) {
                declare(option->id);
            }
        }
    }
}

void FormatFlags::declare(const char *id)
{
    const auto options = declarations(m_formats, id);
    const FormatOption &first = *options.constFirst().second;
    const std::string name = std::string("--") + id;
    if (first.kind == FormatOption::Kind::Toggle) {
        m_app.add_flag(name, m_texts[id], help(options));
    } else {
        m_app.add_option(name, m_texts[id], help(options))->type_name(typeName(first));
    }
}

std::string FormatFlags::typeName(const FormatOption &option) const
{
    if (option.kind != FormatOption::Kind::Choice) {
        return "N";
    }
    QStringList all;
    for (const auto &[format, each] : declarations(m_formats, option.id)) {
        all += choiceIds(*each);
    }
    all.removeDuplicates();
    return all.join(u'|').toStdString();
}

const Format &FormatFlags::chosen() const
{
    const auto found =
        std::ranges::find_if(m_formats, [this](const Format *format) { return m_format == format->id; });
    if (found == m_formats.end()) {
        throw UsageError(tr("--to %1: no such format; it can be %2")
                             .arg(QString::fromStdString(m_format), either(ids(m_formats))));
    }
    return **found;
}

const FormatOption &FormatFlags::option(const std::string &id) const
{
    const Format &format = chosen();
    const auto found =
        std::ranges::find_if(format.options, [&id](const FormatOption *each) { return id == each->id; });
    if (found == format.options.end()) {
        throw UsageError(
            tr("--%1 is not for --to %2").arg(QString::fromStdString(id), QString::fromLatin1(format.id)));
    }
    return **found;
}

void FormatFlags::apply(const FormatControls &controls) const
{
    for (const auto &[id, text] : m_texts) {
        if (m_app.count("--" + id) > 0) {
            set(controls, option(id), QString::fromStdString(text));
        }
    }
    for (const auto &[id, text] : m_texts) {
        if (m_app.count("--" + id) > 0 && !controls.isRelevant(option(id), &chosen())) {
            const FormatOption &given = option(id);
            throw UsageError(tr("--%1 of %2 goes with --%3 %4")
                                 .arg(QString::fromStdString(id), QString::fromLatin1(chosen().id),
                                      QString::fromLatin1(given.dependsOn->id),
                                      either(QString::fromLatin1(given.onlyFor).split(u' '))));
        }
    }
}

void FormatFlags::set(const FormatControls &controls, const FormatOption &option, const QString &text) const
{
    const QString flag = QStringLiteral("--%1 %2").arg(QString::fromLatin1(option.id), text);
    const QString format = QString::fromLatin1(chosen().id);
    if (option.kind == FormatOption::Kind::Toggle) {
        controls.toggle(option).setOn(true);
        return;
    }
    if (option.kind == FormatOption::Kind::Choice) {
        if (!controls.choice(option).selectId(text)) {
            throw UsageError(tr("%1: for %2 it can be %3").arg(flag, format, either(choiceIds(option))));
        }
        return;
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < option.minimum || number > option.maximum ||
        (number - option.minimum) % option.step != 0) {
        throw UsageError(tr("%1: for %2 it is %3 to %4 in steps of %5")
                             .arg(flag, format, QString::number(option.minimum),
                                  QString::number(option.maximum), QString::number(option.step)));
    }
    if (option.kind == FormatOption::Kind::Rate) {
        controls.rate(option).setText(text);
    } else {
        controls.number(option).setValue(number);
    }
}

} // namespace kruv
