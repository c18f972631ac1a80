// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "toys.h"

#include <elementswidgetproxymodel.h>
#include <treenodemodel.h>

#include <QApplication>
#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace toys;

/// Names are sorted as people count, whatever the locale of the process.
class SortLocaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void digitsAreNumbers_data();
    void digitsAreNumbers();
};

void SortLocaleTest::digitsAreNumbers_data()
{
    QTest::addColumn<QString>("locale");
    for (const char *locale : {"", "C", "C.UTF-8", "POSIX", "en_US.UTF-8", "de_DE.UTF-8"})
        QTest::newRow(*locale ? locale : "none") << QString::fromLatin1(locale);
}

void SortLocaleTest::digitsAreNumbers()
{
    QFETCH(QString, locale);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString &name : names)
        if (name.startsWith(QLatin1String("LC_")) || name.startsWith(QLatin1String("LANG")))
            environment.remove(name);
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), locale);
    QProcess sorting;
    sorting.setProcessEnvironment(environment);
    sorting.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--sort")});
    QVERIFY(sorting.waitForFinished());
    QCOMPARE(sorting.readAllStandardOutput(), QByteArray("job1 job2 Job3 job10 job10b job100 "));
}

static int sortAndPrint()
{
    ToyModule module;
    Container root(&module, QStringLiteral("root"));
    for (const char *name : {"job100", "job10", "job2", "job10b", "Job3", "job1"})
        root.append(new Ordinary(&module, QLatin1String(name)));
    TreeNodeModel nodes;
    nodes.setRootNode(&root);
    ElementsWidgetProxyModel rows;
    rows.setSourceModel(&nodes);
    rows.sort(0);
    for (int row = 0; row < rows.rowCount(); ++row)
        std::printf("%s ", qPrintable(rows.index(row, 0).data().toString()));
    return 0;
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(QStringLiteral("--sort")))
        return sortAndPrint();
    SortLocaleTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sortlocale.moc"
