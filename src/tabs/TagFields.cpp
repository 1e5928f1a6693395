// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/TagFields.h"

namespace kruv {

void TagFields::clearFields()
{
    for (TextControl &field : m_texts) {
        field.setText(QStringLiteral(""));
    }
    m_albumArtImageView.clear();
}

void TagFields::fillTexts(const TagsObject &record)
{
    for (std::size_t index = 0; index < m_texts.size(); ++index) {
        const QString text = record.text(static_cast<TagField>(index));
        m_texts[index].setText(text.isNull() ? QStringLiteral("") : text);
    }
}

void TagFields::copyFieldsTo(TagsObject &record) const
{
    for (std::size_t index = 0; index < m_texts.size(); ++index) {
        record.setText(static_cast<TagField>(index), m_texts[index].text());
    }
    record.setPicture(m_albumArtImageView.art());
}

void TagFields::padDate()
{
    for (TextControl *field : {&monthText(), &dayText()}) {
        const QString digits = field->text().trimmed();
        if (digits.size() == 1 && digits.front().isDigit()) {
            field->setText(u'0' + digits);
        }
    }
}

} // namespace kruv
