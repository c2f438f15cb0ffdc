// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CThumbnailMarks.h"

#include <QPainter>
#include <utility>

namespace
{
constexpr int kDot = 11; // pixels across
constexpr int kEdge = 5; // from the corner
} // namespace

CThumbnailMarks::CThumbnailMarks(std::function<bool(int)> isMarked, QObject* pParent)
    : QStyledItemDelegate(pParent), m_isMarked(std::move(isMarked))
{
}

void CThumbnailMarks::paint(QPainter* pPainter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QStyledItemDelegate::paint(pPainter, option, index);
    if (!m_isMarked(index.row()))
        return;
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing);
    // A dark dot in a light ring is visible on every picture.
    pPainter->setPen(QPen(Qt::white, 2));
    pPainter->setBrush(QColor(200, 60, 0));
    pPainter->drawEllipse(QRect(option.rect.right() - kEdge - kDot, option.rect.top() + kEdge, kDot, kDot));
    pPainter->restore();
}
