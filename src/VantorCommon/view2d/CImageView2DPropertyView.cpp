// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DPropertyView.h>

#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/PixelText_p.h>
#include <VantorCommon/view2d/Saturate_p.h>

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

CImageView2DPropertyView::CImageView2DPropertyView(CImageView2DModel* pModel, QWidget* parent)
    : QWidget(parent), m_pModel(pModel)
{
    auto* pLayout = new QVBoxLayout(this);
    auto* pLabels = new QWidget(this);
    auto* pGrid = new QGridLayout(pLabels);
    const auto addLabel = [pLabels, pGrid](int nRow, int nColumn) {
        auto* pLabel = new QLabel(pLabels);
        pGrid->addWidget(pLabel, nRow, nColumn);
        return pLabel;
    };
    m_pLabelWidth = addLabel(0, 0);
    m_pLabelHeight = addLabel(0, 1);
    m_pLabelChannel = addLabel(1, 0);
    m_pLabelBitDepth = addLabel(1, 1);
    m_pLabelImageType = addLabel(2, 0);
    m_pLabelX = addLabel(3, 0);
    m_pLabelY = addLabel(4, 0);
    m_pLabelPixel = addLabel(5, 0);
    pLayout->addWidget(pLabels);
    pLayout->addWidget(new QWidget(this));
    ShowInitialTexts();
    if (!m_pModel)
        return;
    connect(m_pModel, &CImageView2DModel::signal_MousePositionChanged, this,
            &CImageView2DPropertyView::slot_ChangeMousePosition);
    connect(m_pModel, &CImageView2DModel::signal_MousePositionForgotten, this,
            &CImageView2DPropertyView::ForgetMousePosition);
    connect(m_pModel, &CImageView2DModel::signal_ChangeCurrentImage, this,
            &CImageView2DPropertyView::slot_ChangeCurrentImage);
}

CImageView2DPropertyView::~CImageView2DPropertyView() = default;

void CImageView2DPropertyView::ShowInitialTexts()
{
    m_pLabelWidth->setText(QStringLiteral("Width: "));
    m_pLabelHeight->setText(QStringLiteral("Height: "));
    m_pLabelChannel->setText(QStringLiteral("Channel: "));
    m_pLabelBitDepth->setText(QStringLiteral("BitDepth: "));
    m_pLabelImageType->setText(QStringLiteral("ImageType: "));
    ForgetMousePosition();
}

void CImageView2DPropertyView::ForgetMousePosition()
{
    m_pLabelX->setText(QStringLiteral("X: "));
    m_pLabelY->setText(QStringLiteral("Y: "));
    m_pLabelPixel->setText(QStringLiteral("Pixel: "));
}

void CImageView2DPropertyView::slot_ChangeMousePosition()
{
    const auto pImage = m_pModel ? m_pModel->GetCurrentImage() : nullptr;
    if (!pImage)
        return;
    const QPointF ptPosition = m_pModel->GetMousePosition();
    m_pLabelX->setText(QString::asprintf("X: %0.3f", ptPosition.x()));
    m_pLabelY->setText(QString::asprintf("Y: %0.3f", ptPosition.y()));
    const unsigned char* pPixel =
        PixelAtHand(*pImage, TruncateToInt(ptPosition.x()), TruncateToInt(ptPosition.y()));
    const QString strPixel = PixelText(pImage->GetImageType(), pPixel, pImage->GetChannel());
    if (!strPixel.isEmpty())
        m_pLabelPixel->setText(strPixel);
}

void CImageView2DPropertyView::slot_ChangeCurrentImage()
{
    const auto pImage = m_pModel ? m_pModel->GetCurrentImage() : nullptr;
    if (!pImage) {
        ShowInitialTexts();
        return;
    }
    m_pLabelWidth->setText(QString::asprintf("Width: %d", pImage->GetWidth()));
    m_pLabelHeight->setText(QString::asprintf("Height: %d", pImage->GetHeight()));
    m_pLabelChannel->setText(QString::asprintf("Channel: %d", pImage->GetChannel()));
    m_pLabelBitDepth->setText(QString::asprintf("BitDepth: %d", pImage->GetBitDepth()));
    m_pLabelImageType->setText(QString::asprintf("ImageType: %d", static_cast<int>(pImage->GetImageType())));
}
