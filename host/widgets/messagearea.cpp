// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "messagearea.h"

#include "isolatingdelegate.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace
{
constexpr int maximumLines = 7;

QColor mixed(const QColor &base, const QColor &tint, qreal share)
{
    return QColor::fromRgbF(base.redF() * (1 - share) + tint.redF() * share,
                            base.greenF() * (1 - share) + tint.greenF() * share,
                            base.blueF() * (1 - share) + tint.blueF() * share);
}
} // namespace

MessageArea::MessageArea(QWidget *parent)
    : QFrame(parent)
    , _iconLabel(new QLabel(this))
    , _scrollArea(new QScrollArea(this))
    , _textLabel(new QLabel)
{
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    _iconLabel->setTextFormat(Qt::PlainText);
    _textLabel->setObjectName(QStringLiteral("pageMessage"));
    _textLabel->setTextFormat(Qt::PlainText);
    _textLabel->setWordWrap(true);
    _textLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    _scrollArea->setAccessibleName(tr("Message"));
    _scrollArea->setWidget(_textLabel);
    _scrollArea->setWidgetResizable(true);
    _scrollArea->setFrameShape(QFrame::NoFrame);
    _scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The tint of the whole area is to be seen behind the text.
    _scrollArea->viewport()->setAutoFillBackground(false);
    _textLabel->setAutoFillBackground(false);

    auto *closeButton = new QToolButton(this);
    closeButton->setObjectName(QStringLiteral("pageMessageClose"));
    closeButton->setAutoRaise(true);
    closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    closeButton->setToolTip(tr("Hide this message"));
    closeButton->setAccessibleName(closeButton->toolTip());
    connect(closeButton, &QToolButton::clicked, this, &MessageArea::dismissed);

    auto *row = new QHBoxLayout(this);
    row->addWidget(_iconLabel, 0, Qt::AlignTop);
    row->addWidget(_scrollArea, 1, Qt::AlignVCenter);
    row->addWidget(closeButton, 0, Qt::AlignTop);
    applyKind();
    hide();
}

QString MessageArea::text() const
{
    return _text;
}

void MessageArea::setText(const QString &text, Kind kind)
{
    setVisible(!text.isEmpty());
    if (std::exchange(_kind, kind) != kind)
        applyKind();
    if (text == _text)
        return;
    _text = text;
    showText();
    _scrollArea->verticalScrollBar()->setValue(0);
    fitHeight();
}

void MessageArea::showText()
{
    QStringList lines;
    const QStringList texts = _text.split(QLatin1Char('\n'));
    for (const QString &line : texts)
        lines += IsolatingDelegate::isolated(line, layoutDirection());
    _textLabel->setText(lines.join(QLatin1Char('\n')));
}

void MessageArea::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    fitHeight();
}

void MessageArea::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::StyleChange)
        applyKind();
    else if (event->type() == QEvent::FontChange)
        fitHeight();
}

void MessageArea::fitHeight()
{
    if (text().isEmpty())
        return; // and hidden
    const int wanted = _textLabel->heightForWidth(_scrollArea->viewport()->width());
    _scrollArea->setFixedHeight(std::min(wanted, maximumLines * _textLabel->fontMetrics().lineSpacing()));
}

void MessageArea::applyKind()
{
    const bool isNote = _kind == Kind::Note;
    const int extent = style()->pixelMetric(QStyle::PM_ButtonIconSize) * 3 / 2;
    const QIcon icon = style()->standardIcon(isNote ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning);
    _iconLabel->setPixmap(icon.pixmap(extent, extent));
    const QColor tint = isNote ? QColor(0x3d, 0xae, 0xe9) : QColor(0xda, 0x44, 0x53);
    const QPalette around = parentWidget() ? parentWidget()->palette() : QApplication::palette();
    const QColor tinted = mixed(around.color(QPalette::Window), tint, 0.18);
    if (palette().color(QPalette::Window) == tinted)
        return; // also what our own setPalette() brings about
    QPalette colors;
    colors.setColor(QPalette::Window, tinted);
    setPalette(colors);
}
