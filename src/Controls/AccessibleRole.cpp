// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/AccessibleRole.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>

namespace {

constexpr const char *roleProperty = "accessibleRole";

class WidgetWithRole : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty())
            if (const auto *label = qobject_cast<QLabel *>(widget()))
                return label->text();
        return QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (qobject_cast<QAbstractButton *>(widget()))
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        auto *const button = qobject_cast<QAbstractButton *>(widget());
        if (button && name == pressAction())
            button->click();
        else
            QAccessibleWidget::doAction(name);
    }
};

QAccessibleInterface *widgetWithRole(const QString &, QObject *object)
{
    const QVariant role = object ? object->property(roleProperty) : QVariant();
    if (!role.isValid())
        return nullptr;
    return new WidgetWithRole(static_cast<QWidget *>(object), static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void AccessibleRole::give(QWidget *widget, QAccessible::Role role)
{
    static const bool installed = (QAccessible::installFactory(widgetWithRole), true);
    Q_UNUSED(installed)
    widget->setProperty(roleProperty, static_cast<int>(role));
}
