// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "toys.h"

#include <QHash>
#include <QMutex>
#include <QSemaphore>

namespace toys
{
/// Holds a text for each element and answers by real tasks, which are slow or fail on command.
class StubMachine
{
public:
    /// Has the module's reads and writes answered from here.
    void serve(ToyModule &module)
    {
        module.handler = [this, &module](Element *element, OperationType type, ElementData * /*data*/) {
            if (element && type == OperationType::Read)
                TaskObserver::instance()->performTask(new Read(*this, element));
            else if (element && type == OperationType::Write)
                TaskObserver::instance()->performTask(new Write(*this, element, std::move(module.written)));
        };
    }

    QString text(const Element *element) const
    {
        const QMutexLocker lock(&_mutex);
        return _texts.value(element->title());
    }
    void setText(const Element *element, const QString &text)
    {
        const QMutexLocker lock(&_mutex);
        _texts.insert(element->title(), text);
    }

    // Looked at when a task is made.
    bool isSlow = false;            ///< the task waits for one release of the gate
    bool readsFail = false;         ///< without a record
    bool readsFailPartly = false;   ///< with a record
    bool writesFail = false;        ///< and change nothing
    bool writesFailHalfway = false; ///< after the text was changed to "half"
    QSemaphore gate;

private:
    class Read : public ReadPropertyHeavyTask
    {
    public:
        Read(StubMachine &machine, Element *element)
            : ReadPropertyHeavyTask(element)
            , _machine(machine)
            , _waits(machine.isSlow)
            , _fails(machine.readsFail)
            , _failsPartly(machine.readsFailPartly)
        {
            setDescription(QStringLiteral("Read"));
        }
        void run() override
        {
            if (_waits)
                _machine.gate.acquire();
            if (!_fails) {
                const QMutexLocker lock(&_machine._mutex);
                setElementData(std::make_unique<ElementData>());
                elementData()->text = _machine._texts.value(elementTitle());
            }
            if (_fails || _failsPartly) {
                setStatus(Failed);
                setMessage(QStringLiteral("the read failed"));
            }
            ReadPropertyHeavyTask::run();
        }

    private:
        StubMachine &_machine;
        bool _waits;
        bool _fails;
        bool _failsPartly;
    };

    class Write : public UpdateTask
    {
    public:
        Write(StubMachine &machine, Element *element, std::unique_ptr<ElementData> data)
            : UpdateTask(element, std::move(data))
            , _machine(machine)
            , _waits(machine.isSlow)
            , _fails(machine.writesFail)
            , _failsHalfway(machine.writesFailHalfway)
        {
            setDescription(QStringLiteral("Write"));
        }
        void run() override
        {
            if (_waits)
                _machine.gate.acquire();
            if (_fails || _failsHalfway) {
                setStatus(Failed);
                setMessage(QStringLiteral("the disk is full"));
            }
            if (!_fails) {
                const QMutexLocker lock(&_machine._mutex);
                _machine._texts.insert(elementTitle(), _failsHalfway ? QStringLiteral("half") : elementData()->text);
            }
            UpdateTask::run();
        }

    private:
        StubMachine &_machine;
        bool _waits;
        bool _fails;
        bool _failsHalfway;
    };

    mutable QMutex _mutex;
    QHash<QString, QString> _texts; // by the title of the element
};
} // namespace toys
