// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/AboutView.h"

#include "base/Version.h"
#include "gui/QuietLabel.h"
#include "tabs/KruvController.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace kruv {

namespace {

template <typename Label> Label *addLine(QVBoxLayout *layout, const QString &text, QWidget *parent)
{
    auto *line = new Label(text, parent);
    line->setAlignment(Qt::AlignCenter);
    line->setWordWrap(true);
    layout->addWidget(line);
    return line;
}

} // namespace

AboutView::AboutView(KruvController &controller, QWidget *parent)
    : DropPage(parent)
    , m_controller(controller)
{
    setObjectName(QStringLiteral("about"));
    constexpr int iconSize = 96;
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(8);
    layout->addStretch(2);
    addLine<QLabel>(layout, {}, this)->setPixmap(QGuiApplication::windowIcon().pixmap(iconSize));

    QLabel *title = addLine<QLabel>(layout, QStringLiteral("Kruv %1").arg(shortVersion()), this);
    title->setObjectName(QStringLiteral("KruvTitleTextField"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    title->setFont(large);
    addLine<QuietLabel>(layout, tr("(Build %1)").arg(buildNumber()), this)
        ->setObjectName(QStringLiteral("buildTextField"));

    layout->addSpacing(12);
    addLine<QLabel>(layout, tr("Converts, verifies and keeps collections of lossless audio."), this);
    addLine<QLabel>(layout, tr("Files dropped here go to the tab that fits them."), this);
    layout->addSpacing(12);
    addLine<QuietLabel>(layout,
                        tr("© 2026 The Kruv developers. Free software under the GNU General Public License, "
                           "version 3 or later."),
                        this);
    layout->addStretch(3);
}

void AboutView::filesDropped(const QStringList &paths)
{
    m_controller.addFiles(paths);
}

} // namespace kruv
