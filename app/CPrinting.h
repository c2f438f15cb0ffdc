// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QImage>
#include <QObject>

class QPainter;
class QPrinter;
class QWidget;

/// Prints one picture, with a preview in which the user chooses paper, printer and size. GUI thread.
class CPrinting : public QObject
{
    Q_OBJECT

public:
    /// @param dblDpi  pixels of the picture per inch of its true size; 0 when it has none, which counts as 96
    CPrinting(const QImage& picture, double dblDpi, QObject* pParent);

    /// Shows the preview, which prints. It does not block, and deletes itself and this object in the end.
    void Preview(QWidget* pWindow);

    /// Where the picture goes, in dots of the paper: at its true size, or as large as the paper, in both
    /// cases in the middle.
    /// @param paper   what can be printed on, in dots
    /// @param nDots   of the paper per inch
    QRectF Place(const QRectF& paper, int nDots) const;
    void SetTrueSize(bool bTrueSize) { m_bTrueSize = bTrueSize; }
    /// @param painter  of the paper
    void Paint(QPainter& painter, const QRectF& paper, int nDots) const;

private:
    void Print(QPrinter* pPrinter) const;

    QImage m_picture;
    double m_dblDpi;
    bool m_bTrueSize = false;
};
