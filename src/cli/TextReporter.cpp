// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TextReporter.h"

#include "base/PathNames.h"
#include "cli/Console.h"
#include "formats/FailureAdvice.h"
#include "tasks/KruvTask.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace kruv {

namespace {

constexpr const char *red = "31";
constexpr const char *green = "32";
constexpr int redrawMilliseconds = 100;

QString duration(double seconds)
{
    const auto whole = static_cast<qint64>(std::llround(seconds));
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 3600;
    if (whole >= hour) {
        return QStringLiteral("%1:%2:%3")
            .arg(whole / hour)
            .arg(whole % hour / minute, 2, 10, QLatin1Char('0'))
            .arg(whole % minute, 2, 10, QLatin1Char('0'));
    }
    return QStringLiteral("%1:%2").arg(whole / minute).arg(whole % minute, 2, 10, QLatin1Char('0'));
}

QString nameOf(const KruvTask &task)
{
    return task.inputPath().isEmpty() ? task.title() : task.inputPath();
}

QString indented(const QString &text)
{
    QString result;
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        result += QStringLiteral("  %1\n").arg(Console::printable(line));
    }
    return result;
}

} // namespace

QString failureMessage(const KruvTask &task)
{
    const QString said = task.results()->results(task);
    const QString essence = FailureAdvice::essence(said);
    const QString advice = FailureAdvice::advice(said);
    if (essence.isEmpty() && advice.isEmpty()) {
        return TextReporter::tr("It ended without a word on why. Try it again by itself; if it "
                                "stays so, check the file and the output folder.");
    }
    return advice.isEmpty() ? essence : essence + u'\n' + advice;
}

TaskState::Outcome JobReporter::endOf(const KruvTask &task)
{
    return task.state().whatWasDone();
}

QString JobReporter::statusLine(const Totals &totals, const QList<const KruvTask *> &running)
{
    QStringList names;
    for (const KruvTask *task : running) {
        const QString name = PathNames::lastPathComponent(nameOf(*task));
        const RowProgress &progress = task->progressIndicator();
        names << (progress.indeterminate ? name
                                         : TextReporter::tr("%1 (%2%)")
                                               .arg(name, QString::number(static_cast<int>(progress.value))));
    }
    const auto waiting = static_cast<int>(totals.all - totals.ended() - running.size());
    const QString counts = TextReporter::tr("%1 of %2 done, %3 of them failed, %4 waiting")
                               .arg(QString::number(totals.done()), QString::number(totals.all),
                                    QString::number(totals.failed), QString::number(std::max(0, waiting)));
    return names.isEmpty()
               ? counts
               : TextReporter::tr("%1; running: %2").arg(counts, names.join(QStringLiteral(", ")));
}

TextReporter::TextReporter(const Style &style)
    : m_style(style)
{
    m_clock.start();
    if (m_style.rows) {
        m_redraw = std::make_unique<QTimer>();
        QObject::connect(m_redraw.get(), &QTimer::timeout, m_redraw.get(), [this] { drawRows(); });
        m_redraw->start(redrawMilliseconds);
    }
}

TextReporter::~TextReporter() = default;

void TextReporter::started(const KruvTask &task)
{
    const QString input = task.inputPath();
    const QString title = input.isEmpty() ? task.title() : PathNames::lastPathComponent(input);
    m_running.insert(&task, {Console::printable(title), 0.0});
    m_order.append(&task);
}

void TextReporter::progressed(const KruvTask &task)
{
    const auto row = m_running.find(&task);
    if (row != m_running.end()) {
        row->percent = task.progressIndicator().value;
    }
}

void TextReporter::ended(const KruvTask &task, const Totals &totals)
{
    const bool hadBegun = m_running.remove(&task) > 0;
    m_order.removeOne(&task);
    m_totals = totals;
    if (task.error()) {
        eraseRows();
        printFailure(task);
    } else if (!m_style.quiet && !m_style.rows) {
        const QString what = task.outputPath().isEmpty() ? nameOf(task) : task.outputPath();
        Console::writeError(
            QStringLiteral("%1 %2\n").arg(wordsFor(task, hadBegun), Console::printable(what)) +
            indented(task.remarks().join(u'\n')));
    }
}

