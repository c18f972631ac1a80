// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <elementtask.h>
#include <quotamodule.h>
#include <taskobserver.h>

#include <QLoggingCategory>
#include <QSignalSpy>
#include <QtTest>

namespace
{
const QString type = QStringLiteral("SomeElement");

/// A record that tells whether it still lives.
class CountedRecord : public ElementData
{
public:
    CountedRecord() { ++living; }
    CountedRecord(const CountedRecord &) = delete;
    CountedRecord &operator=(const CountedRecord &) = delete;
    ~CountedRecord() override { --living; }
    static int living;
};
int CountedRecord::living = 0;

/// What happened, in order: the lines that the host writes of an operation, and the tasks that were queued.
QStringList happened;

void noteMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message)
{
    happened += message;
}

/// What the tasks of a test were made with.
const ElementData *madeWith = nullptr;

template<int Number>
std::unique_ptr<AbstractTask> makeTask(Element *element, std::unique_ptr<ElementData> data)
{
    madeWith = data.get();
    auto task = std::make_unique<ElementTask>(element, std::move(data));
    task->setDescription(QString::number(Number));
    return task;
}

class SomeModule : public QuotaModule
{
public:
    SomeModule()
        : QuotaModule(QStringLiteral("SomeModule"), QStringLiteral("OtherModule"), ExtendingKind,
                      QStringLiteral("what it is for"),
                      {{type, OperationType::Read, &makeTask<1>},
                       {type, OperationType::Write, &makeTask<2>},
                       {QStringLiteral("OtherElement"), OperationType::Read, &makeTask<3>}},
                      nullptr)
    {}
};
} // namespace

/// Which operation on which element starts which task, and who owns the record.
class TestQuotaModule : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatAModuleSaysOfItself();
    void theRuleThatFits_data();
    void theRuleThatFits();
    void theRecordOfAReadStaysTheCallers();
    void theRecordOfAWriteGoesWithTheTask();
    void theRecordOfAWriteThatNobodyKnowsIsDeleted();
    void theHostHearsOfEveryOperation_data();
    void theHostHearsOfEveryOperation();
};

void TestQuotaModule::whatAModuleSaysOfItself()
{
    const SomeModule module;
    QCOMPARE(module.name(), QStringLiteral("SomeModule"));
    QCOMPARE(module.attachName(), QStringLiteral("OtherModule"));
    QCOMPARE(int(module.kind()), 3);
    QCOMPARE(module.getData(QStringLiteral("description")), QVariant(QStringLiteral("what it is for")));
    QCOMPARE(module.getData(QStringLiteral("administrator")).userType(), int(QMetaType::Bool));
}

void TestQuotaModule::theRuleThatFits_data()
{
    QTest::addColumn<QString>("elementType");
    QTest::addColumn<int>("operation");
    QTest::addColumn<QStringList>("started");
    QTest::newRow("read") << type << 32 << QStringList(QStringLiteral("1"));
    QTest::newRow("write") << type << 64 << QStringList(QStringLiteral("2"));
    QTest::newRow("another type") << QStringLiteral("OtherElement") << 32 << QStringList(QStringLiteral("3"));
    QTest::newRow("another type's operation") << QStringLiteral("OtherElement") << 64 << QStringList();
    QTest::newRow("an unknown type") << QStringLiteral("Unknown") << 32 << QStringList();
    QTest::newRow("an unknown operation") << type << 8 << QStringList();
    QTest::newRow("two operations at once") << type << 96 << QStringList();
}

void TestQuotaModule::theRuleThatFits()
{
    QFETCH(QString, elementType);
    QFETCH(int, operation);
    QFETCH(QStringList, started);

    SomeModule module;
    OrdinaryElement element(elementType, QString(), QString(), &module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    QSignalSpy queued(TaskObserver::instance(), &TaskObserver::taskQueued);
    element.performOperation(static_cast<OperationType>(operation), nullptr, 0);
    QStringList descriptions;
    for (const QList<QVariant> &arguments : queued)
        descriptions += arguments.first().value<TaskReport>().description;
    QCOMPARE(descriptions, started);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
}

void TestQuotaModule::theRecordOfAReadStaysTheCallers()
{
    SomeModule module;
    OrdinaryElement element(type, QString(), QString(), &module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    {
        CountedRecord record;
        element.performOperation(OperationType::Read, &record, 0);
        QVERIFY(!madeWith);
        QTRY_VERIFY(!TaskObserver::instance()->isBusy());
        QCOMPARE(CountedRecord::living, 1);
    }
    QCOMPARE(CountedRecord::living, 0);
}

void TestQuotaModule::theRecordOfAWriteGoesWithTheTask()
{
    SomeModule module;
    OrdinaryElement element(type, QString(), QString(), &module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    auto *record = new CountedRecord;
    element.performOperation(OperationType::Write, record, 0);
    QCOMPARE(madeWith, record);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(CountedRecord::living, 0);
}

void TestQuotaModule::theRecordOfAWriteThatNobodyKnowsIsDeleted()
{
    SomeModule module;
    OrdinaryElement element(QStringLiteral("Unknown"), QString(), QString(), &module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    element.performOperation(OperationType::Write, new CountedRecord, 0);
    QCOMPARE(CountedRecord::living, 0);
    QVERIFY(!TaskObserver::instance()->isBusy());
}

void TestQuotaModule::theHostHearsOfEveryOperation_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QStringList>("expected");
    const QString heard = QStringLiteral("SomeModule is asked for operation %1 on SomeElement");
    const QString queued = QStringLiteral("queued");
    QTest::newRow("read") << 32 << QStringList{heard.arg(32), queued};
    QTest::newRow("write") << 64 << QStringList{heard.arg(64), queued};
    QTest::newRow("one without a task") << 8 << QStringList{heard.arg(8)};
}

/// Before the task is handed over: what follows its end must not come first.
void TestQuotaModule::theHostHearsOfEveryOperation()
{
    QFETCH(int, operation);
    QFETCH(QStringList, expected);
    SomeModule module;
    OrdinaryElement element(type, QString(), QString(), &module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    const auto noting = connect(TaskObserver::instance(), &TaskObserver::taskQueued, this,
                                [] { happened += QStringLiteral("queued"); });
    QLoggingCategory::setFilterRules(QStringLiteral("kra.module.info=true"));
    happened.clear();
    const QtMessageHandler before = qInstallMessageHandler(&noteMessage);
    element.performOperation(static_cast<OperationType>(operation), nullptr, 0);
    qInstallMessageHandler(before);
    disconnect(noting);
    QCOMPARE(happened, expected);
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
}

QTEST_GUILESS_MAIN(TestQuotaModule)
#include "tst_quotamodule.moc"
