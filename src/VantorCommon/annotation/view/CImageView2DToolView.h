// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>
#include <array>

class CImageView2DToolModel;
class QPushButton;

/// The panel of buttons with which the user picks the tool mode.
///
/// A click only emits the view's own signal; whoever receives it decides and sets the model. The buttons
/// follow the model, so that several views may share one. The model is not owned and outlives the view; it
/// may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DToolView : public QWidget
{
    Q_OBJECT

public:
    /// With the model's mode pressed.
    explicit CImageView2DToolView(CImageView2DToolModel* pModel, QWidget* pParent = nullptr);
    ~CImageView2DToolView() override;

Q_SIGNALS:
    /// @{
    /// A button was clicked; the mode is asked for, not yet set.
    void signal_SelectMode();
    void signal_PanningMode();
    void signal_ROIRectangleSelected();
    void signal_ROICircleSelected();
    void signal_ROIEllipseSelected();
    void signal_ROIPolygonSelected();
    /// @}

public Q_SLOTS:
    /// Logs the name of the model's mode and presses its button. Deliberate: line mode has no button and
    /// leaves the last pressed one pressed.
    void slot_ChangeViewMode();

private:
    using Signal = void (CImageView2DToolView::*)();

    QPushButton* MakeButton(const QString& strText, Signal signal);
    void PressButtonOfMode();

    CImageView2DToolModel* m_pModel;
    /// By mode, selecting to polygon.
    std::array<QPushButton*, 6> m_arrButtons;
};
