// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/StatusQueueCell.h"

#include "formats/FailureAdvice.h"
#include "gui/PromptStyle.h"
#include "gui/QuietLabel.h"
#include "tasks/KruvTask.h"
#include "tasks/StatusTableModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <chrono>

namespace kruv {

namespace {

// The row's fixed measures, in device-independent pixels from the frame's upper left corner.
constexpr int titleTop = 4;
constexpr int barTop = 21;
constexpr int statusTop = 36;
constexpr int rightRoom = 40;
constexpr int buttonFromRight = 25;
constexpr int buttonSize = 15;
constexpr int barHeight = 8;
constexpr int rowBottom = 6;
constexpr double smallFont = 0.82;

constexpr int animationSteps = 60;
constexpr auto animationInterval = std::chrono::milliseconds(33);

QFont titleFont(QFont font)
{
    font.setBold(true);
    return font;
}

QFont statusFont(QFont font)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * smallFont);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * smallFont));
    }
    return font;
}

KruvTask &taskOf(const QModelIndex &index)
{
    return static_cast<const StatusTableModel *>(index.model())->task(index.row());
}

/// The row's own colours in a tone that reads on the background at hand.
QColor toneOf(RowColor color, const QPalette &palette)
{
    const bool onDark = palette.color(QPalette::Base).lightness() < 128;
    switch (color) {
    case RowColor::Red:
        return PromptStyle::warningColor(palette);
    case RowColor::DarkGreen:
        return onDark ? QColor(110, 210, 125) : QColor(0, 128, 0);
    case RowColor::Default:
        break;
    }
    return palette.color(QPalette::Text);
}

void paintStopButton(QPainter &painter, const QPalette &palette, const QRect &rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor disc = palette.color(QPalette::Text);
    disc.setAlphaF(0.55F);
    painter.setBrush(disc);
    const QRectF circle = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawEllipse(circle);
    constexpr qreal arm = 2.7;
    const QPointF middle = circle.center();
    painter.setPen(QPen(palette.color(QPalette::Base), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(middle + QPointF(-arm, -arm), middle + QPointF(arm, arm));
    painter.drawLine(middle + QPointF(-arm, arm), middle + QPointF(arm, -arm));
    painter.restore();
}

/// In which a selected row is drawn like any other.
QPalette paletteOf(const QStyleOptionViewItem &option)
{
    QPalette palette = option.palette;
    if (option.state.testFlag(QStyle::State_Selected)) {
        palette.setColor(QPalette::Text, option.palette.color(QPalette::HighlightedText));
        palette.setColor(QPalette::Base, option.palette.color(QPalette::Highlight));
        palette.setColor(QPalette::Highlight, option.palette.color(QPalette::HighlightedText));
    }
    return palette;
}

/// The whole path, of a failed job what its tool said and what to do, of others what is remarkable.
QString toolTipOf(const KruvTask &task)
{
    constexpr qsizetype mostText = 600;
    QStringList parts{task.inputPath().isEmpty() ? task.title() : task.inputPath()};
    if (task.error()) {
        const QString said = task.results()->results(task);
        parts << FailureAdvice::essence(said).right(mostText) << FailureAdvice::advice(said);
        parts.removeAll(QString());
    } else if (task.leavesRemarks()) {
        parts << task.remarks();
    }
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
        .arg(parts.join(QStringLiteral("\n\n")).toHtmlEscaped());
}

} // namespace

StatusQueueCell::StatusQueueCell(QAbstractItemView *view)
    : QStyledItemDelegate(view)
    , m_view(view)
{
    m_animation.setSingleShot(true);
    m_animation.setInterval(animationInterval);
    connect(&m_animation, &QTimer::timeout, this, [this] {
        m_phase = (m_phase + 1) % animationSteps;
        m_view->viewport()->update();
    });
}

void StatusQueueCell::setPaused(bool paused)
{
    m_paused = paused;
    m_view->viewport()->update();
}

/// A job that was told to stop and whose tool has yet to end says so.
QString StatusQueueCell::statusText(const KruvTask &task) const
{
    if (task.cancelled() && !task.isDone()) {
        return tr("Stopping…");
    }
    return m_paused && task.isActive() ? tr("Paused") : task.topTextField().text;
}

QRect StatusQueueCell::frameOf(const QStyleOptionViewItem &option)
{
    constexpr int roomOnTheLeft = 10;
    return option.rect.adjusted(roomOnTheLeft, 0, 0, 0);
}

StatusQueueCell::Layout StatusQueueCell::layout(const QRect &frame, const QFont &font)
{
    const int titleHeight = QFontMetrics(titleFont(font)).height();
    const int statusHeight = QFontMetrics(statusFont(font)).height();
    // Larger fonts push the bar and the status line down.
    const int bar = std::max(barTop, titleTop + titleHeight);
    const int status = std::max(statusTop, bar + statusTop - barTop);
    const int width = frame.width() - rightRoom;
    return {
        .textField = {frame.x(), frame.y() + titleTop, width, titleHeight},
        .progressIndicator = {frame.x(), frame.y() + bar, width, statusTop - barTop},
        .topTextField = {frame.x(), frame.y() + status, width, statusHeight},
        .cancelButton = {frame.width() - buttonFromRight, frame.y() + bar, buttonSize, buttonSize},
    };
}

QSize StatusQueueCell::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const Layout parts = layout(QRect(0, 0, 100, 0), option.font);
    return {100, parts.topTextField.bottom() + rowBottom};
}

void StatusQueueCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    m_view->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, m_view);
    const QPalette palette = paletteOf(option);
    const KruvTask &task = taskOf(index);
    const Layout parts = layout(frameOf(option), option.font);
    paintTexts(*painter, option, parts, task);
    if (!task.progressIndicator().hidden) {
        paintBar(*painter, palette, parts.progressIndicator, task);
    }
    if (!task.cancelButton().hidden) {
        paintStopButton(*painter, palette, parts.cancelButton);
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        m_view->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, m_view);
    }
}

void StatusQueueCell::paintTexts(QPainter &painter, const QStyleOptionViewItem &option, const Layout &parts,
                                 const KruvTask &task) const
{
    const auto draw = [&painter](const QRect &rect, const QString &text, const QFont &font,
                                 const QColor &color, Qt::TextElideMode elide) {
        painter.setFont(font);
        painter.setPen(color);
        const QString shown =
            QFontMetrics(font).elidedText(QString(text).replace(u'\n', u' '), elide, rect.width());
        painter.drawText(rect, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, shown);
    };
    painter.save();
    const RowText &title = task.textField();
    // The label is empty until the job starts; which file waits is worth knowing before.
    const bool waiting = title.text.isEmpty();
    const QPalette palette = paletteOf(option);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const auto tone = [&](RowColor color) { return toneOf(selected ? RowColor::Default : color, palette); };
    draw(parts.textField, waiting ? task.title() : title.text, titleFont(option.font),
         waiting ? QuietLabel::tone(palette) : tone(title.color), Qt::ElideMiddle);
    QColor quiet = tone(task.topTextField().color);
    quiet.setAlphaF(0.75F);
    draw(parts.topTextField, statusText(task), statusFont(option.font), quiet, Qt::ElideRight);
    painter.restore();
}

void StatusQueueCell::paintBar(QPainter &painter, const QPalette &palette, const QRect &rect,
                               const KruvTask &task) const
{
    const RowProgress &progress = task.progressIndicator();
    const QRectF track(rect.x(), rect.y() + (rect.height() - barHeight) / 2.0, rect.width(), barHeight);
    constexpr qreal radius = barHeight / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor groove = palette.color(QPalette::Text);
    groove.setAlphaF(0.14F);
    painter.setBrush(groove);
    painter.drawRoundedRect(track, radius, radius);

    QRectF filled = track;
    if (progress.indeterminate) {
        constexpr qreal share = 0.25;
        const qreal position = progress.animated ? static_cast<qreal>(m_phase) / animationSteps : 0.0;
        filled.setWidth(track.width() * share);
        filled.moveLeft(track.left() + (track.width() - filled.width()) * (1.0 - std::abs(2 * position - 1)));
        if (progress.animated && !m_paused) {
            m_animation.start();
        }
    } else {
        filled.setWidth(track.width() * std::clamp(progress.value, 0.0, 100.0) / 100.0);
    }
    if (filled.width() > 0) {
        filled.setWidth(std::max<qreal>(filled.width(), barHeight));
        painter.setBrush(palette.color(task.error() ? QPalette::Mid : QPalette::Highlight));
        painter.drawRoundedRect(filled, radius, radius);
    }
    painter.restore();
}

bool StatusQueueCell::editorEvent(QEvent *event, QAbstractItemModel *, const QStyleOptionViewItem &option,
                                  const QModelIndex &index)
{
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress) {
        return false;
    }
    const auto *mouse = static_cast<QMouseEvent *>(event);
    KruvTask &task = taskOf(index);
    const QRect button = layout(frameOf(option), option.font).cancelButton;
    if (mouse->button() != Qt::LeftButton || task.cancelButton().hidden ||
        !button.adjusted(-2, -2, 2, 2).contains(mouse->pos())) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        task.cancelTask();
        m_view->viewport()->update();
    }
    return true;
}

bool StatusQueueCell::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (!index.isValid() || event->type() != QEvent::ToolTip) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const KruvTask &task = taskOf(index);
    const QRect button = layout(frameOf(option), option.font).cancelButton;
    const bool overButton = button.contains(event->pos()) && !task.cancelButton().hidden;
    QToolTip::showText(event->globalPos(), overButton ? QObject::tr("Cancel") : toolTipOf(task), view);
    return true;
}

} // namespace kruv
