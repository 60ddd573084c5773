#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QProperty>
#include <functional>
#include <optional>

/// The alert that stands for a field: open while the field has a value. Dismissing it clears the field, and
/// clearing the field dismisses it.
template <typename Value> class FieldAlert
{
public:
    using Make = std::function<QMessageBox *(const Value &value)>;

    /// `field` must outlive the alert.
    FieldAlert(QProperty<std::optional<Value>> &field, Make make)
        : m_field(field)
        , m_make(std::move(make))
        , m_observer(field.addNotifier([this] { follow(); }))
    {
    }

    /// Shows what the field holds already.
    void follow()
    {
        if (QMessageBox *old = m_box) {
            m_box.clear();
            old->hide();
            old->deleteLater(); // it may be in the middle of a click of its own
        }
        const std::optional<Value> value = m_field.value();
        if (!value)
            return;
        m_box = m_make(*value);
        QObject::connect(m_box, &QDialog::finished, m_box, [this] {
            m_box.clear();
            m_field = std::nullopt;
        });
        m_box->open();
    }

private:
    QProperty<std::optional<Value>> &m_field;
    Make m_make;
    QPointer<QMessageBox> m_box;
    QPropertyNotifier m_observer;
};
