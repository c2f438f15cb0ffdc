// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QWidget>

class CImageView2DModel;
class QLabel;

/// Shows size and format of the current image and, as the mouse moves, the image position and the pixel under
/// it. The model is not owned and may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DPropertyView : public QWidget
{
    Q_OBJECT

public:
    /// The labels have no values at first.
    explicit CImageView2DPropertyView(CImageView2DModel* pModel, QWidget* parent = nullptr);
    ~CImageView2DPropertyView() override;

public Q_SLOTS:
    /// Shows the position with three decimals, in pixels. Outside the image the last pixel stays.
    void slot_ChangeMousePosition();
    /// Shows size and format of the current image. Without one all labels return to their initial texts.
    void slot_ChangeCurrentImage();

private:
    void ShowInitialTexts();
    /// Shows position and pixel without values.
    void ForgetMousePosition();

    QPointer<CImageView2DModel> m_pModel;
    QLabel* m_pLabelWidth;
    QLabel* m_pLabelHeight;
    QLabel* m_pLabelChannel;
    QLabel* m_pLabelBitDepth;
    QLabel* m_pLabelImageType;
    QLabel* m_pLabelX;
    QLabel* m_pLabelY;
    QLabel* m_pLabelPixel;
};