QString TextReporter::wordsFor(const KruvTask &task, bool hadBegun)
{
    if (endOf(task) == TaskState::Outcome::Cancelled) {
        return hadBegun ? tr("canceled") : tr("not begun");
    }
    const ProofNote proof = task.proof();
    const QString words = proof.words.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(proof.words);
    return proof.holds() ? tr("done, proven") + words : tr("done");
}

void TextReporter::printFailure(const KruvTask &task)
{
    Console::writeError(
        QStringLiteral("%1 %2\n").arg(colored(tr("failed"), red), Console::printable(nameOf(task))) +
        indented(failureMessage(task)));
}

void TextReporter::results(const QString &, const QString &text)
{
    eraseRows();
    Console::writeOut(text);
}

void TextReporter::message(const QString &line)
{
    eraseRows();
    Console::complain(line);
}

void TextReporter::summary(const Totals &totals)
{
    eraseRows();
    m_redraw.reset();
    if (m_style.quiet || totals.all == 0) {
        return;
    }
    QStringList parts{tr("%n done", nullptr, totals.complete)};
    if (totals.failed > 0) {
        parts << colored(tr("%n failed", nullptr, totals.failed), red);
    }
    if (totals.cancelled > 0) {
        parts << tr("%n canceled", nullptr, totals.cancelled);
    }
    if (totals.notBegun > 0) {
        parts << tr("%n not begun", nullptr, totals.notBegun);
    }
    const QString seconds = QString::number(totals.seconds, 'f', 1);
    Console::writeError(tr("%1 in %2 s").arg(parts.join(QStringLiteral(", ")), seconds) + u'\n');
}

void TextReporter::held(bool held)
{
    eraseRows();
    m_clock.hold(held);
}

void TextReporter::eraseRows()
{
    if (m_rowsOnScreen > 0) {
        Console::writeError(QStringLiteral("\x1b[%1A\r\x1b[J").arg(m_rowsOnScreen));
        m_rowsOnScreen = 0;
    }
}

void TextReporter::drawRows()
{
    constexpr int mostRows = 16;
    constexpr int besideTheRows = 2; // the total, and the line that the cursor is on
    const auto terminal = Console::errorSize();
    const int width = terminal.columns - 1;
    QString screen = m_rowsOnScreen > 0 ? QStringLiteral("\x1b[%1A\r\x1b[J").arg(m_rowsOnScreen) : QString();
    m_rowsOnScreen = 0;
    QList<const KruvTask *> shown = m_order;
    shown.removeIf([](const KruvTask *task) { return task->state().phase() == TaskState::Phase::Finishing; });
    for (const KruvTask *task : shown.mid(0, std::clamp(terminal.rows - besideTheRows, 0, mostRows))) {
        screen += rowText(m_running.value(task), width) + u'\n';
        ++m_rowsOnScreen;
    }
    screen += colored(Console::elidedMiddle(totalRow(), width), green) + u'\n';
    ++m_rowsOnScreen;
    Console::writeError(screen);
}

QString TextReporter::rowText(const Row &row, int width) const
{
    constexpr int percentWidth = 6;
    const QString percent = QStringLiteral("%1%").arg(static_cast<int>(row.percent), percentWidth - 2);
    return percent + QStringLiteral("  ") + Console::elidedMiddle(row.title, width - percentWidth - 1);
}

QString TextReporter::totalRow() const
{
    const int done = m_totals.done();
    const int wanted = m_totals.all - m_totals.cancelled - m_totals.notBegun;
    double partly = 0.0;
    for (const Row &row : m_running) {
        partly += std::clamp(row.percent, 0.0, 100.0) / 100.0;
    }
    QString text = tr("%1 of %2").arg(done).arg(m_totals.all);
    const double finished = done + partly;
    if (finished > 0.5 && m_totals.all > 0) {
        return tr("%1 of %2, %3 left")
            .arg(QString::number(done), QString::number(m_totals.all),
                 duration(m_clock.seconds() / finished * (wanted - finished)));
    }
    return text;
}

QString TextReporter::colored(const QString &text, const char *code) const
{
    return m_style.color ? QStringLiteral("\x1b[%1m%2\x1b[0m").arg(QLatin1StringView(code), text) : text;
}

} // namespace kruv
