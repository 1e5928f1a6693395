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
    QStringView label;
    QWidget *(*make)(const QString &label, KruvController &controller, QWidget *parent);
};

constexpr Row rows[] = {
    {u"decode", makeView<DecodeTabView, &KruvController::decodeTab>},
    {u"encode", makeView<EncodeTabView, &KruvController::encodeTab>},
    {u"checksum", makeView<ChecksumTabView, &KruvController::checksumTab>},
    {u"shntool", makeView<ShntoolTabView, &KruvController::shntoolTab>},
    {u"fix SBE", makeView<FixTabView, &KruvController::fixTab>},
    {u"util", makeView<UtilTabView, &KruvController::utilTab>},
    {u"Tags", makeView<TagsTabView, &KruvController::tagsTab>},
    {u"lossy", makeView<LossyTabView, &KruvController::lossyTab>},
    {u"about",
     [](const QString &, KruvController &controller, QWidget *parent) -> QWidget * {
         return new AboutView(controller, parent);
     }},
};

} // namespace

QWidget *makeTabView(const QString &label, KruvController &controller, QWidget *parent)
{
    const auto *row = std::ranges::find_if(rows, [&label](const Row &each) { return each.label == label; });
    Q_ASSERT(row != std::end(rows));
    return row == std::end(rows) ? nullptr : row->make(label, controller, parent);
}

} // namespace kruv
