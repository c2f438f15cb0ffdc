// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/BurnIn_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>
#include <VantorCommon/view2d/CUtilManager.h>

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

QImage BurnIn::MakeGround(const CImage& image)
{
    const bool bAlpha = image.GetChannel() == 4;
    return Wrap(image).convertToFormat(bAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

void BurnIn::PaintOn(QImage& picture, const ObjectList& vctObjects, bool bOwnColors)
{
    CSurface surface(picture.size(), vctObjects, bOwnColors);
    const CUnselected unselected(vctObjects);
    QPainter painter(&picture);
    surface.PaintAll(painter);
}

QImage BurnIn::Paint(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    QImage picture = MakeGround(image);
    if (!picture.isNull())
        PaintOn(picture, vctObjects, bOwnColors);
    return picture;
}

std::shared_ptr<CImage> BurnIn::ToImage(QImage&& picture)
{
    const int nChannels = picture.hasAlphaChannel() ? 4 : 3;
    picture = picture.convertToFormat(nChannels == 4 ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    auto pImage = std::make_shared<CImage>();
    if (picture.isNull() || pImage->Create(picture.width(), picture.height(), nChannels, 8,
                                           Vantor::Algorithms::EImageType::Interleaved, 4) != 0)
        return nullptr;
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(pImage->GetRows()[y], picture.constScanLine(y),
                    static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(nChannels));
    picture = QImage();
    return pImage;
}

std::shared_ptr<CImage> BurnIn::ToImage(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    return ToImage(Paint(image, vctObjects, bOwnColors));
}

BurnIn::CPdf::CPdf() : m_nDpi(CSurface(QSize(), {}, false).logicalDpiX()), m_buffer(&m_bytes)
{
}

BurnIn::CPdf::~CPdf() = default;

bool BurnIn::CPdf::Begin(const CImage& image)
{
    const QImage underlay = Wrap(image);
    if (underlay.isNull())
        return false;
    m_size = underlay.size();
    m_buffer.open(QIODevice::WriteOnly);
    m_pWriter = std::make_unique<QPdfWriter>(&m_buffer);
    m_pWriter->setCreator(QStringLiteral("Vantor"));
    m_pWriter->setResolution(m_nDpi);
    m_pWriter->setPageSize(QPageSize(QSizeF(m_size) * kPointsPerInch / m_nDpi, QPageSize::Point, QString(),
                                     QPageSize::ExactMatch));
    m_pWriter->setPageMargins(QMarginsF());
    if (!m_painter.begin(m_pWriter.get()))
        return false;
    m_painter.setRenderHint(QPainter::LosslessImageRendering);
    m_painter.drawImage(0, 0, underlay);
    return true;
}

bool BurnIn::CPdf::Paint(const ObjectList& vctObjects, bool bOwnColors)
{
    CSurface surface(m_size, vctObjects, bOwnColors);
    const CUnselected unselected(vctObjects);
    surface.PaintAll(m_painter);
    return m_painter.end();
}

QByteArray BurnIn::ToPdf(const CImage& image, const ObjectList& vctObjects, bool bOwnColors)
{
    CPdf pdf;
    return pdf.Begin(image) && pdf.Paint(vctObjects, bOwnColors) ? pdf.GetBytes() : QByteArray();
}
