// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "devicesbox.h"

#include <isolatingdelegate.h>

#include <QSignalBlocker>
#include <QStylePainter>

namespace
{
enum Role
{
    MountPointRole = Qt::UserRole + 1,
    IsAbsentRole,
};

class LabelDelegate : public QStyledItemDelegate
{
public:
    explicit LabelDelegate(DevicesBox *box)
        : QStyledItemDelegate(box)
        , _box(box)
    {}

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = IsolatingDelegate::isolated(_box->label(index), option->direction);
    }

private:
    DevicesBox *_box;
};
} // namespace

DevicesBox::DevicesBox(QWidget *parent)
    : QComboBox(parent)
{
    setItemDelegate(new LabelDelegate(this));
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &DevicesBox::describe);
}

void DevicesBox::setDevices(const QStringList &devices, const QMap<QString, QString> &mountPoints,
                            const QString &wanted)
{
    const QSignalBlocker silent(this);
    clear();
    for (const QString &device : devices) {
        addItem(device, device);
        setItemData(count() - 1, mountPoints.value(device), MountPointRole);
        setItemData(count() - 1, label(model()->index(count() - 1, 0)), Qt::AccessibleTextRole);
    }
    if (!wanted.isEmpty() && !devices.contains(wanted)) {
        addItem(wanted, wanted);
        setItemData(count() - 1, true, IsAbsentRole);
    }
    setCurrentText(wanted);
    describe();
    update();
}

bool DevicesBox::isAbsent() const
{
    return currentData(IsAbsentRole).toBool();
}

QString DevicesBox::label(const QModelIndex &index) const
{
    const QString device = index.data().toString();
    const QString mountPoint = index.data(MountPointRole).toString();
    if (index.data(IsAbsentRole).toBool())
        return tr("%1 (absent)").arg(device);
    return mountPoint.isEmpty() ? device : QStringLiteral("%1 (%2)").arg(device, mountPoint);
}

void DevicesBox::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = IsolatingDelegate::isolated(label(model()->index(currentIndex(), 0)), layoutDirection());
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

/// The text that a screen reader gets of a box is that of its item.
void DevicesBox::describe()
{
    setAccessibleDescription(currentIndex() < 0 ? QString() : label(model()->index(currentIndex(), 0)));
}
