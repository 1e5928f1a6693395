// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/DarkPalette.h"

#include "platform/ColorScheme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace kruv::DarkPalette {

namespace {

/// Themes of Qt's own kind, KDE's among them, bring the colours that a person has chosen there.
bool themeGivesColors()
{
    const bool plainStyle =
        QApplication::style()->name().compare(QLatin1StringView("fusion"), Qt::CaseInsensitive) == 0;
    return !plainStyle || qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME") ||
           qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1StringView("KDE"));
}

QPalette palette()
{
    constexpr QRgb window = qRgb(53, 53, 56);
    constexpr QRgb text = qRgb(236, 236, 236);
    constexpr QRgb faded = qRgb(140, 140, 140);
    QPalette dark(QColor(70, 70, 74), QColor(window));
    dark.setColor(QPalette::Base, QColor(26, 26, 28));
    dark.setColor(QPalette::AlternateBase, QColor(33, 33, 36));
    dark.setColor(QPalette::ToolTipBase, QColor(62, 62, 66));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        dark.setColor(role, QColor(text));
        dark.setColor(QPalette::Disabled, role, QColor(faded));
    }
    dark.setColor(QPalette::PlaceholderText, QColor(faded));
    dark.setColor(QPalette::Highlight, QColor(48, 110, 180));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Disabled, QPalette::Highlight, QColor(90, 90, 94));
    dark.setColor(QPalette::Link, QColor(110, 170, 240));
    return dark;
}

} // namespace

void follow(ColorScheme &scheme)
{
    if (themeGivesColors()) {
        return;
    }
    QObject::connect(&scheme, &ColorScheme::darkWanted, qApp,
                     [](bool dark) { QApplication::setPalette(dark ? palette() : QPalette()); });
}

} // namespace kruv::DarkPalette
