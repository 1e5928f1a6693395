// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/UserInterface.h"
#include "tags/TagsObject.h"

namespace kruv {

/// The editor of up to eight free-form tags. The modal panel itself belongs to the user interface; this keeps
/// its rows and turns them into a map. Main thread only.
class KruvCustomTagsPanel
{
public:
    static constexpr int rowCount = 8;

    explicit KruvCustomTagsPanel(UserInterface &userInterface)
        : m_userInterface(userInterface)
    {
    }

    /// Shows the panel, returns when it is closed, and fills the map from its rows.
    void runPanel();
    /// The same: the rows keep what they held, whatever the record has. Fill them before with fillTags().
    void runPanelWithTags(const TagsObject *record);
    /// Adds the tags to the map, and the first eight to the rows. nullptr does nothing.
    void fillTags(const TagsObject::CustomTags *dictionary);
    /// Sets row `n`, 1 to 8; any other number is ignored.
    void setValue(const QString &name, const QString &value, int n);
    /// Makes the map anew from the eight rows, blank ones included; a later row with the same name wins.
    void fillTagsDictionary();
    /// The text trimmed at both ends; never null.
    static QString stringValue(const QString &text);
    /// Empties all rows and leaves the map alone.
    void clearTags();

    // Rows are numbered from 1 to 8.
    QString customTagNameText(int row) const { return m_rows.at(index(row)).first; }
    void setCustomTagNameText(int row, const QString &name) { m_rows.at(index(row)).first = name; }
    QString customTagValueText(int row) const { return m_rows.at(index(row)).second; }
    void setCustomTagValueText(int row, const QString &value) { m_rows.at(index(row)).second = value; }

    const TagsObject::CustomTags &customTagDictionary() const { return m_customTagDictionary; }
    void setCustomTagDictionary(const TagsObject::CustomTags &tags) { m_customTagDictionary = tags; }

private:
    static std::size_t index(int row) { return static_cast<std::size_t>(row - 1); }

    UserInterface &m_userInterface;
    UserInterface::CustomTagRows m_rows;
    TagsObject::CustomTags m_customTagDictionary;
};

} // namespace kruv
