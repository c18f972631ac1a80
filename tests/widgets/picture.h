// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QApplication>
#include <QDir>
#include <QtTest>

/// Pictures of pages, for a person to judge, at 100 % and at 200 %.
namespace Picture
{
/// The application's font in another size while it lives.
class Scale
{
public:
    explicit Scale(int percent)
        : _before(QApplication::font())
    {
        QFont font = _before;
        font.setPointSizeF(_before.pointSizeF() * percent / 100);
        QApplication::setFont(font);
    }
    Scale(const Scale &) = delete;
    Scale &operator=(const Scale &) = delete;
    ~Scale() { QApplication::setFont(_before); }

private:
    QFont _before;
};

/// For each of both: its percents, and what follows the name of a row and of its picture.
template<typename AddRow>
void forEachScale(const AddRow &addRow)
{
    addRow(100, "");
    addRow(200, "-200");
}

/// As "OF-ROW.png", ROW being that of the test's data.
inline void keep(QWidget &widget, const char *of)
{
    QTest::mouseMove(&widget, QPoint(1, 1)); // off whatever would show that the pointer is over it
    QCoreApplication::processEvents();
    QVERIFY(QDir().mkpath(QStringLiteral(KRA_SCREENSHOTS)));
    const QString file =
        QStringLiteral(KRA_SCREENSHOTS "/%1-%2.png").arg(QLatin1String(of), QLatin1String(QTest::currentDataTag()));
    QVERIFY(widget.grab().save(file));
}
} // namespace Picture
