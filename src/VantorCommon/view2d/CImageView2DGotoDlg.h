// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QDialog>
#include <QPointer>

class QSpinBox;

/// Asks for an image position in whole pixels. The caller sets the ranges, runs the dialog modally and reads
/// the values only after it was accepted. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DGotoDlg : public QDialog
{
    Q_OBJECT

public:
    /// Both positions from 0 to 99, at 0.
    explicit CImageView2DGotoDlg(QWidget* parent = nullptr);
    ~CImageView2DGotoDlg() override;

    /// @{
    /// The smallest and largest position that the user can choose, in pixels; 0 and 99 at first.
    void SetMinimumX(int nMinimum);
    void SetMaximumX(int nMaximum);
    void SetMinimumY(int nMinimum);
    void SetMaximumY(int nMaximum);
    /// @}

    /// @{
    /// The position; 0 if the spin box no longer exists.
    int GetX() const;
    int GetY() const;
    /// @}

private:
    QPointer<QSpinBox> m_pSpinX;
    QPointer<QSpinBox> m_pSpinY;
};
