// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/viewer/FlowLayout_p.h>

#include <QStyle>
#include <QWidget>
#include <algorithm>

CFlowLayout::CFlowLayout(QWidget* pParent) : QLayout(pParent)
{
    setContentsMargins(0, 0, 0, 0);
}

CFlowLayout::~CFlowLayout() = default;

void CFlowLayout::addItem(QLayoutItem* pItem)
{
    m_vctItems.emplace_back(pItem);
    invalidate();
}

QLayoutItem* CFlowLayout::itemAt(int nIndex) const
{
    return nIndex >= 0 && nIndex < count() ? m_vctItems[static_cast<std::size_t>(nIndex)].get() : nullptr;
}

QLayoutItem* CFlowLayout::takeAt(int nIndex)
{
    if (!itemAt(nIndex))
        return nullptr;
    QLayoutItem* pItem = m_vctItems[static_cast<std::size_t>(nIndex)].release();
    m_vctItems.erase(m_vctItems.begin() + nIndex);
    invalidate();
    return pItem;
}

/// Calls place(item, its rectangle) for all, and gives the height of the rows.
template <class Place> int CFlowLayout::Flow(int nWidth, const Place& place) const
{
    QPoint at;
    int nRowHeight = 0;
    for (const auto& pItem : m_vctItems) {
        if (pItem->isEmpty())
            continue;
        const QSize size = pItem->sizeHint();
        if (at.x() > 0 && at.x() + size.width() > nWidth) {
            at = QPoint(0, at.y() + nRowHeight);
            nRowHeight = 0;
        }
        place(*pItem, QRect(at, size));
        at.rx() += size.width();
        nRowHeight = std::max(nRowHeight, size.height());
    }
    return at.y() + nRowHeight;
}

int CFlowLayout::heightForWidth(int nWidth) const
{
    return Flow(nWidth, [](QLayoutItem&, const QRect&) {});
}

QSize CFlowLayout::sizeHint() const
{
    QSize all;
    Flow(QLAYOUTSIZE_MAX, [&all](QLayoutItem&, const QRect& rect) {
        all = all.expandedTo(QSize(rect.right() + 1, rect.bottom() + 1));
    });
    return all;
}

QSize CFlowLayout::minimumSize() const
{
    QSize widest;
    Flow(0, [&widest](QLayoutItem&, const QRect& rect) { widest = widest.expandedTo(rect.size()); });
    return widest;
}

void CFlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const Qt::LayoutDirection eDirection = parentWidget()->layoutDirection();
    Flow(rect.width(), [&](QLayoutItem& item, const QRect& place) {
        item.setGeometry(QStyle::visualRect(eDirection, rect, place.translated(rect.topLeft())));
    });
}
