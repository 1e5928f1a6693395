// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/NameWidth.h"

#include "base/PathNames.h"
#include "tabs/FileList.h"

#include <QFontMetrics>
#include <QHash>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace kruv {

namespace {

/// Adds up the characters' own widths.
class Estimate
{
public:
    explicit Estimate(const QFontMetrics &metrics)
        : m_metrics(metrics)
    {
    }

    int operator()(QStringView text)
    {
        int sum = 0;
        for (const QChar character : text) {
            auto known = m_widths.constFind(character);
            if (known == m_widths.constEnd()) {
                known = m_widths.insert(character, m_metrics.horizontalAdvance(character));
            }
            sum += *known;
        }
        return sum;
    }

private:
    const QFontMetrics &m_metrics;
    QHash<QChar, int> m_widths;
};

} // namespace

int widestName(const FileList &list, const QFont &font)
{
    constexpr std::size_t laidOut = 32;
    const QFontMetrics metrics(font);
    Estimate estimate(metrics);
    std::vector<std::pair<int, int>> rows; // estimated width and row
    for (int row = 0; row < list.count(); ++row) {
        const QString &path = list.at(row);
        rows.emplace_back(estimate(QStringView(path).mid(path.lastIndexOf(u'/') + 1)), row);
    }
    const auto end = rows.begin() + static_cast<std::ptrdiff_t>(std::min(rows.size(), laidOut));
    std::ranges::partial_sort(rows, end, std::greater());
    int widest = 0;
    std::for_each(rows.begin(), end, [&](const auto &entry) {
        const QString name = PathNames::lastPathComponent(list.at(entry.second));
        widest = std::max(widest, metrics.horizontalAdvance(name));
    });
    return widest;
}

} // namespace kruv
