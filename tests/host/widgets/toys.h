// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <abstracttask.h>
#include <element.h>
#include <elementdata.h>
#include <elementtask.h>
#include <listelementwidget.h>
#include <module.h>
#include <taskobserver.h>
#include <vieweditelementwidget.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QSpinBox>

#include <functional>
#include <vector>

/// A small world of elements, editors and tasks that the tests of the widgets turn round in.
namespace toys
{
inline bool mayAll(const Module & /*module*/)
{
    return true;
}

inline bool mayNothing(const Module & /*module*/)
{
    return false;
}

struct Asked
{
    ContextOperation *operation;
    OperationType type;
};

/// Notes what it is asked, and does of it what the test says.
class ToyModule : public Module
{
public:
    using Handler = std::function<void(Element *, OperationType, ElementData *)>;

    explicit ToyModule(const QString &name = QStringLiteral("Toys"))
        : Module(name, nullptr)
    {}

    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int /*extra*/) override
    {
        asked.push_back({operation, type});
        if (type == OperationType::Write)
            written.reset(data);
        if (handler)
            handler(dynamic_cast<Element *>(operation), type, data);
    }
    int count(OperationType type) const
    {
        int found = 0;
        for (const Asked &each : asked)
            found += each.type == type ? 1 : 0;
        return found;
    }

    std::vector<Asked> asked;
    std::unique_ptr<ElementData> written;
    Handler handler;
};

class Ordinary : public OrdinaryElement
{
public:
    Ordinary(Module *module, const QString &title, const QString &type = QStringLiteral("Toy"))
        : OrdinaryElement(type, QString(), title, module, mayAll, Place::Child)
    {}
    QString caption() const override { return QStringLiteral("About %1").arg(title()); }
    void setText(const QString &text)
    {
        auto record = std::make_unique<ElementData>();
        record->text = text;
        setRecord(std::move(record));
    }
};

class Container : public ContainerElement
{
public:
    Container(Module *module, const QString &title)
        : ContainerElement(QStringLiteral("ToyList"), QString(), title, module, mayAll, Place::Child)
    {}
};

class Supplement : public SupplementElement
{
public:
    Supplement(Module *module, const QString &title, const QString &type = QStringLiteral("ToySupplement"))
        : SupplementElement(type, QStringLiteral("Toy"), title, module, mayAll, Place::Child)
    {}
};

/// Shows and exports the text of a record.
class Editor : public ViewEditElementWidget
{
public:
    explicit Editor(Module *module, AccessCheck access = mayAll, const QString &type = QStringLiteral("Toy"))
        : ViewEditElementWidget(module, access)
        , device(new QComboBox)
        , line(new QLineEdit)
        , box(new QSpinBox)
        , check(new QCheckBox(QStringLiteral("Enabled by the form itself")))
    {
        setElementType(type);
        device->setProperty("kraNavigation", true);
        device->addItems({QStringLiteral("/dev/vda"), QStringLiteral("/dev/vdb")});
        box->setRange(10, 99);
        auto *frame = new QWidget;
        frame->setObjectName(QStringLiteral("frame"));
        frame->setProperty("kraNavigation", true);
        auto *inFrame = new QFormLayout(frame);
        inFrame->setContentsMargins(0, 0, 0, 0);
        inFrame->addRow(QStringLiteral("Device:"), device);
        inFrame->addRow(QStringLiteral("Text:"), line);
        auto *content = new QWidget;
        auto *inContent = new QFormLayout(content);
        inContent->setContentsMargins(0, 0, 0, 0);
        inContent->addRow(QStringLiteral("Number:"), box);
        inContent->addRow(check);
        auto *form = new QVBoxLayout(this);
        form->addWidget(frame);
        form->addWidget(content);
        form->addStretch();
        connect(line, &QLineEdit::textChanged, this, &Editor::changeContent);
    }

    using ElementWidget::setOrder;
    using ElementWidget::setOwnerType;

    void afterSuccessfulRead(Element *shown, ElementData *record) override
    {
        line->setText(record->text);
        check->setEnabled(false);
        ++reads;
        ViewEditElementWidget::afterSuccessfulRead(shown, record);
    }
    std::unique_ptr<ElementData> exportElementData() const override
    {
        if (exportsNothing)
            return nullptr;
        auto record = std::make_unique<ElementData>();
        record->text = line->text();
        return record;
    }
    /// What an administrator does.
    void type(const QString &text)
    {
        line->clear();
        line->insert(text);
        line->setModified(true);
    }

    QComboBox *device;
    QLineEdit *line;
    QSpinBox *box;
    QCheckBox *check;
    int reads = 0;
    bool exportsNothing = false;
};

class ListEditor : public ListElementWidget
{
public:
    explicit ListEditor(Module *module)
        : ListElementWidget(module, mayAll)
    {
        setElementType(QStringLiteral("ToyList"));
    }
    void setFilterText(const QString &text) override { filter = text; }
    QString filter;
};

/// Ends as it is told, when it is let.
class ToyTask : public ElementTask
{
public:
    ToyTask(Element *element, TaskStatus status, const QString &message, bool changes,
            std::function<void(Element *)> after = {})
        : ElementTask(element)
        , _wanted(status)
        , _message(message)
        , _changes(changes)
        , _after(std::move(after))
    {
        setDescription(QStringLiteral("Toy task"));
    }
    void run() override
    {
        setStatus(_wanted);
        setMessage(_message);
        ElementTask::run();
    }
    TaskStatus afterRun() override
    {
        if (_after)
            _after(element());
        return status();
    }
    bool changesMachine() const override { return _changes; }

private:
    TaskStatus _wanted;
    QString _message;
    bool _changes;
    std::function<void(Element *)> _after;
};
} // namespace toys
