// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QString>
#include <QWidget>
#include <vector>

class CCenterModel;
class CImageViewer;

/// The main work surface: shows one, two or four of its viewers in a grid and passes their announcements on.
/// It owns the viewers; the model is not owned. GUI thread only.
class VANTORCOMMON_EXPORT CCenterView : public QWidget
{
    Q_OBJECT

public:
    /// Shows nothing until it gets viewers. The parent owns the view; the model may be null.
    CCenterView(CCenterModel* pModel, QWidget* pParent);
    ~CCenterView() override;

    /// Takes a viewer over as a hidden child; null is ignored. The two numbers are not used.
    void AddImageView(CImageViewer* pViewer, int, int);
    /// The viewer with that index, which counts from 0 in the order in which they were added: 0 to 3 in the
    /// view of a CCenterCtrl, and then the viewer's identifier, too. It belongs to the view. Null for another
    /// index, and when the viewer has been deleted.
    CImageViewer* GetViewer(int nIndex) const;
    /// Shows as many viewers as the grid has cells and hides the rest. A grid of no cells hides all; one of
    /// more cells than viewers changes nothing. Deliberate: the place of viewer i is (i mod 2, i div 2),
    /// whatever the column count; that serves the layouts 1x1, 2x1 and 2x2.
    void UpdateLayout();

Q_SIGNALS:
    /// @{
    /// Sent by the host, for its menus: the centre's controller changes the layout.
    void signal_ChangeLayout1x1();
    void signal_ChangeLayout2x1();
    void signal_ChangeLayout2x2();
    /// @}
    /// Deliberate: nobody in the library emits it.
    void signal_Active();
    /// @{
    /// An annotation of one of the viewers was added, is about to be deleted (it is still there), was
    /// deleted, or has changed (place, form, selection, name). Annotations without a name are not announced
    /// but for changes. When all go at once, as with a new image, nothing is sent.
    /// The identifiers are those of the viewer (0 to 3), of the image that it shows (0xFFFFFFFF without one)
    /// and of the annotation.
    void signal_AddDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                            QString strName);
    void signal_DeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID,
                                               unsigned int nGeometryUID);
    void signal_BeforeDeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID,
                                                     unsigned int nGeometryUID);
    void signal_ChangeDrawableObjectPropertyWithViewID(int nViewID, unsigned int nImageUID,
                                                       unsigned int nGeometryUID);
    /// @}

public Q_SLOTS:
    /// UpdateLayout.
    void slot_Update();

protected:
    /// Updates the layout of the viewers.
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QPointer<CCenterModel> m_pModel;
    std::vector<QPointer<CImageViewer>> m_vctImageViewer;
};
