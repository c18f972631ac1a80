// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <consolestyle.h>
#include <icontheme.h>

#include <QDirIterator>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QTreeView>
#include <QtTest>

#include <cmath>

/// Every icon that the console and its plug-ins name is there, without any theme of the machine.
class IconThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void namedIconIsThere_data();
    void namedIconIsThere();
    void namedIconIsSeenInASelection_data() { namedIconIsThere_data(); }
    void namedIconIsSeenInASelection();
    void everyIconOfTheThemeIsListed();
    void columnsAreSetApart();

private:
    static QStringList namedInSources();
};

void IconThemeTest::initTestCase()
{
    QIcon::setThemeName(QStringLiteral("no-such-theme"));
    installIconTheme();
    QApplication::setStyle(new ConsoleStyle);
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

void IconThemeTest::namedIconIsSeenInASelection()
{
    QFETCH(QString, name);
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](double part) { return std::pow(part, 2.2); };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const double selection = luminance(QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight));
    const QImage image = QIcon::fromTheme(name).pixmap(16, 16, QIcon::Selected).toImage();
    double sum = 0;
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.alpha() <= 128)
                continue;
            const double other = luminance(colour);
            sum += (std::max(other, selection) + 0.05) / (std::min(other, selection) + 0.05);
            ++drawn;
        }
    }
    QVERIFY(drawn > 0);
    constexpr double leastContrast = 1.8;
    QVERIFY2(sum / drawn > leastContrast, qPrintable(QString::number(sum / drawn)));
}

void IconThemeTest::everyIconOfTheThemeIsListed()
{
    const QDir drawn(QStringLiteral(KRA_SOURCE_DIR "/console/icons/kra/scalable"));
    const QDir listed(QStringLiteral(":/icons/kra/scalable"));
    QCOMPARE(listed.entryList(), drawn.entryList(QDir::Files));
}

void IconThemeTest::columnsAreSetApart()
{
    const QTreeView list;
    const QWidget other;
    const auto metric = [](QStyle::PixelMetric which, const QWidget &widget) {
        return QApplication::style()->pixelMetric(which, nullptr, &widget);
    };
    QVERIFY(metric(QStyle::PM_FocusFrameHMargin, list) > metric(QStyle::PM_FocusFrameHMargin, other));
    QVERIFY(metric(QStyle::PM_HeaderMargin, *list.header()) > metric(QStyle::PM_HeaderMargin, other));
}

QTEST_MAIN(IconThemeTest)
#include "tst_icontheme.moc"
