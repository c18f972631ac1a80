// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localcomputermodule.h"

#include "computerdata.h"
#include "summarywidget.h"

#include <elementtask.h>
#include <taskobserver.h>

#include <QSysInfo>

namespace
{
class LocalComputerElement : public OrdinaryElement
{
public:
    explicit LocalComputerElement(Module *module)
        : OrdinaryElement(QStringLiteral("LocalComputer"), QString(), QSysInfo::machineHostName(), module,
                          &Element::everybody, Place::Top)
        , _icon(QIcon::fromTheme(QStringLiteral("computer")))
    {}

    QString caption() const override { return QSysInfo::prettyProductName(); }
    QIcon icon() const override { return _icon; }
    OperationTypes availableOperations() const override { return OperationType::Read; }

private:
    QIcon _icon;
};

class ReadComputerTask : public ReadPropertyHeavyTask
{
public:
    ReadComputerTask(Element *element, const Module &module)
        : ReadPropertyHeavyTask(element)
        , _administrator(Module::isAdministrator(module))
    {
        setDescription(LocalComputerModule::tr("Read what this computer is"));
    }

    void run() override
    {
        setElementData(std::make_unique<ComputerData>(ComputerData::read(_administrator)));
        ReadPropertyHeavyTask::run();
    }

private:
    const bool _administrator;
};
} // namespace

LocalComputerModule::LocalComputerModule(QObject *parent)
    : Module(moduleName(), parent)
{
    setKind(RootKind);
    setData(QStringLiteral("description"), tr("This computer"));
    setData(QStringLiteral("administrator"), isAdministrator(*this));

    new LocalComputerElement(this); // registers with this module, which owns it
    insertElementWidget(
        new SummaryWidget(this, QStringLiteral("LocalComputer"), ComputerData::labels(),
                          [](const ElementData &data) { return static_cast<const ComputerData &>(data).values(); }));
    connectElementWidgets();
}

void LocalComputerModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data,
                                           int extra)
{
    if (operation->contextType() == ContextOperation::ElementContext && type == OperationType::Read)
        TaskObserver::instance()->performTask(new ReadComputerTask(static_cast<Element *>(operation), *this));
    else
        Module::performOperation(operation, type, data, extra);
}
