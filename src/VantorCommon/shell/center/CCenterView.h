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

/// The main work surface: shows one, two or four of its viewers in a grid and relays their signals. It owns
/// the viewers; the model is not owned. GUI thread only.
class VANTORCOMMON_EXPORT CCenterView : public QWidget
{
    Q_OBJECT

public:
    /// Shows nothing until it gets viewers. The parent owns the view; the model may be null.
    CCenterView(CCenterModel* pModel, QWidget* pParent);
    ~CCenterView() override;

    /// Takes ownership of a viewer, as a hidden child; ignores null. The two numbers are not used.
    void AddImageView(CImageViewer* pViewer, int, int);
    /// The viewer with that index, from 0 in the order of addition: 0 to 3 in the view of a CCenterCtrl,
    /// where it is also the viewer's identifier. The view owns it. Null for any other index, and when the
    /// viewer was deleted.
    CImageViewer* GetViewer(int nIndex) const;
    /// Shows as many viewers as the grid has cells and hides the rest. A grid without cells hides all; one of
    /// more cells than viewers changes nothing. Deliberate: viewer i stands at (i mod 2, i div 2), whatever
    /// the column count, which serves the layouts 1x1, 2x1 and 2x2.
    void UpdateLayout();

Q_SIGNALS:
    /// @{
    /// The host emits them, for its menus; the centre's controller changes the layout.
    void signal_ChangeLayout1x1();
    void signal_ChangeLayout2x1();
    void signal_ChangeLayout2x2();
    /// @}
    /// Deliberate: nobody in the library emits it.
    void signal_Active();
    /// @{
    /// An annotation of one of the viewers was added, is about to be deleted (it still exists), was deleted,
    /// or has changed (position, form, selection, name). Annotations without a name emit only changes.
    /// Dropping all at once, as for a new image, emits nothing. The identifiers are those of the viewer (0 to
    /// 3), of its current image (0xFFFFFFFF without one) and of the annotation.
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
    /// Calls UpdateLayout.
    void slot_Update();

protected:
    /// Updates the layout of the viewers.
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QPointer<CCenterModel> m_pModel;
    std::vector<QPointer<CImageViewer>> m_vctImageViewer;
};
