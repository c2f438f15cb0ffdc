// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QObject>
#include <QPointer>

class CAnnotationTableView;
class CImageView2D;
class CImageView2DCtrl;

/// Lets a table show the annotations of a 2D view, one view at a time, and makes undoable steps of what is
/// edited there. Nothing is owned, everything may be null or die first. GUI thread only.
class VANTORCOMMON_EXPORT CAnnotationTableCtrl : public QObject
{
    Q_OBJECT

public:
    /// Shows nothing yet.
    explicit CAnnotationTableCtrl(CAnnotationTableView* pTable, QObject* pParent = nullptr);
    ~CAnnotationTableCtrl() override;

    /// Shows the annotations of this controller; the view is where they are brought into sight.
    void SetTarget(CImageView2DCtrl* pCtrl, CImageView2D* pView);

private:
    void TellPage();

    QPointer<CAnnotationTableView> m_pTable;
    QPointer<CImageView2DCtrl> m_pCtrl;
    QPointer<CImageView2D> m_pView;
};
