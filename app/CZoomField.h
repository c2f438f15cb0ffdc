// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CStatusField.h"

/// The zoom in the status bar: "138 %".
class CZoomField : public CStatusField
{
    Q_OBJECT

public:
    explicit CZoomField(QWidget* pParent);

    /// @param dblZoom  1.0 for 100 %; 0.0 for none, which shows nothing
    void ShowZoom(double dblZoom);

    /// A zoom as people read it: whole percents, from 10 % down a digit more.
    static QString TextOf(double dblZoom);
    /// @return 1.0 for "100", "100 %" or "100,0%"; 0.0 for what is no positive number
    static double ZoomOf(const QString& strText);

Q_SIGNALS:
    /// The user has typed it; above 0.
    void signal_Zoom(double dblZoom);

protected:
    bool Take(const QString& strText) override;
};
