// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QComboBox>
#include <QMap>
#include <QStringList>

/// A box to choose a device. The text of an item is the device's path, and nothing else; beside it the box shows where
/// the device is mounted: "/dev/vda (/home)".
class DevicesBox : public QComboBox
{
    Q_OBJECT

public:
    explicit DevicesBox(QWidget *parent = nullptr);

    /// Offers devices, with the mount points of those that have one, and chooses the wanted one. One that is not among
    /// them stays chosen as absent; without a wanted one the first is chosen. Emits nothing.
    void setDevices(const QStringList &devices, const QMap<QString, QString> &mountPoints, const QString &wanted);
    /// Whether the chosen device was not among the last ones.
    bool isAbsent() const;
    /// What is shown of an item.
    QString label(const QModelIndex &index) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void describe();
};
