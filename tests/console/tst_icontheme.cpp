// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <icontheme.h>

#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QtTest>

/// Every icon that the console and its plug-ins name is there, without any theme of the machine.
class IconThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void namedIconIsThere_data();
    void namedIconIsThere();
    void everyIconOfTheThemeIsListed();

private:
    static QStringList namedInSources();
};

void IconThemeTest::initTestCase()
{
    QIcon::setThemeName(QStringLiteral("no-such-theme"));
    installIconTheme();
}

/// What the sources beside this test ask a theme for: QIcon::fromTheme(…), forms, and names handed on as texts.
QStringList IconThemeTest::namedInSources()
{
    const QRegularExpression call(QStringLiteral("(?:fromTheme\\(QStringLiteral\\(|iconset theme=)\"([a-z-]+)\""));
    const QRegularExpression text(QStringLiteral("QStringLiteral\\(\"((?:kra-(?:task|user)|dialog)-[a-z-]+)\"\\)"));
    QStringList names;
    for (const char *folder : {"/console", "/plugin", "/elements", "/widgets", "/host/widgets", "/notifications"}) {
        QDirIterator files(QStringLiteral(KRA_SOURCE_DIR) + QLatin1String(folder),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.ui"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QString source = QString::fromUtf8(file.readAll());
            for (const QRegularExpression &pattern : {call, text}) {
                QRegularExpressionMatchIterator matches = pattern.globalMatch(source);
                while (matches.hasNext())
                    names.append(matches.next().captured(1));
            }
        }
    }
    names.removeDuplicates();
    return names;
}

void IconThemeTest::namedIconIsThere_data()
{
    QTest::addColumn<QString>("name");
    QStringList names = namedInSources();
    QVERIFY(names.contains(QLatin1String("kra-task-running")));
    QVERIFY(names.contains(QLatin1String("kra-users")));
    QVERIFY(names.contains(QLatin1String("view-refresh")));
    // Of elements that plug-ins bring.
    names += {QStringLiteral("drive-harddisk"), QStringLiteral("mail-mark-important"), QStringLiteral("list-add"),
              QStringLiteral("list-remove")};
    names.removeDuplicates();
    for (const QString &name : qAsConst(names))
        QTest::newRow(qPrintable(name)) << name;
}

void IconThemeTest::namedIconIsThere()
{
    QFETCH(QString, name);
    const QIcon icon = QIcon::fromTheme(name);
    QVERIFY(!icon.isNull());
    for (const int extent : {16, 32}) {
        const QImage image = icon.pixmap(extent, extent).toImage();
        QCOMPARE(image.size(), QSize(extent, extent));
        int drawn = 0;
        for (int y = 0; y < extent; ++y)
            for (int x = 0; x < extent; ++x)
                drawn += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        QVERIFY2(drawn > extent * extent / 16, "hardly anything is drawn");
    }
}

void IconThemeTest::everyIconOfTheThemeIsListed()
{
    const QDir drawn(QStringLiteral(KRA_SOURCE_DIR "/console/icons/kra/scalable"));
    const QDir listed(QStringLiteral(":/icons/kra/scalable"));
    QCOMPARE(listed.entryList(), drawn.entryList(QDir::Files));
}

QTEST_MAIN(IconThemeTest)
#include "tst_icontheme.moc"
