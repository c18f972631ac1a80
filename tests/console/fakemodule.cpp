// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakemodule.h"

#include <taskobserver.h>

#include <QVBoxLayout>

#include <utility>

namespace
{
class FormEditor : public ViewEditElementWidget
{
public:
    explicit FormEditor(Module *module)
        : ViewEditElementWidget(module, &Element::everybody)
        , line(new QLineEdit(this))
    {
        setElementType(QStringLiteral("FakeForm"));
        line->setObjectName(QStringLiteral("fakeLine"));
        (new QVBoxLayout(this))->addWidget(line);
        connect(line, &QLineEdit::textEdited, this, [this] { changeContent(); });
    }
    void afterSuccessfulRead(Element *element, ElementData *record) override
    {
        line->setText(record->text);
        ViewEditElementWidget::afterSuccessfulRead(element, record);
    }
    std::unique_ptr<ElementData> exportElementData() const override
    {
        auto record = std::make_unique<ElementData>();
        record->text = line->text();
        return record;
    }
    QLineEdit *line;
};

class ListEditor : public ListElementWidget
{
public:
    explicit ListEditor(FakeModule *module)
        : ListElementWidget(module, &Element::everybody)
        , _module(module)
    {
        setElementType(QStringLiteral("FakeList"));
    }
    void setFilterText(const QString &text) override { _module->listFilter = text; }

private:
    FakeModule *_module;
};

class ListElement : public ContainerElement
{
public:
    explicit ListElement(Module *module)
        : ContainerElement(QStringLiteral("FakeList"), QStringLiteral("LocalComputer"), QStringLiteral("Fake list"),
                           module, &Element::everybody, Place::Top)
    {}
};

class ReadTask : public ReadPropertyHeavyTask
{
public:
    ReadTask(Element *element, const QString &stored)
        : ReadPropertyHeavyTask(element)
        , _stored(stored)
    {
        setDescription(QStringLiteral("Read fake"));
    }
    void run() override
    {
        setElementData(std::make_unique<ElementData>());
        elementData()->text = _stored;
        ReadPropertyHeavyTask::run();
    }

private:
    QString _stored;
};

class WriteTask : public UpdateTask
{
public:
    WriteTask(Element *element, std::unique_ptr<ElementData> data, FakeModule *module)
        : UpdateTask(element, std::move(data))
        , _module(module)
        , _waits(module->writesWait)
        , _fails(module->writesFail)
    {
        setDescription(QStringLiteral("Write fake"));
    }
    void run() override
    {
        if (_waits)
            _module->gate.acquire();
        if (_fails) {
            setStatus(Failed);
            setMessage(QStringLiteral("the disk is full"));
        }
        UpdateTask::run();
    }
    TaskStatus afterRun() override
    {
        if (status() == Succeeded)
            _module->stored = elementData()->text;
        return UpdateTask::afterRun();
    }

private:
    FakeModule *_module;
    bool _waits;
    bool _fails;
};

class ReadListTask : public ReadContentTask
{
public:
    ReadListTask(Element *element, QStringList titles)
        : ReadContentTask(element)
        , _titles(std::move(titles))
    {
        setDescription(QStringLiteral("Read fake list"));
    }
    TaskStatus afterRun() override
    {
        QVector<TreeNode *> children;
        for (const QString &title : qAsConst(_titles))
            children.append(new OrdinaryElement(QStringLiteral("FakeForm"), {}, title, element()->module(),
                                                &Element::everybody, Element::Place::Child));
        element()->clearDelete();
        element()->append(children);
        return ReadContentTask::afterRun();
    }

private:
    QStringList _titles;
};
} // namespace

FakeModule::FakeModule(QObject *parent)
    : Module(QStringLiteral("FakeModule"), parent)
    , _form(new OrdinaryElement(QStringLiteral("FakeForm"), QStringLiteral("LocalComputer"),
                                QStringLiteral("Fake form"), this, &Element::everybody, Element::Place::Top))
    , _list(new ListElement(this))
{
    setAttachName(QStringLiteral("LocalComputerModule"));
    setKind(BranchKind);
    auto *editor = new FormEditor(this);
    _line = editor->line;
    insertElementWidget(editor);
    insertElementWidget(new ListEditor(this));
    connectElementWidgets();
}

void FakeModule::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra)
{
    auto *element = dynamic_cast<Element *>(operation);
    AbstractTask *task = nullptr;
    if (element && type == OperationType::Read) {
        ++reads;
        task = new ReadTask(element, stored);
    } else if (element && type == OperationType::Write) {
        task = new WriteTask(element, std::unique_ptr<ElementData>(data), this);
    } else if (element && type == OperationType::ReadContent) {
        ++reads;
        task = new ReadListTask(element, listTitles);
    }
    if (task)
        TaskObserver::instance()->performTask(task);
    else
        Module::performOperation(operation, type, data, extra);
}
