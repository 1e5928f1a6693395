// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/VerifyST5Task.h"

#include "base/PathNames.h"
#include "checksums/ShntoolHash.h"
#include "platform/Resources.h"
#include "tasks/TerminalText.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolRun.h"

#include <QFileInfo>

namespace kruv {

namespace {

QString shntool()
{
    return toolPath(QStringLiteral("shntool"));
}

/// The tool's hash line for one file; older versions leave the name off.
QString computedLine(const QString &output, const QString &name)
{
    const QString line = ShntoolHash::hashLines(output).join(u'\n');
    return (line.endsWith(ListText::st5Separator.toString() + name) ? line : line + name).trimmed();
}

} // namespace

VerifyST5Task::VerifyST5Task(TaskCompletionSink *queue, const QString &fileName,
                             std::shared_ptr<KruvTaskResults> results)
    : VerifyListTask(queue, fileName, std::move(results),
                     {tr("Verigying ST5 File"), QStringLiteral("ST5"), u";"})
{
}

void VerifyST5Task::prepare()
{
    ToolCatalog::requireLaunchable(shntool());
}

VerifyListTask::Checked VerifyST5Task::check(const ListText::Line &line, FileProgress &progress)
{
    const QString stored = line.text.trimmed();
    const qsizetype separator = stored.indexOf(ListText::st5Separator);
    const QString listed =
        separator < 0 ? QString() : stored.sliced(separator + ListText::st5Separator.size());
    const QString name = PathNames::lastPathComponent(listed);
    const QString label = shown(name.isEmpty() ? stored : name);
    const auto [outcome, words] = compare(stored, name, progress);
    return {{label, outcome, words}, QStringLiteral("%1 : %2\n").arg(label, words)};
}

std::pair<VerifyListTask::Outcome, QString> VerifyST5Task::compare(const QString &stored, const QString &name,
                                                                   FileProgress &progress)
{
    const QString mismatch = tr("did not match shntool md5 file");
    if (!isPossibleName(name)) {
        return {Outcome::Failed, mismatch};
    }
    const QFileInfo file(ListText::joined(folder(), name));
    if (file.exists() && !file.isFile()) {
        return {Outcome::Failed, notAFile()};
    }
    const QString output = hash(name, progress);
    const QString complaints = ShntoolHash::complaints(output).join(u'\n');
    if (complaints.contains(u"warning") || !ShntoolHash::unsound(output).isEmpty()) {
        return {file.exists() ? Outcome::Failed : Outcome::Missing, complaints};
    }
    return computedLine(output, name) == stored ? std::pair(Outcome::Matched, QStringLiteral("OK"))
                                                : std::pair(Outcome::Failed, mismatch);
}

QString VerifyST5Task::hash(const QString &name, FileProgress &progress)
{
    TerminalText screen;
    ToolRun tool({shntool(), {QStringLiteral("hash"), name}, folder()}, stopToken());
    const ToolEnd end = tool.run([&](const QString &piece) {
        screen.append(piece);
        if (const auto percent = ShntoolHash::percentage(screen.currentLine())) {
            progress.set(*percent / 100.0);
            setTopTextFieldString(tr("Verifying: %1%").arg(progressIndicatorValue(), 0, 'f', 6));
        }
    });
    end.requireLaunched();
    return screen.text();
}

} // namespace kruv
