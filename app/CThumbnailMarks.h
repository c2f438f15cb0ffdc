// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QStyledItemDelegate>
#include <functional>

/// Paints the thumbnails of a viewer, with a dot in the corner of those with unsaved work.
class CThumbnailMarks : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param isMarked  whether the thumbnail in a row gets the dot
    CThumbnailMarks(std::function<bool(int)> isMarked, QObject* pParent);

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    std::function<bool(int)> m_isMarked;
};
