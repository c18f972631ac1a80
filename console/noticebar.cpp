// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "noticebar.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent)
    , _icon(new QLabel(this))
    , _text(new QLabel(this))
    , _button(new QPushButton(this))
{
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    _text->setForegroundRole(QPalette::ToolTipText);
    _text->setWordWrap(true);
    _icon->setTextFormat(Qt::PlainText);
    _text->setTextFormat(Qt::PlainText);
    auto *row = new QHBoxLayout(this);
    row->addWidget(_icon);
    row->addWidget(_text, 1);
    row->addWidget(_button);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    connect(_button, &QPushButton::clicked, this, &NoticeBar::buttonClicked);
    hide();
}

void NoticeBar::say(const QString &iconName, const QString &text, const QString &buttonText)
{
    const int extent = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    _icon->setPixmap(QIcon::fromTheme(iconName).pixmap(extent, extent));
    _text->setText(text);
    _button->setText(buttonText);
    _button->setHidden(buttonText.isEmpty());
    setHidden(text.isEmpty());
}

QString NoticeBar::text() const
{
    return _text->text();
}
