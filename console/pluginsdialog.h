// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <pluginloader.h>

#include <QDialog>

#include <memory>

class ModuleTree;

namespace Ui
{
class PluginsDialog;
}

/// Which plug-ins were found, which are at work, and why another is not.
class PluginsDialog : public QDialog
{
    Q_OBJECT

public:
    PluginsDialog(const std::vector<PluginRecord> &records, const ModuleTree &tree, QWidget *parent = nullptr);
    ~PluginsDialog() override;

private:
    void showDetails(int row);

    std::unique_ptr<Ui::PluginsDialog> _ui;
    QStringList _details;
};
