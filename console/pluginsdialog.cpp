// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pluginsdialog.h"

#include "plugintext.h"
#include "ui_pluginsdialog.h"

#include <QDialogButtonBox>

PluginsDialog::PluginsDialog(const std::vector<PluginRecord> &records, const ModuleTree &tree, QWidget *parent)
    : QDialog(parent)
    , _ui(std::make_unique<Ui::PluginsDialog>())
{
    _ui->setupUi(this);
    for (const PluginRecord &record : records) {
        const bool works = record.state == PluginRecord::State::Attached;
        const bool wholly = isWhollyAtWork(record, tree);
        const QString icon = wholly  ? QStringLiteral("kra-task-succeeded")
                             : works ? QStringLiteral("dialog-warning")
                                     : QStringLiteral("dialog-error");
        new QListWidgetItem(QIcon::fromTheme(icon), pluginTitle(record) + QLatin1Char('\n') + pluginState(record, tree),
                            _ui->list);
        _details.append(pluginDetails(record, tree));
    }
    _ui->splitter->setStretchFactor(1, 1);
    connect(_ui->list, &QListWidget::currentRowChanged, this, &PluginsDialog::showDetails);
    connect(_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (_details.isEmpty())
        _ui->details->setPlainText(tr("No plug-in was found."));
    else
        _ui->list->setCurrentRow(0);
}

PluginsDialog::~PluginsDialog() = default;

void PluginsDialog::showDetails(int row)
{
    _ui->details->setHtml(_details.value(row));
}
