// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

/// Lines its items up from the start of a row and begins another row where the width ends, as words in a
/// text. Every item keeps the size it asks for; no margins, no gaps.
class CFlowLayout : public QLayout
{
public:
    explicit CFlowLayout(QWidget* pParent);
    ~CFlowLayout() override;

    void addItem(QLayoutItem* pItem) override;
    int count() const override { return static_cast<int>(m_vctItems.size()); }
    QLayoutItem* itemAt(int nIndex) const override;
    QLayoutItem* takeAt(int nIndex) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int nWidth) const override;
    /// All in one row.
    QSize sizeHint() const override;
    /// As narrow as the widest item.
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    template <class Place> int Flow(int nWidth, const Place& place) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_vctItems;
};
