// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/VerifyFFPTask.h"

#include "audio/SourceCheck.h"
#include "base/PathNames.h"
#include "checksums/FlacFingerprint.h"
#include "formats/flac/FlacOutput.h"
#include "platform/Resources.h"
#include "tasks/TerminalText.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolOutput.h"
#include "tasks/ToolRun.h"

#include <QFileInfo>

#include <algorithm>

namespace kruv {

namespace {

/// What the tool said last that tells something: its error, which the decoder's state follows.
QString lastWords(const QString &text)
{
    const qsizetype error = text.lastIndexOf(u"ERROR");
    const QString words = error < 0 ? text.sliced(text.lastIndexOf(u'\n') + 1) : text.sliced(error);
    return words.section(u'\n', 0, 0).trimmed();
}

} // namespace

/// One file that is decoded in test mode.
struct VerifyFFPTask::Test
{
    Entry *entry = nullptr;
    QString report;
};

VerifyFFPTask::VerifyFFPTask(TaskCompletionSink *queue, const QString &fileName,
                             std::shared_ptr<KruvTaskResults> results)
    : VerifyListTask(queue, fileName, std::move(results), {tr("Verifying FFP"), QStringLiteral("FFP"), u";"})
{
}

void VerifyFFPTask::prepare()
{
    ToolCatalog::requireLaunchable(toolPath(QStringLiteral("metaflac")));
    ToolCatalog::requireLaunchable(toolPath(QStringLiteral("flac")));
}

VerifyListTask::Checked VerifyFFPTask::check(const ListText::Line &line, FileProgress &)
{
    const QStringList parts = line.text.split(u':');
    const QString name = parts[0].trimmed();
    const QString expected = name + u':' + parts.value(1).trimmed();
    const QString label = shown(name);
    const auto verdict = [&label](const QString &name, Outcome outcome, const QString &words) {
        return Checked{{name, outcome, words}, QStringLiteral("%1 : %2\n").arg(label, words)};
    };
    const QString path = ListText::joined(folder(), name);
    const QFileInfo file(path);
    if (!isPossibleName(name)) {
        return verdict(label, Outcome::Failed, tr("did not match fingerprint file"));
    }
    if (file.exists() && !file.isFile()) {
        return verdict(label, Outcome::Failed, notAFile());
    }
    showStatus(tr("Verifying %1").arg(label));
    const QString computed = fingerprint(path, stopToken()).trimmed();
    if (isMetaflacError(computed)) {
        return {{label, file.exists() ? Outcome::Failed : Outcome::Missing, computed},
                QStringLiteral("%1 : %2\n").arg(computed, label)};
    }
    return expected == computed ? verdict(name, Outcome::Matched, QStringLiteral("OK"))
                                : verdict(label, Outcome::Failed, tr("did not match fingerprint file"));
}

QString VerifyFFPTask::afterwards(std::vector<Entry> &entries)
{
    std::vector<Test> tests;
    for (Entry &entry : entries) {
        if (entry.outcome == Outcome::Matched) {
            tests.push_back({&entry, {}});
        }
    }
    if (tests.empty()) {
        return {};
    }
    std::ranges::sort(tests, {}, [](const Test &test) -> const QString & { return test.entry->name; });
    showStatus(tr("Verifying FLAC File"));
    forEachFile(tests.size(),
                [&](std::size_t index, FileProgress &progress) { test(tests[index], progress); });
    QString report = tr("\nVerify Flac Files in %1\n").arg(PathNames::lastPathComponent(folder()));
    for (const Test &each : tests) {
        report += each.report;
    }
    return report;
}

void VerifyFFPTask::test(Test &test, FileProgress &progress)
{
    const QString name = PathNames::lastPathComponent(test.entry->name);
    TerminalText screen;
    const auto read = [&](const QString &piece) {
        screen.append(piece);
        const QString line = screen.currentLine();
        const qsizetype update = line.lastIndexOf(u"testing, ");
        if (update >= 0) {
            const double percent = ToolOutput::leadingNumber(QStringView(line).sliced(update + 9));
            setTopTextFieldString(tr("Verifying %1: %2%").arg(name, QString::number(percent, 'f', 6)));
            progress.set(percent / 100.0);
        }
    };
    const QString path = ListText::joined(folder(), test.entry->name);
    ToolRun tool({toolPath(QStringLiteral("flac")), {QStringLiteral("-t"), path}}, stopToken());
    const ToolEnd end = tool.run(read);
    end.requireLaunched();
    const QString text = screen.text().trimmed();
    const bool stumbled = !end.succeeded() && FlacOutput::stumbled(text);
    const QString remark =
        stumbled ? SourceCheck::remarkOnSound(path, [this] { return !cancelled(); }) : QString();
    if (!remark.isEmpty() || (end.succeeded() && text.endsWith(u"ok"))) {
        test.report = QStringLiteral("%1: testing, 100% complete\n").arg(name) +
                      (remark.isEmpty() ? QString() : remark + u'\n');
        return;
    }
    const QString last = lastWords(text);
    test.entry->outcome = cancelled() ? Outcome::Unchecked : Outcome::Failed;
    test.entry->message = last;
    test.report = QStringLiteral("%1: %2\n").arg(name, last);
}

} // namespace kruv
