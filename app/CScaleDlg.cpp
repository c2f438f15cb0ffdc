// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CScaleDlg.h"

#include "LibraryTexts.h"

#include <Vantor/geometry/CLine.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <limits>

using Vantor::Algorithms::CCalibration;

namespace
{
constexpr int kDigits = 12;

QString Text(double dblNumber)
{
    return QLocale().toString(dblNumber, 'g', kDigits);
}

/// NaN for what is no number.
double Number(const QLineEdit& edit)
{
    bool bGood = false;
    const double dblNumber = QLocale().toDouble(edit.text().trimmed(), &bGood);
    return bGood ? dblNumber : std::numeric_limits<double>::quiet_NaN();
}

/// The length of the selected ruler or line, the topmost of several; 0 without one.
double SelectedLength(const CImageView2DCtrl& ctrl)
{
    const CImageView2DGeometryModel* pModel = ctrl.GetGeometryModel();
    for (int i = 0; pModel && i < pModel->Size(); ++i) {
        const auto pObject = pModel->GetAt(i);
        const auto* pLine = ShapeKinds::GeometryOf<Vantor::Geometry::CLine>(*pObject);
        if (pObject->GetSelected() && pLine)
            return pLine->GetLength();
    }
    return 0.0;
}
} // namespace

CScaleDlg::CScaleDlg(const CCalibration& calibration, double dblPixels,
                     const Vantor::Algorithms::SImageMetadata& metadata, QWidget* pParent)
    : QDialog(pParent), m_calibration(calibration)
{
    setWindowTitle(tr("Set Scale"));
    auto* pForm = new QFormLayout(this);
    m_pDistance = AddNumber(*pForm, tr("&Distance in pixels"), "distance", dblPixels);
    m_pKnown = AddNumber(*pForm, tr("Known &length"), "known", dblPixels * calibration.GetSize().x);
    m_pUnit = new QLineEdit(QString::fromStdString(calibration.GetSize().unit), this);
    m_pUnit->setObjectName(QStringLiteral("unit"));
    pForm->addRow(tr("&Unit"), m_pUnit);
    m_pWidth = AddNumber(*pForm, tr("Pixel &width in units"), "width", calibration.GetSize().x);
    m_pHeight = AddNumber(*pForm, tr("Pixel &height in units"), "height", calibration.GetSize().y);
    m_pOriginX = AddNumber(*pForm, tr("Origin &x in pixels"), "originX", calibration.GetOrigin().x);
    m_pOriginY = AddNumber(*pForm, tr("Origin &y in pixels"), "originY", calibration.GetOrigin().y);
    m_pProblem = new QLabel(this);
    m_pProblem->setObjectName(QStringLiteral("problem"));
    m_pProblem->setTextFormat(Qt::PlainText);
    m_pProblem->setWordWrap(true);
    pForm->addRow(m_pProblem);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    const auto* pPixels = pButtons->addButton(tr("&Pixels Again"), QDialogButtonBox::ResetRole);
    auto* pFile = pButtons->addButton(tr("&From the File"), QDialogButtonBox::ResetRole);
    CCalibration fromFile = calibration;
    pFile->setEnabled(fromFile.SetByResolution(metadata).empty());
    pForm->addRow(pButtons);
    connect(pFile, &QPushButton::clicked, this, [this, fromFile] { Show(fromFile); });
    connect(pButtons, &QDialogButtonBox::accepted, this, &CScaleDlg::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &CScaleDlg::reject);
    connect(pPixels, &QPushButton::clicked, this, [this] { Show(CCalibration()); });
    for (const QLineEdit* pEdit : {m_pDistance, m_pKnown})
        connect(pEdit, &QLineEdit::textEdited, this, &CScaleDlg::ShowSize);
    (dblPixels > 0.0 ? m_pKnown : m_pDistance)->setFocus();
    (dblPixels > 0.0 ? m_pKnown : m_pDistance)->selectAll();
}

CScaleDlg::~CScaleDlg() = default;

QLineEdit* CScaleDlg::AddNumber(QFormLayout& form, const QString& strLabel, const char* pName,
                                double dblValue)
{
    auto* pEdit = new QLineEdit(Text(dblValue), this);
    pEdit->setObjectName(QLatin1String(pName));
    form.addRow(strLabel, pEdit);
    return pEdit;
}

/// The size of a pixel by the known distance; as it is, while that is none.
void CScaleDlg::ShowSize()
{
    CCalibration calibration = m_calibration;
    if (!calibration.SetByLength(Number(*m_pDistance), 0.0, Number(*m_pKnown), "unit").empty())
        return;
    m_pWidth->setText(Text(calibration.GetSize().x));
    m_pHeight->setText(Text(calibration.GetSize().y));
}

void CScaleDlg::Show(const CCalibration& calibration)
{
    const auto& size = calibration.GetSize();
    m_pKnown->setText(Text(Number(*m_pDistance) * size.x));
    m_pUnit->setText(QString::fromStdString(size.unit));
    m_pWidth->setText(Text(size.x));
    m_pHeight->setText(Text(size.y));
    m_pOriginX->setText(Text(calibration.GetOrigin().x));
    m_pOriginY->setText(Text(calibration.GetOrigin().y));
}

void CScaleDlg::accept()
{
    const std::string problem =
        m_calibration.Set({m_pUnit->text().trimmed().toStdString(), Number(*m_pWidth), Number(*m_pHeight),
                           Number(*m_pOriginX), Number(*m_pOriginY)});
    m_pProblem->setText(LibraryTexts::Sentence(QString::fromStdString(problem)));
    if (problem.empty())
        QDialog::accept();
}

void CScaleDlg::Ask(CImageView2DCtrl& ctrl, QWidget* pParent)
{
    const QPointer<CAnnotationStore> pStore = ctrl.GetAnnotationStore();
    const int nPage = pStore->GetPageId();
    const auto pImage = ctrl.GetCurrentImgage();
    CScaleDlg dialog(pStore->GetCalibration(), SelectedLength(ctrl),
                     pImage ? *pImage->GetMetadata() : Vantor::Algorithms::SImageMetadata(), pParent);
    if (dialog.exec() == QDialog::Accepted && pStore && pStore->GetPageId() == nPage)
        pStore->SetCalibration(dialog.GetCalibration());
}
