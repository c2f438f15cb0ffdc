// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QScrollArea>

class CImageView2DGeometryPropertyView;
class CImageView2DToolView;
class CSelectHandler;

/// The panels of a 2D controller: its tools, its properties and its status, which stand in the docks while
/// its view is active. It owns the panels, wherever they are; docks may be null or destroyed first.
class CImageView2DCtrlPanels
{
public:
    struct SDocks {
        QPointer<QScrollArea> pToolBox;
        QPointer<QScrollArea> pProperty;
        QPointer<QScrollArea> pStatus;
    };

    /// @param select  changes the look of the selected objects; outlives the panels
    CImageView2DCtrlPanels(const SImageView2DCtrlContext& context, const SDocks& sDocks,
                           CSelectHandler& select);
    ~CImageView2DCtrlPanels();
    CImageView2DCtrlPanels(const CImageView2DCtrlPanels&) = delete;
    CImageView2DCtrlPanels& operator=(const CImageView2DCtrlPanels&) = delete;

    /// Puts the panels in place of another viewer's, which stay alive.
    void PutIntoDocks();
    /// Adapts the panels to the options of the context.
    void FollowOptions();

private:
    void CreateToolPanel();
    void CreatePropertyPanel(CSelectHandler& select);
    void KeepFocusInView();

    const SImageView2DCtrlContext& m_context;
    SDocks m_sDocks;
    QPointer<CImageView2DToolView> m_pToolPanel;
    QPointer<QWidget> m_pPropertyPanel;
    QPointer<CImageView2DGeometryPropertyView> m_pPropertyView;
    QPointer<QWidget> m_pStatusPanel;
};
