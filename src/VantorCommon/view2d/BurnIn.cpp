// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/BurnIn.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSignalBlocker>
#include <cstring>

using Vantor::Algorithms::CImage;

namespace
{
constexpr double kPointsPerInch = 72.0;

/// Deselects all objects while it lives, without signals.
class CUnselected
{
public:
    explicit CUnselected(const BurnIn::ObjectList& vctObjects)
    {
        for (const auto& pObject : vctObjects)
            if (pObject && pObject->GetSelected())
                m_vctSelected.push_back(pObject);
        SelectAll(false);
    }
    ~CUnselected() { SelectAll(true); }
    CUnselected(const CUnselected&) = delete;
    CUnselected& operator=(const CUnselected&) = delete;

private:
    void SelectAll(bool bSelected)
    {
        for (const auto& pObject : m_vctSelected) {
            const QSignalBlocker blocker(pObject.get());
            pObject->SetSelected(bSelected);
        }
    }

    BurnIn::ObjectList m_vctSelected;
};

/// Never shown: only its painting is used, at a scale of 1.
class CSurface : public CImageView2DDrawableWidget
{
public:
    CSurface(const QSize& size, const BurnIn::ObjectList& vctObjects, bool bOwnColors)
        : CImageView2DDrawableWidget(nullptr, nullptr)
    {
        resize(size);
        SetViewPort(QRect(QPoint(), size));
        SetWindow(QRect(QPoint(), size));
        SetOwnColors(bOwnColors);
        ReplaceDrawableObjects(vctObjects);
    }
    using CImageView2DDrawableWidget::PaintAll;
};

/// Shares the pixels of the image; null for an empty one.
QImage Wrap(const CImage& image)
{
    QImage wrapped;
    CUtilManager::ViewImage(&image, wrapped);
    return wrapped;
}
} // namespace

QImage BurnIn::Paint(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    const bool bAlpha = image.GetChannel() == 4;
    QImage picture =
        Wrap(image).convertToFormat(bAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    CSurface surface(picture.size(), vctObjects, bOwnColors);
    const CUnselected unselected(vctObjects);
    QPainter painter(&picture);
    surface.PaintAll(painter);
    return picture;
}

std::shared_ptr<CImage> BurnIn::ToImage(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    QImage picture = Paint(image, vctObjects, bOwnColors);
    const int nChannels = picture.hasAlphaChannel() ? 4 : 3;
    picture = picture.convertToFormat(nChannels == 4 ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    auto pImage = std::make_shared<CImage>();
    if (picture.isNull() || pImage->Create(picture.width(), picture.height(), nChannels, 8,
                                           Vantor::Algorithms::EImageType::Interleaved, 4) != 0)
        return nullptr;
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(pImage->GetRows()[y], picture.constScanLine(y),
                    static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(nChannels));
    return pImage;
}

QByteArray BurnIn::ToPdf(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    const QImage underlay = Wrap(image);
    if (underlay.isNull())
        return {};
    CSurface surface(underlay.size(), vctObjects, bOwnColors);
    const int nDpi = surface.logicalDpiX(); // the resolution at which letters have their size on the screen
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QStringLiteral("Vantor"));
    writer.setResolution(nDpi);
    writer.setPageSize(QPageSize(QSizeF(underlay.size()) * kPointsPerInch / nDpi, QPageSize::Point, QString(),
                                 QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer))
        return {};
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(0, 0, underlay);
    const CUnselected unselected(vctObjects);
    surface.PaintAll(painter);
    return painter.end() ? bytes : QByteArray();
}
