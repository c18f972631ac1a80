// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementeditor.h>
#include <elementtask.h>
#include <module.h>
#include <taskobserver.h>

#include <QTest>

#include <functional>
#include <future>

inline bool always(const Module & /*module*/)
{
    return true;
}

/// A module that writes down what is asked of it, and deletes what it is given.
class AskedModule : public Module
{
public:
    AskedModule()
        : Module(QStringLiteral("AskedModule"), nullptr)
    {}
    void performOperation(ContextOperation * /*operation*/, OperationType type, ElementData *data,
                          int /*extra*/) override
    {
        asked.append(type);
        if (type == OperationType::Write)
            delete data;
    }

    QVector<OperationType> asked;
};

class AskedEditor : public QObject, public ElementEditor
{
public:
    AskedEditor(Module *module, const QString &type)
        : _module(module)
        , _type(type)
    {}
    QString elementType() const override { return _type; }
    Module *module() const override { return _module; }
    OperationTypes availableOperations() const override { return {}; }
    int role() const override { return MainRole; }
    Element *element() const override { return shown; }
    QObject *object() override { return this; }
    void connectToModule(Module * /*module*/) override {}
    void afterSuccessfulRead(Element *element, ElementData *data) override
    {
        calls.append(QStringLiteral("read %1 %2").arg(element->title(), data->text));
    }
    void afterSuccessfulUpdate() override { calls.append(QStringLiteral("updated")); }
    void setUnchanged() override { calls.append(QStringLiteral("unchanged")); }

    Element *shown = nullptr;
    QStringList calls;

private:
    Module *_module;
    QString _type;
};

class CountedData : public ElementData
{
public:
    explicit CountedData(int *alive)
        : _alive(alive)
    {
        ++*_alive;
    }
    CountedData(const CountedData &) = delete;
    CountedData &operator=(const CountedData &) = delete;
    ~CountedData() override { --*_alive; }
    void configureParams() override { text += QStringLiteral("configured"); }

private:
    int *_alive;
};

/// A task of steps that the test gives.
template<typename Base>
class TaskOf : public Base
{
public:
    using Base::Base;
    void run() override
    {
        if (inRun)
            inRun();
        Base::run();
    }
    AbstractTask::TaskStatus afterRun() override
    {
        if (inAfterRun)
            inAfterRun();
        return Base::afterRun();
    }

    std::function<void()> inRun;
    std::function<void()> inAfterRun;
};
using FreeTask = TaskOf<AbstractTask>;
using ReadTask = TaskOf<ReadPropertyHeavyTask>;
using ContentTask = TaskOf<ReadContentTask>;
using WriteTask = TaskOf<UpdateTask>;

/// Keeps the worker busy until it is opened.
class Gate
{
public:
    Gate()
    {
        auto *task = new FreeTask;
        task->inRun = [this] {
            _running.set_value();
            _opened.get_future().wait();
        };
        TaskObserver::instance()->performTask(task);
        _running.get_future().wait();
    }
    void open() { _opened.set_value(); }

private:
    std::promise<void> _running;
    std::promise<void> _opened;
};

inline void performAndWait(AbstractTask *task)
{
    TaskObserver::instance()->performTask(task);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
}
