// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/TabViews.h"

#include "gui/AboutView.h"
#include "gui/ChecksumTabView.h"
#include "gui/DecodeTabView.h"
#include "gui/EncodeTabView.h"
#include "gui/FixTabView.h"
#include "gui/LossyTabView.h"
#include "gui/ShntoolTabView.h"
#include "gui/TagsTabView.h"
#include "gui/UtilTabView.h"
#include "tabs/KruvController.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

template <typename View, auto controllerTab>
QWidget *makeView(const QString &label, KruvController &controller, QWidget *parent)
{
    return new View((controller.*controllerTab)(), controller.acceptedTypes(label), parent);
}

struct Row
{
    const char *label;
    QWidget *(*make)(const QString &label, KruvController &controller, QWidget *parent);
};

constexpr Row rows[] = {
    {QT_TRANSLATE_NOOP("TabTitle", "decode"), makeView<DecodeTabView, &KruvController::decodeTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "encode"), makeView<EncodeTabView, &KruvController::encodeTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "checksum"), makeView<ChecksumTabView, &KruvController::checksumTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "shntool"), makeView<ShntoolTabView, &KruvController::shntoolTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "fix SBE"), makeView<FixTabView, &KruvController::fixTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "util"), makeView<UtilTabView, &KruvController::utilTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "Tags"), makeView<TagsTabView, &KruvController::tagsTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "lossy"), makeView<LossyTabView, &KruvController::lossyTab>},
    {QT_TRANSLATE_NOOP("TabTitle", "about"),
     [](const QString &, KruvController &controller, QWidget *parent) -> QWidget * {
         return new AboutView(controller, parent);
     }},
};

} // namespace

QWidget *makeTabView(const QString &label, KruvController &controller, QWidget *parent)
{
    const auto *row = std::ranges::find_if(
        rows, [&label](const Row &each) { return label == QLatin1StringView(each.label); });
    Q_ASSERT(row != std::end(rows));
    return row == std::end(rows) ? nullptr : row->make(label, controller, parent);
}

QString tabTitle(const QString &label)
{
    return QCoreApplication::translate("TabTitle", label.toLatin1().constData());
}

} // namespace kruv
