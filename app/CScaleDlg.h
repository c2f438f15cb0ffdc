// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>
#include <Vantor/measure/CCalibration.h>

#include <QDialog>

class CImageView2DCtrl;
class QFormLayout;
class QLabel;
class QLineEdit;

/// The dialog that asks what pixels are in units: by a known distance, or by the size of a pixel. Numbers are
/// those of the user's language.
class CScaleDlg : public QDialog
{
    Q_OBJECT

public:
    /// Begins with a calibration and with the distance between two places, of a ruler for example.
    /// @param dblPixels  that distance, 0 when there is none
    /// @param metadata   what the image's file says
    CScaleDlg(const Vantor::Algorithms::CCalibration& calibration, double dblPixels,
              const Vantor::Algorithms::SImageMetadata& metadata, QWidget* pParent);
    ~CScaleDlg() override;

    /// Asks for the calibration of the image that is shown, with the selected ruler, and sets it.
    static void Ask(CImageView2DCtrl& ctrl, QWidget* pParent);

    /// What the dialog was accepted with.
    const Vantor::Algorithms::CCalibration& GetCalibration() const { return m_calibration; }

    /// Stays open and says what is wrong while the numbers make no calibration.
    void accept() override;

private:
    QLineEdit* AddNumber(QFormLayout& form, const QString& strLabel, const char* pName, double dblValue);
    void ShowSize();
    void Show(const Vantor::Algorithms::CCalibration& calibration);

    Vantor::Algorithms::CCalibration m_calibration;
    QLineEdit* m_pDistance;
    QLineEdit* m_pKnown;
    QLineEdit* m_pUnit;
    QLineEdit* m_pWidth;
    QLineEdit* m_pHeight;
    QLineEdit* m_pOriginX;
    QLineEdit* m_pOriginY;
    QLabel* m_pProblem;
};
