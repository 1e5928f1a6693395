// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/KruvCustomTagsPanel.h"

namespace kruv {

void KruvCustomTagsPanel::runPanel()
{
    m_rows = m_userInterface.editCustomTags(m_rows);
    fillTagsDictionary();
}

void KruvCustomTagsPanel::runPanelWithTags(const TagsObject * /*record*/)
{
    runPanel();
}

void KruvCustomTagsPanel::fillTags(const TagsObject::CustomTags *dictionary)
{
    if (dictionary == nullptr) {
        return;
    }
    int position = 0;
    for (auto tag = dictionary->cbegin(); tag != dictionary->cend(); ++tag) {
        m_customTagDictionary.insert(tag.key(), tag.value());
        setValue(tag.key(), tag.value(), ++position);
    }
}

void KruvCustomTagsPanel::setValue(const QString &name, const QString &value, int n)
{
    if (n >= 1 && n <= rowCount) {
        m_rows.at(index(n)) = {name, value};
    }
}

void KruvCustomTagsPanel::fillTagsDictionary()
{
    m_customTagDictionary.clear();
    for (const auto &[name, value] : m_rows) {
        m_customTagDictionary.insert(stringValue(name), stringValue(value));
    }
}

QString KruvCustomTagsPanel::stringValue(const QString &text)
{
    const QString trimmed = text.trimmed();
    return trimmed.isEmpty() ? QStringLiteral("") : trimmed;
}

void KruvCustomTagsPanel::clearTags()
{
    m_rows.fill({QStringLiteral(""), QStringLiteral("")});
}

} // namespace kruv
