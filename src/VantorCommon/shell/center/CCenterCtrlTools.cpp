// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterCtrlTools_p.h>

#include <VantorCommon/process/median/CImage2DProcessMedianCtrl.h>
#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRCtrl.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>
#include <VantorCommon/process/operation/ProcessOperations.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelCtrl.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

#include <algorithm>
#include <utility>

CCenterCtrlTools::STriple::~STriple()
{
    pCtrl.reset();
    delete pDlg;
}

CCenterCtrlTools::CCenterCtrlTools(Made made) : m_made(std::move(made))
{
    AddOwn<CImage2DProcessMedianModel, CImage2DProcessMedianDlg, CImage2DProcessMedianCtrl>("Median Filter");
    AddOwn<CImage2DProcessSobelModel, CImage2DProcessSobelDlg, CImage2DProcessSobelCtrl>("Sobel Filter");
    AddOwn<CImage2DProcessOCRModel, CImage2DProcessOCRDlg, CImage2DProcessOCRCtrl>("OCR");
    for (const SProcessOperation& operation : ProcessOperations::All())
        Add(operation);
}

CCenterCtrlTools::~CCenterCtrlTools() = default;

template <class Model, class Dlg, class Ctrl> void CCenterCtrlTools::AddOwn(const char* pTitle)
{
    const auto make = [](QWidget* pParent) {
        auto pTriple = std::make_unique<STriple>();
        auto pModel = std::make_unique<Model>();
        auto* pDlg = new Dlg(pModel.get(), pParent);
        pTriple->pDlg = pDlg;
        pTriple->pCtrl = std::make_unique<Ctrl>(pModel.get(), pDlg);
        pTriple->pModel = std::move(pModel);
        return pTriple;
    };
    m_vctRows.push_back({QString::fromLatin1(pTitle), make, nullptr});
}

CCenterCtrlTools::TriplePtr CCenterCtrlTools::MakeTriple(const SProcessOperation& operation, QWidget* pParent)
{
    auto pTriple = std::make_unique<STriple>();
    auto pModel = std::make_unique<CImage2DProcessOperationModel>(operation);
    auto* pDlg = new CImage2DProcessOperationDlg(*pModel, pParent);
    pTriple->pDlg = pDlg;
    pTriple->pCtrl = std::make_unique<CImage2DProcessOperationCtrl>(pModel.get(), pDlg);
    pTriple->pModel = std::move(pModel);
    return pTriple;
}

int CCenterCtrlTools::Add(const SProcessOperation& operation)
{
    const auto& parameters = operation.vctParameters;
    const bool bDefaults = std::all_of(parameters.begin(), parameters.end(), [](const auto& parameter) {
        return parameter.Accepted(parameter.varDefault).isValid();
    });
    if (operation.strTitle.isEmpty() || bool(operation.apply) == bool(operation.find) || !bDefaults ||
        Titles().contains(operation.strTitle))
        return -1;
    const auto make = [operation](QWidget* pParent) { return MakeTriple(operation, pParent); };
    m_vctRows.push_back({operation.strTitle, make, nullptr});
    return static_cast<int>(m_vctRows.size()) - 1;
}

void CCenterCtrlTools::SetOptions(const SCenterOptions& sOptions)
{
    m_sOptions = sOptions;
    for (const SRow& row : m_vctRows)
        if (row.pTriple)
            row.pTriple->pCtrl->SetOptions(sOptions);
}

QStringList CCenterCtrlTools::Titles() const
{
    QStringList lstTitles;
    for (const SRow& row : m_vctRows)
        lstTitles.append(row.strTitle);
    return lstTitles;
}

CImage2DProcessBaseCtrl* CCenterCtrlTools::Open(int nTool, QWidget* pParent)
{
    if (nTool < 0 || static_cast<std::size_t>(nTool) >= m_vctRows.size())
        return nullptr;
    SRow& row = m_vctRows[static_cast<std::size_t>(nTool)];
    if (!row.pTriple || !row.pTriple->pDlg) {
        row.pTriple.reset(); // the old controller releases the viewer before a new one binds it
        row.pTriple = row.make(pParent);
        row.pTriple->pCtrl->SetOptions(m_sOptions);
        m_made(row.strTitle, *row.pTriple->pCtrl);
    }
    QDialog& dialog = *row.pTriple->pDlg;
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
    return row.pTriple->pCtrl.get();
}
