// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/PaintTarget_p.h>

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

SPaintTarget SPaintTarget::Of(const QPainter& painter)
{
    SPaintTarget target;
    QPaintEngine* pEngine = painter.paintEngine();
    const QTransform& transform = painter.deviceTransform();
    if (!pEngine || pEngine->type() != QPaintEngine::Raster || painter.hasClipping() ||
        painter.opacity() != 1.0 || painter.compositionMode() != QPainter::CompositionMode_SourceOver ||
        transform.type() > QTransform::TxTranslate || painter.testRenderHint(QPainter::SmoothPixmapTransform))
        return target;
    QPaintDevice* pDevice = pEngine->paintDevice();
    if (!pDevice || pDevice->devType() != QInternal::Image)
        return target;
    auto* pImage = static_cast<QImage*>(pDevice);
    target.origin = QPoint(qRound(transform.dx()), qRound(transform.dy()));
    const bool bOpaqueBytes = // opaque pixels are the same bytes in both
        pImage->format() == QImage::Format_RGB32 || pImage->format() == QImage::Format_ARGB32_Premultiplied;
    if (!bOpaqueBytes || pImage->devicePixelRatio() != 1.0 ||
        QPointF(target.origin) != QPointF(transform.dx(), transform.dy()))
        return target;
    target.pImage = pImage;
    const QRegion clip = pEngine->systemClip();
    if (clip.isEmpty())
        target.parts.push_back(pImage->rect());
    for (const QRect& rect : clip)
        target.parts.push_back(rect & pImage->rect());
    return target;
}

QRgb* SPaintTarget::Row(int y) const
{
    return reinterpret_cast<QRgb*>(const_cast<uchar*>(std::as_const(*pImage).constScanLine(y)));
}
