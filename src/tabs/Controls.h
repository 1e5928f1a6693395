// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace kruv {

class Preferences;

/// An option of a tab as a model without a widget. The window binds a widget to it, the command line sets it,
/// and the tab reads it. May be tied to a preference key, which it loads when tied and stores on change.
class Control : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

    void tieTo(Preferences &preferences, const QString &key);

Q_SIGNALS:
    /// Value, enabled or hidden changed.
    void changed();

protected:
    virtual QVariant storedValue() const { return {}; }
    virtual void loadValue(Preferences &, const QString &) {}
    void valueChanged();

private:
    bool m_enabled = true;
    bool m_hidden = false;
    Preferences *m_preferences = nullptr;
    QString m_key;
};

/// A check box: on or off; stored as 1 or 0.
class ToggleControl : public Control
{
    Q_OBJECT
public:
    using Control::Control;
    bool isOn() const { return m_on; }
    void setOn(bool on);

protected:
    QVariant storedValue() const override { return m_on ? 1 : 0; }
    void loadValue(Preferences &preferences, const QString &key) override;

private:
    bool m_on = false;
};

/// A grid of choices of which one is selected, or none. Stored as row times columns plus column; a stored
/// value outside the grid leaves the selection as it is.
class ChoiceControl : public Control
{
    Q_OBJECT
public:
    struct Choice
    {
        /// What flags and code call it.
        QString id;
        /// What a person sees.
        QString title;
    };
    /// `choices` row by row, `columns` in a row.
    explicit ChoiceControl(const QList<Choice> &choices, int columns = 1, QObject *parent = nullptr);

    int columns() const { return m_columns; }
    const QList<Choice> &choices() const { return m_choices; }
    QStringList ids() const;
    QStringList titles() const;

    /// -1 when nothing is selected.
    int selectedIndex() const { return m_selected; }
    int selectedRow() const { return m_selected < 0 ? -1 : m_selected / m_columns; }
    int selectedColumn() const { return m_selected < 0 ? -1 : m_selected % m_columns; }
    /// Both empty when nothing is selected.
    QString selectedId() const { return m_choices.value(m_selected).id; }
    QString selectedTitle() const { return m_choices.value(m_selected).title; }
    /// An index outside the grid selects nothing.
    void select(int index);
    /// False, and nothing changes, where there is no such choice.
    bool selectId(const QString &id);

protected:
    QVariant storedValue() const override { return m_selected; }
    void loadValue(Preferences &preferences, const QString &key) override;

private:
    QList<Choice> m_choices;
    int m_columns;
    int m_selected = 0;
};

/// A slider or stepper: a whole number within a range, in steps from its lower end.
class NumberControl : public Control
{
    Q_OBJECT
public:
    struct Range
    {
        int minimum;
        int maximum;
        int step;
    };

    NumberControl(const Range &range, int value, QObject *parent = nullptr);

    int minimum() const { return m_range.minimum; }
    int maximum() const { return m_range.maximum; }
    int step() const { return m_range.step; }
    int value() const { return m_value; }
    /// Values outside the range become its nearer end, values between steps the lower one.
    void setValue(int value);

protected:
    QVariant storedValue() const override { return m_value; }
    void loadValue(Preferences &preferences, const QString &key) override;

private:
    Range m_range;
    int m_value;
};

/// A text field.
class TextControl : public Control
{
    Q_OBJECT
public:
    using Control::Control;
    const QString &text() const { return m_text; }
    void setText(const QString &text);

protected:
    QVariant storedValue() const override { return m_text; }
    void loadValue(Preferences &preferences, const QString &key) override;

private:
    QString m_text;
};

/// A label whose text or visibility a tab changes.
class LabelControl : public Control
{
    Q_OBJECT
public:
    using Control::Control;
    const QString &text() const { return m_text; }
    void setText(const QString &text);

private:
    QString m_text;
};

} // namespace kruv
