// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CPrinting.h"

#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QToolBar>

namespace
{
constexpr double kScreenDpi = 96.0;
}

CPrinting::CPrinting(const QImage& picture, double dblDpi, QObject* pParent)
    : QObject(pParent), m_picture(picture), m_dblDpi(dblDpi > 0.0 ? dblDpi : kScreenDpi)
{
}

QRectF CPrinting::Place(const QRectF& paper, int nDots) const
{
    QSizeF size(m_picture.size());
    if (m_bTrueSize)
        size *= nDots / m_dblDpi;
    else
        size.scale(paper.size(), Qt::KeepAspectRatio);
    QRectF place(QPointF(), size);
    place.moveCenter(paper.center());
    return place;
}

void CPrinting::Paint(QPainter& painter, const QRectF& paper, int nDots) const
{
    painter.setClipRect(paper);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(Place(paper, nDots), m_picture);
}

void CPrinting::Print(QPrinter* pPrinter) const
{
    QPainter painter(pPrinter);
    const QRectF paper(QPointF(), pPrinter->pageRect(QPrinter::DevicePixel).size());
    Paint(painter, paper, pPrinter->resolution());
}

void CPrinting::Preview(QWidget* pWindow)
{
    auto* pDialog = new QPrintPreviewDialog(pWindow); // with a printer of its own
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    setParent(pDialog);
    pDialog->setWindowTitle(tr("Print"));
    pDialog->printer()->setPageOrientation(m_picture.width() > m_picture.height() ? QPageLayout::Landscape
                                                                                  : QPageLayout::Portrait);
    connect(pDialog, &QPrintPreviewDialog::paintRequested, this, &CPrinting::Print);
    if (auto* pBar = pDialog->findChild<QToolBar*>()) {
        QAction* pTrueSize = pBar->addAction(tr("&True Size"));
        pTrueSize->setCheckable(true);
        pTrueSize->setToolTip(tr("Print at the size that the file tells, or at 96 pixels per inch; "
                                 "otherwise as large as the paper"));
        auto* pPreview = pDialog->findChild<QPrintPreviewWidget*>();
        connect(pTrueSize, &QAction::toggled, this, [this, pPreview](bool bOn) {
            SetTrueSize(bOn);
            pPreview->updatePreview();
        });
    }
    pDialog->open();
}
