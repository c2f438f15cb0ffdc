// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QWidget>
#include <map>

class CImageView2DToolModel;
class QGridLayout;
class QPushButton;

/// The panel of buttons with which the user picks the tool mode: selecting, panning and the kinds of
/// ShapeKinds that have a button.
///
/// A click only emits the view's own signal; the receiver decides and sets the model. The buttons follow the
/// model, so that several views may share one. The model is not owned and outlives the view; it may be null.
/// GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DToolView : public QWidget
{
    Q_OBJECT

public:
    /// With the model's mode pressed.
    explicit CImageView2DToolView(CImageView2DToolModel* pModel, QWidget* pParent = nullptr);
    ~CImageView2DToolView() override;

    /// Adds the buttons of the optional kinds after the others, and pictures to all buttons, or removes them;
    /// there are none at first.
    void ShowOptionalShapes(bool bShow);

Q_SIGNALS:
    /// @{
    /// A button was clicked; this requests the mode, it does not set it.
    void signal_SelectMode();
    void signal_PanningMode();
    void signal_ROIRectangleSelected();
    void signal_ROICircleSelected();
    void signal_ROIEllipseSelected();
    void signal_ROIPolygonSelected();
    void signal_ShapeSelected(int nMode); ///< any other kind, by its mode
    /// @}

public Q_SLOTS:
    /// Logs the name of the model's mode and presses its button. Deliberate: line mode has no button and
    /// leaves the last pressed one pressed.
    void slot_ChangeViewMode();

private:
    QPushButton* AddButton(int nMode, const QString& strText);
    void RemoveButton(int nMode);
    void AddShapes(bool bOptional);
    void UpdateIcons();
    void PressButtonOfMode();

    CImageView2DToolModel* m_pModel;
    QGridLayout* m_pGrid = nullptr;
    std::map<int, QPushButton*> m_mapButtons; ///< by mode
    bool m_bOptional = false;
};
