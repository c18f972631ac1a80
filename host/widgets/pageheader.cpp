// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pageheader.h"

#include "elidedlabel.h"

#include <QHBoxLayout>
#include <QStyle>

namespace
{
constexpr qreal titleScale = 1.35;
} // namespace

PageHeader::PageHeader(QWidget *parent)
    : QWidget(parent)
    , _iconLabel(new QLabel(this))
    , _titleLabel(new ElidedLabel(this))
    , _captionLabel(new ElidedLabel(this))
{
    _iconLabel->setObjectName(QStringLiteral("pageIcon"));
    _iconLabel->setTextFormat(Qt::PlainText);
    const int extent = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    _iconLabel->setFixedSize(extent, extent); // also for an icon that has no picture that large
    _iconLabel->setAlignment(Qt::AlignCenter);
    _titleLabel->setObjectName(QStringLiteral("pageTitle"));
    _captionLabel->setObjectName(QStringLiteral("pageCaption"));
    QFont titleFont = font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * titleScale);
    titleFont.setBold(true);
    _titleLabel->setFont(titleFont);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch();
    texts->addWidget(_titleLabel);
    texts->addWidget(_captionLabel);
    texts->addStretch();
    auto *row = new QHBoxLayout(this);
    row->setSpacing(style()->pixelMetric(QStyle::PM_LayoutLeftMargin));
    row->addWidget(_iconLabel);
    row->addLayout(texts, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PageHeader::setContent(const QIcon &icon, const QString &title, const QString &caption)
{
    _iconLabel->setVisible(!icon.isNull());
    _iconLabel->setPixmap(icon.pixmap(_iconLabel->maximumSize()));
    _titleLabel->setFullText(title);
    _captionLabel->setFullText(caption);
    _captionLabel->setVisible(!caption.isEmpty() && caption != title);
}
